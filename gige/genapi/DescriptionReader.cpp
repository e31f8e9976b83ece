#include "DescriptionReader.h"

#include "GenApiLimits.h"
#include "NodeCollector.h"

#include <algorithm>
#include <utility>

namespace gige::genapi
{

namespace
{

// An opening and a closing tag.
constexpr std::size_t kBracketCountLimit = 2 * kElementCountLimit;

// Walks by the links between elements: neither stack nor memory depends on the depth.
bool isTooDeep(const pugi::xml_document& document)
{
    std::size_t depth = 0;
    pugi::xml_node element = document;
    while (true) {
        if (element.first_child()) {
            element = element.first_child();
            if (++depth > kXmlDepthLimit && element.type() == pugi::node_element) {
                return true;
            }
            continue;
        }
        while (!element.empty() && !element.next_sibling()) {
            element = element.parent();
            --depth;
        }
        if (element.empty()) {
            return false;
        }
        element = element.next_sibling();
    }
}

} // namespace

Result<pugi::xml_node> parseDescription(std::string_view xml, pugi::xml_document& document)
{
    xml = xml.substr(0, xml.find_last_not_of('\0') + 1);
    if (xml.size() > kDescriptionSizeLimit) {
        return Status::DescriptionTooLarge;
    }
    // Before parsing, since a parsed element takes much more memory than its text.
    if (std::cmp_greater(std::ranges::count(xml, '<'), kBracketCountLimit)) {
        return Status::TooManyNodes;
    }
    if (!document.load_buffer(xml.data(), xml.size())) {
        return Status::DescriptionMalformed;
    }
    if (isTooDeep(document)) {
        return Status::DescriptionTooDeep;
    }
    const pugi::xml_node description = document.document_element();
    if (localName(description) != "RegisterDescription") {
        return Status::DescriptionMalformed;
    }
    return description;
}

Status readNodes(const pugi::xml_node& description, NodeStore& store)
{
    NodeCollector collector(store);
    if (const Status status = collector.collect(description); status != Status::Ok) {
        return status;
    }
    for (const UnreadNode& unread : collector.unread()) {
        ElementReader reader(store, *unread.node, unread.element, unread.structure);
        readCommon(reader);
        unread.recipe->read(reader);
    }
    return Status::Ok;
}

} // namespace gige::genapi
