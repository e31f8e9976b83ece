/// Formula nodes out of a description's elements.
#ifndef TELVO_GIGE_GENAPI_FORMULAREADER_H
#define TELVO_GIGE_GENAPI_FORMULAREADER_H

#include "ElementReader.h"
#include "FormulaSources.h"

#include <memory>

namespace gige::genapi
{

/// SwissKnife and IntSwissKnife. Null and a defect when there is no usable formula.
std::unique_ptr<NumberSource> readFormula(ElementReader& reader, Arithmetic arithmetic);

/// Converter and IntConverter, as above.
std::unique_ptr<NumberSource> readConverter(ElementReader& reader, Arithmetic arithmetic);

/// An IntSwissKnife inside a register's element, as a node without a name. Its defect becomes that
/// of the register.
Node& readEmbeddedFormula(ElementReader& reader, const pugi::xml_node& element);

} // namespace gige::genapi

#endif
