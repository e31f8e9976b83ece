#include "Faults.h"
#include "FaultText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace camera
{
namespace
{

using gige::wire::GvcpStatus;
using testing::ElementsAre;

std::vector<std::uint32_t> order(Faults& faults, std::uint32_t lastPacket)
{
    std::vector<PacketStep> steps;
    faults.packetSteps(lastPacket, steps);
    std::vector<std::uint32_t> ids;
    ids.reserve(steps.size());
    for (const PacketStep& step : steps) {
        ids.push_back(step.packetId);
    }
    return ids;
}

TEST(Faults, LeaveAllAsItIsAtFirst)
{
    Faults faults;
    EXPECT_FALSE(faults.disturbsPackets());
    EXPECT_FALSE(faults.onFrame(0));
    EXPECT_FALSE(faults.onAccess(FeatureId::Width, true));
    EXPECT_THAT(order(faults, 3), ElementsAre(0, 1, 2, 3));
}

TEST(Faults, LoseRepeatAndReorderPacketsByPosition)
{
    Faults faults;
    faults.add(PacketFault{.kind = PacketFaultKind::Lose, .packetId = 1});
    faults.add(PacketFault{.kind = PacketFaultKind::Repeat, .packetId = 3});
    faults.add(PacketFault{.kind = PacketFaultKind::Reorder, .packetId = 4, .blocks = 2});
    EXPECT_TRUE(faults.disturbsPackets());
    EXPECT_THAT(order(faults, 9), ElementsAre(0, 2, 3, 3, 5, 6, 7, 8, 4, 9));
    EXPECT_THAT(order(faults, 5), ElementsAre(0, 1, 2, 3, 5, 4));
    EXPECT_FALSE(faults.disturbsPackets());
}

TEST(Faults, LosePacketsByRate)
{
    Faults faults;
    faults.setPacketRates({.lose = 0.25});
    const std::size_t left = order(faults, 9999).size();
    EXPECT_GT(left, 7000U);
    EXPECT_LT(left, 8000U);
}

TEST(Faults, DisturbAFrameAsOftenAsTold)
{
    Faults faults;
    faults.add(FrameFault{.kind = FrameFaultKind::Repeat, .position = 2, .times = 2});
    EXPECT_FALSE(faults.onFrame(1));
    EXPECT_EQ(faults.onFrame(2)->kind, FrameFaultKind::Repeat);
    EXPECT_TRUE(faults.onFrame(2));
    EXPECT_FALSE(faults.onFrame(2));
}

TEST(Faults, DisturbAnAccessAfterOthers)
{
    Faults faults;
    faults.add(AccessFault{.feature = FeatureId::Width,
                           .access = AccessKind::Write,
                           .status = GvcpStatus::Busy,
                           .times = 1,
                           .after = 1});
    EXPECT_FALSE(faults.onAccess(FeatureId::Width, false));
    EXPECT_FALSE(faults.onAccess(FeatureId::Width, true));
    EXPECT_FALSE(faults.onAccess(FeatureId::Height, true));
    EXPECT_EQ(faults.onAccess(FeatureId::Width, true)->status, GvcpStatus::Busy);
    EXPECT_FALSE(faults.onAccess(FeatureId::Width, true));
}

TEST(Faults, ClearEndsThemAll)
{
    Faults faults;
    faults.setSilent(true);
    faults.setPacketRates({.lose = 1.0});
    faults.setAvailable(FeatureId::Width, false);
    faults.limitSerial(36);
    faults.clear();
    EXPECT_FALSE(faults.isSilent());
    EXPECT_FALSE(faults.disturbsPackets());
    EXPECT_TRUE(faults.isAvailable(FeatureId::Width));
    EXPECT_EQ(faults.serialLimit(), kForever);
}

TEST(FaultText, ReadsPacketFaults)
{
    const PacketFault fault = parsePacketFault("reorder:7:3");
    EXPECT_EQ(fault.kind, PacketFaultKind::Reorder);
    EXPECT_EQ(fault.packetId, 7U);
    EXPECT_EQ(fault.blocks, 3U);
    EXPECT_EQ(parsePacketFault("lose:0:always").blocks, kForever);
}

TEST(FaultText, ReadsFrameFaults)
{
    const FrameFault fault = parseFrameFault("silence:4:100:2500:2");
    EXPECT_EQ(fault.kind, FrameFaultKind::Silence);
    EXPECT_EQ(fault.position, 4U);
    EXPECT_EQ(fault.amount, 100U);
    EXPECT_EQ(fault.pause.count(), 2500);
    EXPECT_EQ(fault.times, 2U);
}

TEST(FaultText, ReadsAccessFaults)
{
    const AccessFault reject = parseAccessFault("reject:Width:0x8007:4");
    EXPECT_EQ(reject.feature, FeatureId::Width);
    EXPECT_EQ(reject.status, GvcpStatus::Busy);
    EXPECT_EQ(reject.times, 4U);
    EXPECT_EQ(parseAccessFault("corrupt:CameraState:9").value, 9U);
    EXPECT_EQ(parseAccessFault("late:GainRaw:300").delay.count(), 300);
    EXPECT_EQ(parseAccessFault("drop:GainRaw").kind, AccessFaultKind::DropAck);
}

TEST(FaultText, RefusesWhatItCannotRead)
{
    EXPECT_THROW((void)parsePacketFault("lose"), std::invalid_argument);
    EXPECT_THROW((void)parsePacketFault("eat:1"), std::invalid_argument);
    EXPECT_THROW((void)parsePacketFault("lose:1:2:3"), std::invalid_argument);
    EXPECT_THROW((void)parseAccessFault("reject:Foo"), std::invalid_argument);
    EXPECT_THROW((void)parseNumber("12x"), std::invalid_argument);
}

} // namespace
} // namespace camera
