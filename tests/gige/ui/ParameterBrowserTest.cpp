#include "ParameterBrowser.h"

#include "FakeFeatures.h"

#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <thread>

namespace gige::ui
{
namespace
{

using namespace std::chrono_literals;

class FakeSource final : public FeatureSource
{
  public:
    FeatureNode features() override
    {
        FeatureNode root = fakeTree();
        width = static_cast<FakeFeature*>(root.children[0].children[0].feature.get());
        height = static_cast<FakeFeature*>(root.children[0].children[1].feature.get());
        return root;
    }
    void forgetValues() override { ++forgotten; }

    FakeFeature* width = nullptr;
    FakeFeature* height = nullptr;
    std::atomic<int> forgotten{0};
};

constexpr std::size_t kImage = 0;
constexpr std::size_t kWidth = 1;
constexpr std::size_t kHeight = 2;
constexpr std::size_t kSize = 6; // the last one

class ParameterBrowserTest : public testing::Test
{
  protected:
    template <typename Condition>
    static bool eventually(Condition condition)
    {
        const auto end = std::chrono::steady_clock::now() + 30s;
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end) {
                return false;
            }
            std::this_thread::sleep_for(1ms);
        }
        return true;
    }

    bool shows(std::size_t item, std::int64_t value)
    {
        return eventually([&] {
            const auto state = browser.state(item);
            return state && state->value == FeatureValue(value);
        });
    }

    FakeSource source;
    std::atomic<int> changes{0};
    ParameterBrowser browser{source, [this] { ++changes; }};
};

TEST_F(ParameterBrowserTest, ReadsAllFeatures)
{
    EXPECT_TRUE(shows(kWidth, 10));
    EXPECT_TRUE(shows(kSize, 10));
    EXPECT_FALSE(browser.state(kImage));
    EXPECT_EQ(source.forgotten, 1);
    EXPECT_GE(changes, 4);
}

TEST_F(ParameterBrowserTest, WritesWhatIsEntered)
{
    ASSERT_TRUE(shows(kWidth, 10));
    EXPECT_TRUE(browser.edit(kWidth, "42"));
    EXPECT_TRUE(shows(kWidth, 42));
    EXPECT_EQ(source.width->number, 42);
    EXPECT_EQ(browser.message(), "Width: written.");
}

TEST_F(ParameterBrowserTest, ReadsAllAnewAfterAnEdit)
{
    ASSERT_TRUE(shows(kHeight, 10));
    source.height->number = 11; // as a camera changes one feature with another
    EXPECT_TRUE(browser.edit(kHeight, "12"));
    EXPECT_TRUE(shows(kHeight, 12));
    EXPECT_TRUE(eventually([&] { return source.forgotten == 2; }));
}

TEST_F(ParameterBrowserTest, RefusesAWrongTextAtOnce)
{
    ASSERT_TRUE(shows(kWidth, 10));
    EXPECT_FALSE(browser.edit(kWidth, "101"));
    EXPECT_EQ(browser.message(), "101 is above the maximum of 100.");
    EXPECT_EQ(source.width->number, 10);
}

TEST_F(ParameterBrowserTest, SaysWhyTheDeviceRefused)
{
    ASSERT_TRUE(shows(kWidth, 10));
    source.width->refuses = true;
    EXPECT_TRUE(browser.edit(kWidth, "20"));
    EXPECT_TRUE(eventually([&] { return browser.message() == "Width: refused with BUSY."; }));
    EXPECT_EQ(source.width->number, 10);
}

TEST_F(ParameterBrowserTest, DoesNotEditCategories)
{
    EXPECT_FALSE(browser.edit(kImage, "1"));
}

TEST_F(ParameterBrowserTest, ReadsAnewWhenAsked)
{
    ASSERT_TRUE(shows(kSize, 10));
    source.height->number = 77;
    browser.refresh();
    EXPECT_TRUE(shows(kHeight, 77));
    EXPECT_EQ(source.forgotten, 2);
}

} // namespace
} // namespace gige::ui
