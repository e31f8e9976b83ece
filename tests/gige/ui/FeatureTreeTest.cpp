#include "FeatureTree.h"

#include "FakeFeatures.h"

#include <gtest/gtest.h>

namespace gige::ui
{
namespace
{

std::vector<std::string> labels(const FeatureTree& tree, const std::vector<std::size_t>& items)
{
    std::vector<std::string> labels;
    for (const std::size_t item : items) {
        labels.push_back(std::string(2 * tree.items()[item].depth, ' ') + tree.items()[item].label);
    }
    return labels;
}

TEST(FeatureTree, ListsEachCategoryBeforeWhatIsInIt)
{
    const FeatureTree tree(fakeTree());
    EXPECT_EQ(labels(tree, tree.visibleItems(genapi::Visibility::Guru)),
              (std::vector<std::string>{"Image", "  Width", "  Height", "Device", "  Name",
                                        "  Memory", "    Size"}));
}

TEST(FeatureTree, HidesWhatIsAboveTheLevelAndCategoriesThatThenAreEmpty)
{
    const FeatureTree tree(fakeTree());
    EXPECT_EQ(labels(tree, tree.visibleItems(genapi::Visibility::Beginner)),
              (std::vector<std::string>{"Image", "  Width", "  Height", "Device", "  Name"}));
}

TEST(FeatureTree, NeverShowsInvisibleFeatures)
{
    FeatureNode root = category("Root");
    root.children.push_back(feature("Secret", genapi::Visibility::Invisible));
    const FeatureTree tree(std::move(root));
    EXPECT_TRUE(tree.visibleItems(genapi::Visibility::Guru).empty());
}

TEST(FeatureTree, KnowsWhatIsWithinACategory)
{
    const FeatureTree tree(fakeTree()); // Image 0, Device 3, Memory 5, Size 6
    EXPECT_TRUE(tree.isWithin(6, 5));
    EXPECT_TRUE(tree.isWithin(6, 3));
    EXPECT_FALSE(tree.isWithin(6, 0));
    EXPECT_TRUE(tree.isWithin(3, 3));
}

TEST(FeatureTree, OfNothingIsEmpty)
{
    EXPECT_TRUE(FeatureTree(FeatureNode()).items().empty());
}

} // namespace
} // namespace gige::ui
