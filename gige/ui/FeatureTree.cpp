#include "FeatureTree.h"

#include "DisplayText.h"

#include <utility>

namespace gige::ui
{

FeatureTree::FeatureTree(FeatureNode root) : mRoot(std::move(root))
{
    for (const FeatureNode& child : mRoot.children) {
        add(child, 0, std::nullopt);
    }
}

void FeatureTree::add(const FeatureNode& node, std::size_t depth, std::optional<std::size_t> parent)
{
    const std::size_t index = mItems.size();
    mItems.push_back({.label = displayText(node.label),
                      .description = displayText(node.description),
                      .depth = depth,
                      .parent = parent,
                      .feature = node.feature.get()});
    for (const FeatureNode& child : node.children) {
        add(child, depth + 1, index);
    }
}

std::vector<std::size_t> FeatureTree::visibleItems(genapi::Visibility level) const
{
    std::vector<bool> isVisible(mItems.size(), false);
    for (std::size_t i = 0; i < mItems.size(); ++i) {
        const Feature* const feature = mItems[i].feature;
        if (feature == nullptr || feature->info().visibility > level) {
            continue;
        }
        isVisible[i] = true;
        for (auto above = mItems[i].parent; above; above = mItems[*above].parent) {
            isVisible[*above] = true;
        }
    }
    std::vector<std::size_t> visible;
    for (std::size_t i = 0; i < mItems.size(); ++i) {
        if (isVisible[i]) {
            visible.push_back(i);
        }
    }
    return visible;
}

bool FeatureTree::isWithin(std::size_t item, std::size_t category) const
{
    for (std::optional<std::size_t> above = item; above; above = mItems[*above].parent) {
        if (*above == category) {
            return true;
        }
    }
    return false;
}

} // namespace gige::ui
