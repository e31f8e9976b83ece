#include "NodeCollector.h"

#include "GenApiLimits.h"

namespace gige::genapi
{

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

} // namespace

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
    if (tag == "Group") {
        return collect(element);
    }
    if (tag == "StructReg") {
        return collectStructure(element);
    }
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

} // namespace gige::genapi
