/// How the kinds of nodes, and what they are made of, read a description's elements.
#ifndef TELVO_GIGE_GENAPI_NODEREADER_H
#define TELVO_GIGE_GENAPI_NODEREADER_H

#include "ElementReader.h"
#include "FormulaMath.h"
#include "NumberNode.h"
#include "RegisterSources.h"

#include <memory>
#include <string>
#include <string_view>

namespace gige::genapi
{

/// How nodes of one XML tag come into being: first all are created, since references point forward;
/// then each reads its element.
struct NodeRecipe {
    std::string_view tag;
    std::unique_ptr<Node> (*create)(NodeMapState& state, std::string name);
    void (*read)(ElementReader& reader);
};

/// @return null for tags that are no nodes, and for legacy ones
const NodeRecipe* findRecipe(std::string_view tag);

/// What nodes of every kind may have: texts, visibility, conditions, invalidators, selected ones.
void readCommon(ElementReader& reader);

// Registers and their contents' layout: RegisterReader.cpp.

/// Null and a defect when the element describes no register.
std::shared_ptr<Register> readRegister(ElementReader& reader);

ByteOrder readByteOrder(ElementReader& reader);

/// @param isMasked  whether the element must have Bit, or LSB and MSB
IntegerLayout readIntegerLayout(ElementReader& reader, bool isMasked);

// Where numbers come from, their limits and presentation: SourceReader.cpp.

/// pValue, pIndex or Value. Null and a defect when there is none of them.
std::unique_ptr<NumberSource> readSource(ElementReader& reader, bool isInteger);

OwnLimits readLimits(ElementReader& reader, bool isInteger);

Presentation readPresentation(ElementReader& reader);

/// SwissKnife and IntSwissKnife. Null and a defect when there is no usable formula.
std::unique_ptr<NumberSource> readFormula(ElementReader& reader, Arithmetic arithmetic);

/// Converter and IntConverter, as above.
std::unique_ptr<NumberSource> readConverter(ElementReader& reader, Arithmetic arithmetic);

/// An IntSwissKnife inside a register's element, as a node without a name. Its defect becomes that
/// of the register.
Node& readEmbeddedFormula(ElementReader& reader, const pugi::xml_node& element);

} // namespace gige::genapi

#endif
