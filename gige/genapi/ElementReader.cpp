#include "ElementReader.h"

#include "TextNumbers.h"

#include <algorithm>

namespace gige::genapi
{

std::string_view localName(const pugi::xml_node& element)
{
    const std::string_view name = element.name();
    // Some descriptions give their schema's namespace a prefix.
    const std::size_t colon = name.rfind(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

std::vector<pugi::xml_node> childrenOf(const pugi::xml_node& element, std::string_view tag)
{
    std::vector<pugi::xml_node> found;
    std::ranges::copy_if(element.children(), std::back_inserter(found),
                         [tag](const auto& child) { return localName(child) == tag; });
    return found;
}

std::string_view textOf(const pugi::xml_node& element)
{
    return trimmed(element.text().get());
}

ElementReader::ElementReader(NodeStore& store, Node& node, pugi::xml_node element,
                             pugi::xml_node fallback)
    : mStore(store), mNode(node), mElement(element), mFallback(fallback)
{
}

std::vector<pugi::xml_node> ElementReader::children(std::string_view tag) const
{
    std::vector<pugi::xml_node> found = childrenOf(mElement, tag);
    return found.empty() ? childrenOf(mFallback, tag) : found;
}

pugi::xml_node ElementReader::child(std::string_view tag) const
{
    const auto isWanted = [tag](const pugi::xml_node& child) { return localName(child) == tag; };
    const pugi::xml_node own = mElement.find_child(isWanted);
    return own.empty() ? mFallback.find_child(isWanted) : own;
}

std::ptrdiff_t ElementReader::position() const
{
    // An entry of a structure has the structure's place, and with it its cached content.
    return mFallback.empty() ? mElement.offset_debug() : mFallback.offset_debug();
}

std::optional<std::string> ElementReader::text(std::string_view tag) const
{
    const std::vector<pugi::xml_node> own = childrenOf(mElement, tag);
    return own.empty() ? std::nullopt : std::optional(std::string(textOf(own.front())));
}

std::optional<std::int64_t> ElementReader::integer(std::string_view tag)
{
    const std::optional<std::int64_t> value = parseInteger(textOf(child(tag)));
    if (!value && has(tag)) {
        fail(Status::BadNode);
    }
    return value;
}

std::optional<double> ElementReader::real(std::string_view tag)
{
    const std::optional<double> value = parseReal(textOf(child(tag)));
    if (!value && has(tag)) {
        fail(Status::BadNode);
    }
    return value;
}

Node* ElementReader::named(std::string_view name)
{
    Node* const target = mStore.find(trimmed(name));
    if (target == nullptr) {
        fail(Status::BadNode);
    }
    return target;
}

Node* ElementReader::reference(std::string_view name)
{
    Node* const target = named(name);
    if (target != nullptr) {
        mNode.links().below.push_back(target);
        target->links().above.push_back(&mNode);
    }
    return target;
}

Node* ElementReader::referenceIn(std::string_view tag)
{
    return has(tag) ? reference(textOf(child(tag))) : nullptr;
}

std::vector<Node*> ElementReader::referencesIn(std::string_view tag)
{
    std::vector<Node*> targets;
    for (const pugi::xml_node& element : children(tag)) {
        if (Node* const target = reference(textOf(element)); target != nullptr) {
            targets.push_back(target);
        }
    }
    return targets;
}

Node* ElementReader::conditionIn(std::string_view tag)
{
    Node* const target = has(tag) ? named(textOf(child(tag))) : nullptr;
    if (target != nullptr) {
        // Below only: it is read anew with the node, but is no part of the node's value.
        mNode.links().below.push_back(target);
    }
    return target;
}

std::vector<Node*> ElementReader::linksIn(std::string_view tag) const
{
    std::vector<Node*> targets;
    for (const pugi::xml_node& element : children(tag)) {
        if (Node* const target = mStore.find(textOf(element)); target != nullptr) {
            targets.push_back(target);
        }
    }
    return targets;
}

std::optional<Operand> ElementReader::operand(std::string_view tag, bool isInteger)
{
    std::string referenceTag = "p";
    referenceTag += tag;
    if (Node* const target = referenceIn(referenceTag); target != nullptr) {
        return Operand(*target);
    }
    if (isInteger) {
        const std::optional<std::int64_t> value = integer(tag);
        return value ? std::optional(Operand(Number(*value))) : std::nullopt;
    }
    const std::optional<double> value = real(tag);
    return value ? std::optional(Operand(Number(*value))) : std::nullopt;
}

void ElementReader::fail(Status status)
{
    // The first defect is the cause; those behind it follow from it.
    if (mNode.defect() == Status::Ok) {
        mNode.setDefect(status);
    }
}

} // namespace gige::genapi
