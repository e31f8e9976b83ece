#include "DescriptionReader.h"

#include "GenApiLimits.h"
#include "NodeReader.h"

#include <algorithm>
#include <utility>
#include <vector>

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
    // Devices fill the memory behind the text up with NULs.
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

namespace
{

constexpr std::string_view kEntryTag = "StructEntry";

// Depth is bounded: kXmlDepthLimit.
std::size_t countElements(const pugi::xml_node& element)
{
    std::size_t count = element.type() == pugi::node_element ? 1 : 0;
    for (const pugi::xml_node& child : element.children()) {
        count += countElements(child);
    }
    return count;
}

// Each entry reads the structure's elements again: many of both would take as long as the square.
bool isTooLarge(const pugi::xml_node& structure)
{
    std::size_t entries = 0;
    std::size_t elements = 0;
    for (const pugi::xml_node& child : structure.children()) {
        const bool isEntry = localName(child) == kEntryTag;
        entries += isEntry ? 1 : 0;
        elements += isEntry ? 0 : countElements(child);
    }
    return entries > kStructureEntryLimit || elements > kStructureElementLimit;
}

// Nodes inside the element: entries of an enumeration, formulas of an address.
std::size_t countInnerNodes(const pugi::xml_node& element)
{
    return childrenOf(element, "EnumEntry").size() + childrenOf(element, "IntSwissKnife").size();
}

/// A node that exists, but has not read its element yet.
struct UnreadNode {
    Node* node;
    const NodeRecipe* recipe;
    pugi::xml_node element;
    pugi::xml_node structure; // the StructReg of an entry
};

/// Creates the nodes of a description, through groups and structures.
class NodeCollector
{
  public:
    explicit NodeCollector(NodeStore& store) : mStore(store) {}

    /// @param parent  the description, or a group
    /// @return TooManyNodes
    Status collect(const pugi::xml_node& parent);

    /// Without the entries of structures that are too large: these nodes stay defective.
    const std::vector<UnreadNode>& unread() const { return mUnread; }

  private:
    Status collectOne(const pugi::xml_node& element);
    Status collectStructure(const pugi::xml_node& structure);
    Status create(const NodeRecipe& recipe, const pugi::xml_node& element,
                  const pugi::xml_node& structure, Status defect);

    NodeStore& mStore;
    std::vector<UnreadNode> mUnread;
    std::size_t mCount = 0;
};

Status NodeCollector::collect(const pugi::xml_node& parent)
{
    Status status = Status::Ok;
    for (const pugi::xml_node& element : parent.children()) {
        status = status == Status::Ok ? collectOne(element) : status;
    }
    return status;
}

Status NodeCollector::collectOne(const pugi::xml_node& element)
{
    const std::string_view tag = localName(element);
    // Groups only order the text; their nodes are on a par with all others.
    if (tag == "Group") {
        return collect(element);
    }
    if (tag == "StructReg") {
        return collectStructure(element);
    }
    // Elements of later schemas are unknown, not wrong: the rest of the tree works.
    const NodeRecipe* const recipe = tag == kEntryTag ? nullptr : findRecipe(tag);
    return recipe == nullptr ? Status::Ok : create(*recipe, element, {}, Status::Ok);
}

Status NodeCollector::collectStructure(const pugi::xml_node& structure)
{
    const Status defect = isTooLarge(structure) ? Status::TooComplex : Status::Ok;
    Status status = Status::Ok;
    for (const pugi::xml_node& entry : childrenOf(structure, kEntryTag)) {
        status = status == Status::Ok ? create(*findRecipe(kEntryTag), entry, structure, defect)
                                      : status;
    }
    return status;
}

Status NodeCollector::create(const NodeRecipe& recipe, const pugi::xml_node& element,
                             const pugi::xml_node& structure, Status defect)
{
    const std::string name = element.attribute("Name").value();
    // Nothing can refer to it, and no host can find it.
    if (name.empty()) {
        return Status::Ok;
    }
    mCount += 1 + countInnerNodes(element);
    if (defect == Status::Ok) {
        mCount += countInnerNodes(structure);
    }
    if (mCount > kNodeCountLimit) {
        return Status::TooManyNodes;
    }
    std::unique_ptr<Node> node = recipe.create(mStore.state(), name);
    node->setDefect(defect);
    if (defect == Status::Ok) {
        mUnread.push_back({node.get(), &recipe, element, structure});
    }
    mStore.add(std::move(node));
    return Status::Ok;
}

} // namespace

Status readNodes(const pugi::xml_node& description, NodeStore& store)
{
    NodeCollector collector(store);
    if (const Status status = collector.collect(description); status != Status::Ok) {
        return status;
    }
    // Only now: an element may name nodes that stand after it.
    for (const UnreadNode& unread : collector.unread()) {
        ElementReader reader(store, *unread.node, unread.element, unread.structure);
        readCommon(reader);
        unread.recipe->read(reader);
    }
    return Status::Ok;
}

} // namespace gige::genapi
