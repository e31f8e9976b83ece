#include "LossPlaces.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

namespace
{

using namespace telvo;

constexpr std::size_t kPacket = 100;

TEST(LossPlaces, AreWhereNoPacketCame)
{
    LossPlaces places(kPacket);
    std::vector<std::uint8_t> picture(1950); // twenty packets, the last one shorter
    places.mark(picture);
    for (std::size_t i = 0; i < picture.size(); ++i) {
        const std::size_t packet = i / kPacket;
        if (packet != 0 && packet != 7 && packet != 18 && packet != 19) {
            picture[i] = 0;
        }
    }
    places.count(picture);
    EXPECT_EQ(places.lost(), (LostByTenth{1, 0, 0, 1, 0, 0, 0, 0, 0, 2}));
}

TEST(LossPlaces, AreNoneInAWholePicture)
{
    LossPlaces places(kPacket);
    for (const int value : {0, 0x5A, 0xFF}) {
        std::vector<std::uint8_t> picture(1950);
        places.mark(picture);
        std::ranges::fill(picture, static_cast<std::uint8_t>(value));
        places.count(picture);
    }
    EXPECT_EQ(places.lost(), LostByTenth{});
}

} // namespace
