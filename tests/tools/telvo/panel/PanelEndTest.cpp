#include "PanelProcess.h"

#include <chrono>

namespace
{

/// Ctrl-C at a panel with a camera and a page.
class PanelEnd : public PanelTest
{
  protected:
    /// Within a multiple of what it takes, so that other tests may run beside this one.
    void expectEndInOrder()
    {
        using Clock = std::chrono::steady_clock;
        const auto start = Clock::now();
        EXPECT_EQ(endPanel().exitStatus, 0);
        const std::chrono::duration<double> time = Clock::now() - start;
        EXPECT_LT(time.count(), 2);
        RecordProperty("milliseconds", static_cast<int>(time.count() * 1000));
        page->awaitEvent("end");
        EXPECT_EQ(page->awaitClose(), 1001);
        EXPECT_TRUE(isFree());
        EXPECT_EQ(value(camera::FeatureId::CameraState), camera::kStateIdle);
    }
};

TEST_F(PanelEnd, IsQuickAtRest)
{
    begin();
    expectEndInOrder();
}

TEST_F(PanelEnd, IsQuickWhilePicturesCome)
{
    begin();
    expectDone("preview", {{"width", 64}});
    expectDone("live", {{"on", true}});
    page->awaitPicture();
    expectEndInOrder();
}

TEST_F(PanelEnd, IsQuickWhileTheCameraRecords)
{
    begin();
    expectDone("arm", {{"mode", "ring"}, {"trigger", "none"}});
    page->awaitState("recording");
    expectEndInOrder();
}

} // namespace
