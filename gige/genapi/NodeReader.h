/// One node at a time out of a description's elements.
#ifndef TELVO_GIGE_GENAPI_NODEREADER_H
#define TELVO_GIGE_GENAPI_NODEREADER_H

#include "ElementReader.h"

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

} // namespace gige::genapi

#endif
