// Which sequence the camera streams from, and how much it has recorded.
#include "GrabberTest.h"

namespace
{

class RecordedSequencesTest : public InitializedGrabberTest
{
  protected:
    void haveSequences()
    {
        s.camera().boolean("MultisequenceAvailable").value(true);
        rebind();
    }
};

const Texts kSelect{"Get StreamSequenceSelector", "StreamSequenceSelector.GetMin",
                    "StreamSequenceSelector.GetMax"};

TEST_F(RecordedSequencesTest, SelectorIsLeftAloneOnACameraWithOneSequence)
{
    std::uint32_t sequence = 20;
    EXPECT_EQ(expSetCurrentStreamSequence(&sequence, kCamera), 0);
    EXPECT_EQ(sequence, 20U);
    EXPECT_EQ(s.takeCalls(), Texts{});
}

TEST_F(RecordedSequencesTest, SelectsASequence)
{
    haveSequences();
    std::uint32_t sequence = 3;
    EXPECT_EQ(expSetCurrentStreamSequence(&sequence, kCamera), 0);
    EXPECT_EQ(sequence, 3U);
    EXPECT_EQ(s.takeCalls(), kSelect + Texts{"StreamSequenceSelector.SetValue 3"});
    EXPECT_EQ(s.camera().integer("StreamSequenceSelector").value(), 3);
}

TEST_F(RecordedSequencesTest, ClampsToTheMaximumAndHandsItBack)
{
    haveSequences();
    std::uint32_t sequence = 20;
    EXPECT_EQ(expSetCurrentStreamSequence(&sequence, kCamera), 0);
    EXPECT_EQ(sequence, 15U);
    EXPECT_EQ(s.takeCalls(), kSelect + Texts{"StreamSequenceSelector.SetValue 15"});
}

TEST_F(RecordedSequencesTest, ClampsToTheMinimumAndHandsItBack)
{
    s.camera().integer("StreamSequenceSelector").value(2).range(2, 15);
    haveSequences();
    std::uint32_t sequence = 0;
    EXPECT_EQ(expSetCurrentStreamSequence(&sequence, kCamera), 0);
    EXPECT_EQ(sequence, 2U);
    EXPECT_EQ(s.takeCalls(), kSelect + Texts{"StreamSequenceSelector.SetValue 2"});
}

TEST_F(RecordedSequencesTest, SelectionFailsWhenTheCameraRefuses)
{
    haveSequences();
    s.answer("StreamSequenceSelector.SetValue", {Code::Busy});
    std::uint32_t sequence = 20;
    EXPECT_EQ(expSetCurrentStreamSequence(&sequence, kCamera), -1);
    EXPECT_EQ(sequence, 15U);
}

TEST_F(RecordedSequencesTest, SelectionFailsWithoutTheFeature)
{
    haveSequences();
    s.camera().remove("StreamSequenceSelector");
    std::uint32_t sequence = 20;
    EXPECT_EQ(expSetCurrentStreamSequence(&sequence, kCamera), -1);
    EXPECT_EQ(sequence, 20U);
    EXPECT_EQ(s.takeCalls(), Texts{"Get StreamSequenceSelector"});
}

TEST_F(RecordedSequencesTest, SelectorAndCountersDoNotLookAtTheLink)
{
    haveSequences();
    s.notifyLinkLost();
    s.forget();
    std::uint32_t value = 3;
    EXPECT_EQ(expSetCurrentStreamSequence(&value, kCamera), 0);
    EXPECT_EQ(expGetCurrentRecordingSequence(&value, kCamera), 0);
    EXPECT_EQ(expGetMaxFramesPerSequence(&value, kCamera), 0);
    EXPECT_EQ(s.takeCalls(), (kSelect + Texts{"StreamSequenceSelector.SetValue 3",
                                              "RecordCurrentSequenceNumber.GetValue",
                                              "RecordMaxFramesPerSequence.GetValue"}));
}

TEST_F(RecordedSequencesTest, ReadsTheSequenceBeingRecorded)
{
    s.camera().integer("RecordCurrentSequenceNumber").value(5);
    std::uint32_t sequence = 99;
    EXPECT_EQ(expGetCurrentRecordingSequence(&sequence, kCamera), 0);
    EXPECT_EQ(sequence, 5U);
    EXPECT_EQ(s.takeCalls(), Texts{"RecordCurrentSequenceNumber.GetValue"});
}

TEST_F(RecordedSequencesTest, SequenceBeingRecordedIsLeftUntouchedWhenTheReadFails)
{
    s.answer("RecordCurrentSequenceNumber.GetValue", {Code::Timeout});
    std::uint32_t sequence = 99;
    EXPECT_EQ(expGetCurrentRecordingSequence(&sequence, kCamera), -1);
    EXPECT_EQ(sequence, 99U);
}

TEST_F(RecordedSequencesTest, SequenceBeingRecordedIsLeftUntouchedWithoutTheFeature)
{
    s.camera().remove("RecordCurrentSequenceNumber");
    rebind();
    std::uint32_t sequence = 99;
    EXPECT_EQ(expGetCurrentRecordingSequence(&sequence, kCamera), -1);
    EXPECT_EQ(sequence, 99U);
    EXPECT_EQ(s.takeCalls(), Texts{});
}

TEST_F(RecordedSequencesTest, ReadsTheFramesThatASequenceCanHold)
{
    std::uint32_t count = 99;
    EXPECT_EQ(expGetMaxFramesPerSequence(&count, kCamera), 0);
    EXPECT_EQ(count, 6400U);
    EXPECT_EQ(s.takeCalls(), Texts{"RecordMaxFramesPerSequence.GetValue"});
}

TEST_F(RecordedSequencesTest, FramesThatASequenceCanHoldAre0WhenTheReadFails)
{
    s.answer("RecordMaxFramesPerSequence.GetValue", {Code::Timeout});
    std::uint32_t count = 99;
    EXPECT_EQ(expGetMaxFramesPerSequence(&count, kCamera), -1);
    EXPECT_EQ(count, 0U);
}

TEST_F(RecordedSequencesTest, FramesThatASequenceCanHoldFailWithoutTheFeature)
{
    s.camera().remove("RecordMaxFramesPerSequence");
    rebind();
    std::uint32_t count = 99;
    EXPECT_EQ(expGetMaxFramesPerSequence(&count, kCamera), -1);
    EXPECT_EQ(s.takeCalls(), Texts{});
}

TEST_F(RecordedSequencesTest, CountOfAllFramesIs0AndNotReadWithTheLinkLost)
{
    s.camera().integer("RecordNumberOfFrames").value(77);
    s.notifyLinkLost();
    s.forget();
    std::uint32_t count = 99;
    EXPECT_EQ(expGetNumberOfAllRecordedFrames(&count, kCamera), 0);
    EXPECT_EQ(count, 0U);
    EXPECT_EQ(s.takeCalls(), Texts{});
}

class RecordInfoTest : public InitializedGrabberTest
{
  protected:
    void read()
    {
        result = expGetRecordInfo(&x, &y, &width, &height, &frames, &reserved, nullptr, kCamera);
    }

    std::int32_t result = 99;
    std::uint32_t x = 99;
    std::uint32_t y = 99;
    std::uint32_t width = 99;
    std::uint32_t height = 99;
    std::int64_t frames = 99;
    std::int64_t reserved = 99;
};

TEST_F(RecordInfoTest, GivesTheGeometryAsLastReadAndTheFramesRecorded)
{
    s.camera().integer("OffsetX").value(16);
    s.camera().integer("OffsetY").value(4);
    s.camera().integer("Width").value(640);
    s.camera().integer("Height").value(480);
    s.camera().integer("RecordNumberOfFrames").value(77);
    rebind();
    read();
    EXPECT_EQ(result, 0);
    EXPECT_EQ(x, 16U);
    EXPECT_EQ(y, 4U);
    EXPECT_EQ(width, 640U);
    EXPECT_EQ(height, 480U);
    EXPECT_EQ(frames, 77);
    EXPECT_EQ(reserved, 0);
    EXPECT_EQ(s.takeCalls(), (Texts{"RecordNumberOfFrames.GetValue",
                                    "log -- GEN getNumberOfAllRecordedFrames 77"}));
}

TEST_F(RecordInfoTest, ExtendsTheCountFrom32BitsWithItsSign)
{
    s.camera().integer("RecordNumberOfFrames").value(0xFFFFFFFE);
    read();
    EXPECT_EQ(frames, -2);
}

TEST_F(RecordInfoTest, GivesNoFramesWhenTheReadFails)
{
    s.answer("RecordNumberOfFrames.GetValue", {Code::Timeout});
    read();
    EXPECT_EQ(result, 0);
    EXPECT_EQ(frames, 0);
    EXPECT_EQ(s.takeLog(), Texts{"-- GEN getNumberOfAllRecordedFrames Error\r\n"});
}

TEST_F(RecordInfoTest, GivesTheGeometryAndNoFramesWithTheLinkLost)
{
    s.camera().integer("RecordNumberOfFrames").value(77);
    s.notifyLinkLost();
    s.forget();
    read();
    EXPECT_EQ(width, 1280U);
    EXPECT_EQ(height, 1024U);
    EXPECT_EQ(frames, 0);
    EXPECT_EQ(reserved, 0);
    EXPECT_EQ(s.takeCalls(), Texts{});
}

} // namespace
