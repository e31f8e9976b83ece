#ifndef TELVO_GIGE_UI_FEATURETREE_H
#define TELVO_GIGE_UI_FEATURETREE_H

#include "Feature.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace gige::ui
{

/// How much a user wants to see.
struct VisibilityLevel {
    const char* name;
    genapi::Visibility visibility;
};
inline constexpr std::array kVisibilityLevels{
    VisibilityLevel{"Beginner", genapi::Visibility::Beginner},
    VisibilityLevel{"Expert", genapi::Visibility::Expert},
    VisibilityLevel{"Guru", genapi::Visibility::Guru}};
inline constexpr std::size_t kFirstVisibilityLevel = 1; ///< when a browser opens

/// A line of the tree.
struct FeatureItem {
    std::string label{}; ///< fit to be shown, as is the description
    std::string description{};
    std::size_t depth = 0;
    std::optional<std::size_t> parent{}; ///< the category that it is in
    Feature* feature = nullptr;          ///< null: a category
};

/// The categories and features of a source as a list of lines, each category before what is in it.
class FeatureTree
{
  public:
    explicit FeatureTree(FeatureNode root);

    const std::vector<FeatureItem>& items() const { return mItems; }
    /// The items that a user of this level sees, in order: features up to this visibility, and the
    /// categories that such a feature is in.
    std::vector<std::size_t> visibleItems(genapi::Visibility level) const;
    /// Whether the item is the category itself, or in it or in a category below it.
    bool isWithin(std::size_t item, std::size_t category) const;

  private:
    void add(const FeatureNode& node, std::size_t depth, std::optional<std::size_t> parent);

    FeatureNode mRoot; // owns the features
    std::vector<FeatureItem> mItems;
};

} // namespace gige::ui

#endif
