#ifndef TELVO_GIGE_GENAPI_DESCRIPTIONREADER_H
#define TELVO_GIGE_GENAPI_DESCRIPTIONREADER_H

#include "GenApiStatus.h"
#include "NodeStore.h"

#include <pugixml.hpp>

#include <string_view>

namespace gige::genapi
{

/// Parses a description within the limits on its size, depth and number of elements.
/// @param document  out: the XML, owning a copy of the text
/// @return its RegisterDescription element
Result<pugi::xml_node> parseDescription(std::string_view xml, pugi::xml_document& document);

/// Creates and reads all nodes. @return TooManyNodes; the defects of nodes are theirs
Status readNodes(const pugi::xml_node& description, NodeStore& store);

} // namespace gige::genapi

#endif
