#include "PanelProcess.h"

namespace
{

/// A recording that waits for the trigger of the page's user.
class PanelTrigger : public PanelTest
{
  protected:
    void beginArmed()
    {
        begin();
        expectDone("set", {{"values", {{"frame-rate", 200}}}});
        expectDone("preview", {{"width", 64}});
        expectDone("arm", {{"mode", "ring"}, {"trigger", "key"}, {"post", 20}});
        page->awaitState("armed");
    }
    /// Looks at the preview until it has come so far. @return the counter of the last picture seen
    int watchUntil(int counter)
    {
        for (;;) {
            const Json seen = page->awaitPicture().header;
            if (seen.value("counter", counter) >= counter) {
                return seen.value("counter", 0);
            }
            expectDone("seen", {{"number", seen["number"]}});
        }
    }
    Json recordedSequence()
    {
        page->awaitState("idle");
        return ask("recording")["sequences"][0];
    }
    Json frame(int number)
    {
        return page
            ->askPicture({{"do", "frame"}, {"camera", mac()}, {"sequence", 0}, {"frame", number}})
            .header;
    }
};

TEST_F(PanelTrigger, IsMarkedWhereThePreviewWas)
{
    beginArmed();
    const int seen = watchUntil(10);
    expectDone("trigger");
    const Json sequence = recordedSequence();
    ASSERT_TRUE(sequence["trigger"].is_number()) << sequence.dump();
    EXPECT_EQ(sequence["isTriggerApproximate"], true);
    const int trigger = sequence["trigger"];
    EXPECT_GT(trigger, seen);
    constexpr int kPost = 19; // behind the first one
    EXPECT_LE(trigger + kPost, sequence["frames"]);

    EXPECT_EQ(frame(trigger)["timeFromTrigger"], 0);
    EXPECT_EQ(frame(trigger)["isTriggerApproximate"], true);
    EXPECT_EQ(frame(trigger - 1)["timeFromTrigger"], -5000); // us
}

TEST_F(PanelTrigger, IsForgottenWithTheNextRecording)
{
    beginArmed();
    watchUntil(1);
    expectDone("trigger");
    EXPECT_TRUE(recordedSequence()["trigger"].is_number());
    expectDone("arm", {{"mode", "single"}, {"trigger", "none"}, {"frames", 40}});
    EXPECT_EQ(recordedSequence()["trigger"], nullptr);
}

} // namespace
