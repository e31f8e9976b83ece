// Asking for a block: over the serial line, through features, from a sequence.
#include "BlockTransferTest.h"

namespace
{

class BlockRequestTest : public BlockTransferTest
{
};

const Texts kFeatureRequest{
    "log \nRequest frames: 10 - 19",
    "StreamEndNumber.SetValue 19",
    "StreamStartNumber.SetValue 10",
    "StreamSequenceStart.Execute",
};

TEST_F(BlockRequestTest, SendsTheSerialCommand)
{
    start(serial());
    EXPECT_EQ(request(0, 1000), 0);
    EXPECT_EQ(s.takeCalls(), (Texts{
                                 "log \nRequest frames: 0 - 999",
                                 "log Write data :GW07b0000003E7:GW07a800000000:GW07f8 Count 37",
                                 "PvSerialPortIPEngine.Write :GW07b0000003E7:GW07a800000000:GW07f8",
                                 "log 37 bytes written",
                             }));
}

TEST_F(BlockRequestTest, SendsTheSerialCommandAgainAtOnceWhenItIsCutShort)
{
    start(serial());
    s.acceptSerialBytes({36, 0, 37});
    EXPECT_EQ(request(10, 10), 0);
    EXPECT_EQ(s.takeCalls(), (Texts{
                                 "log \nRequest frames: 10 - 19",
                                 "log Write data :GW07b000000013:GW07a80000000A:GW07f8 Count 37",
                                 "PvSerialPortIPEngine.Write :GW07b000000013:GW07a80000000A:GW07f8",
                                 "log 36 only bytes written instead of requested 37",
                                 "log Write data :GW07b000000013:GW07a80000000A:GW07f8 Count 37",
                                 "PvSerialPortIPEngine.Write :GW07b000000013:GW07a80000000A:GW07f8",
                                 "log 0 only bytes written instead of requested 37",
                                 "log Write data :GW07b000000013:GW07a80000000A:GW07f8 Count 37",
                                 "PvSerialPortIPEngine.Write :GW07b000000013:GW07a80000000A:GW07f8",
                                 "log 37 bytes written",
                             }));
}

const Texts kShortWrite{
    "log Write data :GW07b000000013:GW07a80000000A:GW07f8 Count 37",
    "PvSerialPortIPEngine.Write :GW07b000000013:GW07a80000000A:GW07f8",
    "log 36 only bytes written instead of requested 37",
};

TEST_F(BlockRequestTest, FallsBackToFeaturesForGoodAfterThreeShortWrites)
{
    start(serial());
    s.acceptSerialBytes({36, 36, 36});
    EXPECT_EQ(request(10, 10), 0);
    EXPECT_EQ(s.takeCalls(), (Texts{"log \nRequest frames: 10 - 19"} + times(3, kShortWrite) +
                              Texts{"log \n   Error!!! request frames: 10 - 19",
                                    "log Readout mode fallback: Non serial read!"} +
                              kFeatureRequest));
    EXPECT_EQ(request(10, 10), 0);
    EXPECT_EQ(s.takeCalls(), kFeatureRequest);
}

TEST_F(BlockRequestTest, FailsWhenTheFallbackFailsToo)
{
    s.camera().remove("StreamStartNumber");
    start(serial());
    s.acceptSerialBytes({36, 36, 36});
    EXPECT_EQ(request(10, 10), -1);
    EXPECT_EQ(s.takeCalls(), (Texts{"log \nRequest frames: 10 - 19"} + times(3, kShortWrite) +
                              Texts{"log \n   Error!!! request frames: 10 - 19",
                                    "log Readout mode fallback: Non serial read!",
                                    "log \nRequest frames: 10 - 19"}));
    EXPECT_EQ(request(10, 10), -1);
    EXPECT_EQ(s.takeCalls(), Texts{"log \nRequest frames: 10 - 19"});
}

TEST_F(BlockRequestTest, SetsTheRangeThroughFeatures)
{
    start();
    EXPECT_EQ(request(10, 10), 0);
    EXPECT_EQ(s.takeCalls(), kFeatureRequest);
}

/// How a range is set while the camera refuses some of its numbers.
struct Refusals {
    std::string name;
    std::deque<Code> end;   // answers to writes of "StreamEndNumber"
    std::deque<Code> start; // of "StreamStartNumber"
    std::string writes;     // E and S, in order
};

class BlockRangeTest : public BlockTransferTest, public ::testing::WithParamInterface<Refusals>
{
  protected:
    Texts writes() const
    {
        Texts calls{"log \nRequest frames: 10 - 19"};
        for (const char number : GetParam().writes) {
            calls.emplace_back(number == 'E' ? "StreamEndNumber.SetValue 19"
                                             : "StreamStartNumber.SetValue 10");
        }
        return calls;
    }

    void SetUp() override
    {
        start();
        s.answer("StreamEndNumber.SetValue", GetParam().end);
        s.answer("StreamStartNumber.SetValue", GetParam().start);
    }
};

std::string nameOf(const ::testing::TestParamInfo<Refusals>& row)
{
    return row.param.name;
}

constexpr Code kOk = Code::Ok;
constexpr Code kNo = Code::OutOfRange;

class AcceptedBlockRangeTest : public BlockRangeTest
{
};

TEST_P(AcceptedBlockRangeTest, StartsTheSequence)
{
    EXPECT_EQ(request(10, 10), 0);
    EXPECT_EQ(s.takeCalls(), writes() + Texts{"StreamSequenceStart.Execute"});
}

INSTANTIATE_TEST_SUITE_P(
    BlockRange, AcceptedBlockRangeTest,
    ::testing::Values(Refusals{"EndRefusedBeforeStart", {kNo}, {}, "ESES"},
                      Refusals{"StartRefusedBeforeEnd", {}, {kNo}, "ESES"},
                      Refusals{"BothRefusedBeforeTheOther", {kNo, kOk}, {kOk, kNo}, "ESESES"},
                      Refusals{"EndRefusedTwiceInAPass", {kNo, kNo}, {}, "ESEES"},
                      Refusals{"StartRefusedWhenEndWas", {kNo}, {kNo}, "ESES"},
                      Refusals{"EndRefusedWhenStartWas", {kOk, kNo}, {kNo}, "ESEES"},
                      Refusals{"StartRefusedTwiceInAPass", {}, {kNo, kNo}, "ESESES"},
                      Refusals{"ThirdPassSucceeds", {kNo, kNo, kNo, kNo}, {}, "ESEESEES"}),
    nameOf);

class RefusedBlockRangeTest : public BlockRangeTest
{
};

TEST_P(RefusedBlockRangeTest, GivesUpAfterThreePasses)
{
    EXPECT_EQ(request(10, 10), -1);
    EXPECT_EQ(s.takeCalls(), writes() + Texts{"log \n   Error!!! request frames: 10 - 19"});
}

INSTANTIATE_TEST_SUITE_P(
    BlockRange, RefusedBlockRangeTest,
    ::testing::Values(Refusals{"EndAlwaysRefused", {kNo, kNo, kNo, kNo, kNo, kNo}, {}, "ESEESEESE"},
                      Refusals{
                          "StartAlwaysRefused", {}, {kNo, kNo, kNo, kNo, kNo, kNo}, "ESESESESESES"},
                      Refusals{"BothAlwaysRefused", {kNo, kNo, kNo}, {kNo, kNo, kNo}, "ESESES"}),
    nameOf);

TEST_F(BlockRequestTest, FailsWithoutTheFirstNumber)
{
    s.camera().remove("StreamStartNumber");
    start();
    EXPECT_EQ(request(10, 10), -1);
    EXPECT_EQ(s.takeCalls(), Texts{"log \nRequest frames: 10 - 19"});
}

TEST_F(BlockRequestTest, FailsWithoutTheLastNumber)
{
    s.camera().remove("StreamEndNumber");
    start();
    EXPECT_EQ(request(10, 10), -1);
    EXPECT_EQ(s.takeCalls(), Texts{"log \nRequest frames: 10 - 19"});
}

const Texts kSelectLimits{"Get StreamSequenceSelector", "StreamSequenceSelector.GetMin",
                          "StreamSequenceSelector.GetMax"};

TEST_F(BlockRequestTest, SelectsTheSequenceAnewForEveryBlockButThoseOfTheFirst)
{
    s.camera().boolean("MultisequenceAvailable").value(true);
    start();
    const Texts selected = kSelectLimits + Texts{"StreamSequenceSelector.SetValue 3"};
    EXPECT_EQ(request(10, 10, 3), 0);
    EXPECT_EQ(s.takeCalls(), selected + kFeatureRequest);
    EXPECT_EQ(request(10, 10, 3), 0);
    EXPECT_EQ(s.takeCalls(), selected + kFeatureRequest);
    EXPECT_EQ(request(10, 10, 0), 0);
    EXPECT_EQ(s.takeCalls(), kFeatureRequest);
}

TEST_F(BlockRequestTest, DoesNotKeepTheClampedSequence)
{
    s.camera().boolean("MultisequenceAvailable").value(true);
    start();
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(request(10, 10, 20), 0);
        EXPECT_EQ(s.takeCalls(),
                  kSelectLimits + Texts{"StreamSequenceSelector.SetValue 15"} + kFeatureRequest);
    }
}

TEST_F(BlockRequestTest, IsNotSentWhenTheSequenceIsRefused)
{
    s.camera().boolean("MultisequenceAvailable").value(true);
    start();
    s.answer("StreamSequenceSelector.SetValue", {Code::Busy});
    EXPECT_EQ(request(10, 10, 3), -1);
    EXPECT_EQ(s.takeCalls(), kSelectLimits + Texts{"StreamSequenceSelector.SetValue 3"});
}

TEST_F(BlockRequestTest, GivesOneWithTheLinkLost)
{
    start();
    s.notifyLinkLost();
    s.forget();
    EXPECT_EQ(request(10, 10), 1);
    EXPECT_EQ(s.takeCalls(), Texts{});
}

TEST_F(BlockRequestTest, FailsForNoFrames)
{
    start();
    EXPECT_EQ(request(10, 0), -1);
    EXPECT_EQ(s.takeCalls(), Texts{});
}

TEST_F(BlockRequestTest, FailsWithoutATransfer)
{
    prepare();
    EXPECT_EQ(request(10, 10), -1);
    EXPECT_EQ(s.takeCalls(), Texts{});
}

TEST_F(BlockRequestTest, IgnoresItsFirstArgument)
{
    start();
    int anything = 0;
    EXPECT_EQ(expGetRecordedFrameBlock(&anything, 0, 10, 10, kCamera), 0);
    EXPECT_EQ(s.takeCalls(), kFeatureRequest);
    EXPECT_EQ(anything, 0);
}

} // namespace
