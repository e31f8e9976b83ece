#include "DeviceList.h"

#include <gtest/gtest.h>

namespace gige::ui
{
namespace
{

wire::MacAddress mac(std::uint8_t last)
{
    return {{0x02, 0x54, 0x45, 0x00, 0x00, last}};
}

ListedDevice device(std::uint8_t last, DeviceState state = DeviceState::Unknown)
{
    return {.mac = mac(last),
            .ip = {0x7F000000U + last},
            .model = "TOVI1",
            .serial = "VC1",
            .name = "left",
            .state = state};
}

std::vector<std::uint8_t> order(const DeviceList& list)
{
    std::vector<std::uint8_t> last;
    for (const ListedDevice& one : list.devices()) {
        last.push_back(one.mac.bytes[5]);
    }
    return last;
}

TEST(DeviceList, IsSortedByMacAddress)
{
    DeviceList list;
    for (const int last : {0x21, 0x0B, 0x15}) {
        list.hear(device(static_cast<std::uint8_t>(last)));
    }
    EXPECT_EQ(order(list), (std::vector<std::uint8_t>{0x0B, 0x15, 0x21}));
}

TEST(DeviceList, HasACameraThatAnswersTwiceOnce)
{
    DeviceList list;
    list.hear(device(1));
    ListedDevice renamed = device(1);
    renamed.name = "right";
    list.hear(renamed);
    EXPECT_EQ(list.devices(), std::vector{renamed});
}

TEST(DeviceList, KeepsTheStateOfACameraThatAnswersAgain)
{
    DeviceList list;
    list.hear(device(1));
    list.setState(mac(1), DeviceState::InUse);
    list.hear(device(1));
    EXPECT_EQ(list.devices().at(0).state, DeviceState::InUse);
}

TEST(DeviceList, AsksAnewWhenACameraComesWithinReach)
{
    DeviceList list;
    list.hear(device(1, DeviceState::OtherSubnet));
    list.hear(device(1, DeviceState::Unknown));
    EXPECT_EQ(list.devices().at(0).state, DeviceState::Unknown);
    list.setState(mac(1), DeviceState::Free);
    list.hear(device(1, DeviceState::OtherSubnet));
    EXPECT_EQ(list.devices().at(0).state, DeviceState::OtherSubnet);
}

TEST(DeviceList, ShowsACameraWhoseMacIsClaimedTwiceAsOutOfReach)
{
    DeviceList list;
    list.hear(device(1));
    list.setState(mac(1), DeviceState::Free);
    list.hear(device(1, DeviceState::Conflict));
    EXPECT_EQ(list.devices().at(0).state, DeviceState::Conflict);
    EXPECT_FALSE(list.devices().at(0).isReachable());
    EXPECT_EQ(deviceTexts(list.devices().at(0)).back(), "MAC conflict");
    EXPECT_EQ(stateHint(DeviceState::Conflict), "Another device claims this camera's MAC address.");
}

TEST(DeviceList, SaysWhyACameraIsOutOfReachNow)
{
    DeviceList list;
    list.hear(device(1, DeviceState::OtherSubnet));
    list.hear(device(1, DeviceState::Conflict));
    EXPECT_EQ(list.devices().at(0).state, DeviceState::Conflict);
}

TEST(DeviceList, KeepsACameraThatMissesOneRoundAndDropsItAfterTwo)
{
    DeviceList list;
    list.hear(device(1));
    list.endRound();
    list.endRound();
    EXPECT_EQ(order(list), (std::vector<std::uint8_t>{1}));
    list.endRound();
    EXPECT_TRUE(list.devices().empty());
}

TEST(DeviceList, KeepsACameraThatIsHeardAgainAfterAMissedRound)
{
    DeviceList list;
    list.hear(device(1));
    list.endRound();
    list.endRound();
    list.hear(device(1));
    list.endRound();
    list.endRound();
    EXPECT_EQ(list.devices().size(), 1U);
}

TEST(DeviceList, SelectsNothingByItself)
{
    DeviceList list;
    list.hear(device(1));
    EXPECT_EQ(list.selectedRow(), std::nullopt);
    EXPECT_EQ(list.selected(), std::nullopt);
}

TEST(DeviceList, KeepsTheSelectionOnTheCameraWhenItMovesToAnotherRow)
{
    DeviceList list;
    list.hear(device(0x15));
    list.select(mac(0x15));
    EXPECT_EQ(list.selectedRow(), 0U);
    list.hear(device(0x0B));
    EXPECT_EQ(list.selectedRow(), 1U);
    EXPECT_EQ(list.selected(), device(0x15));
}

TEST(DeviceList, LosesTheSelectionWithTheCamera)
{
    DeviceList list;
    list.hear(device(1));
    list.select(mac(1));
    for (int round = 0; round < 3; ++round) {
        list.endRound();
    }
    EXPECT_EQ(list.selected(), std::nullopt);
    list.hear(device(1));
    EXPECT_EQ(list.selected(), std::nullopt);
}

TEST(DeviceList, IgnoresTheSelectionOfACameraThatIsNotListed)
{
    DeviceList list;
    list.hear(device(1));
    list.select(mac(1));
    list.select(mac(2));
    EXPECT_EQ(list.selected(), device(1));
}

TEST(DeviceTexts, AreTheRowOfACamera)
{
    const DeviceTexts headings{"MAC address",   "IP address", "Model",
                               "Serial number", "Name",       "State"};
    EXPECT_EQ(deviceHeadings(), headings);
    const DeviceTexts texts{"02:54:45:00:00:0b", "127.0.0.11", "TOVI1", "VC1", "left", "in use"};
    EXPECT_EQ(deviceTexts(device(0x0B, DeviceState::InUse)), texts);
}

TEST(DeviceTexts, AreFitToBeShownWhateverTheCameraSends)
{
    ListedDevice rude = device(1, DeviceState::Free);
    rude.name = "\x1B[2Jx";
    EXPECT_EQ(deviceTexts(rude)[4], " [2Jx");
}

TEST(StateHint, SaysWhyACameraCannotBeConnectedTo)
{
    EXPECT_EQ(stateHint(DeviceState::Free), "");
    EXPECT_EQ(stateHint(DeviceState::InUse), "Another program controls this camera.");
    EXPECT_EQ(stateHint(DeviceState::OtherSubnet),
              "This camera's address is in a subnet that this computer does not reach.");
    EXPECT_FALSE(device(1, DeviceState::OtherSubnet).isReachable());
    EXPECT_TRUE(device(1, DeviceState::InUse).isReachable());
}

} // namespace
} // namespace gige::ui
