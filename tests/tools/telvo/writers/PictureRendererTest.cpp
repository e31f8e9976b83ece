#include "PictureRenderer.h"
#include "Failure.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <thread>

namespace
{

using namespace telvo;

constexpr PictureStyle kGray{.keepHeader = true};
constexpr PictureStyle kColour{.keepHeader = true, .colour = BayerPattern::RG};

GrayImage plain(int value)
{
    GrayImage frame(16, 4);
    std::ranges::fill(frame.pixels, static_cast<std::uint8_t>(value));
    return frame;
}

/// The first pixel of each picture that comes of 50 frames.
std::vector<int> rendered(const PictureStyle& style)
{
    std::vector<int> pixels;
    PictureRenderer renderer(style, [&](PictureView picture) {
        EXPECT_EQ(picture.channels, style.channels());
        EXPECT_EQ(picture.pixels.size(), picture.size());
        pixels.push_back(picture.pixels[0]);
    });
    for (int i = 0; i < 50; ++i) {
        renderer.put(plain(i).view());
    }
    renderer.flush();
    return pixels;
}

TEST(PictureRenderer, KeepsTheOrderOfTheFrames)
{
    std::vector<int> all(50);
    std::ranges::generate(all, [i = 0]() mutable { return i++; });
    EXPECT_EQ(rendered(kGray), all);
    EXPECT_EQ(rendered(kColour), all);
}

TEST(PictureRenderer, GivesPicturesOnTheCallersThread)
{
    std::set<std::thread::id> threads;
    PictureRenderer renderer(kColour,
                             [&](PictureView) { threads.insert(std::this_thread::get_id()); });
    for (int i = 0; i < 20; ++i) {
        renderer.put(plain(i).view());
    }
    renderer.flush();
    EXPECT_THAT(threads, testing::ElementsAre(std::this_thread::get_id()));
}

TEST(PictureRenderer, DropsWhatWaitsBehindAFailure)
{
    int taken = 0;
    PictureRenderer renderer(kColour, [&](PictureView) {
        ++taken;
        throw Failure("full");
    });
    EXPECT_THROW(
        {
            for (int i = 0; i < 1000; ++i) {
                renderer.put(plain(i).view());
            }
        },
        Failure);
    renderer.flush();
    EXPECT_EQ(taken, 1);
}

} // namespace
