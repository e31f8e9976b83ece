// What a host's changed callback may do, and that a disconnect ends whatever it does.
#include "Host.h"

#include <future>
#include <gtest/gtest.h>
#include <thread>
#include <utility>

namespace
{

using camera::VirtualCamera;

constexpr std::int32_t kId = 1;

/// What the callback does; a callback is a plain function.
std::function<void()> onLinkLost;

/// A camera that is connected, and whose link is lost as soon as it has been switched off and on.
class ChangedCallback : public testing::Test
{
  protected:
    void SetUp() override
    {
        ASSERT_FALSE(camera.start());
        connect();
    }

    void connect()
    {
        ASSERT_EQ(host.connect(camera), 0);
        ASSERT_EQ(expSetStreamParam("HeartbeatInterval", 10, kId), 0);
    }

    /// The action is there before the callback is: the stack's thread sees both or neither.
    static void whenLinkLost(std::function<void()> action)
    {
        onLinkLost = std::move(action);
        ASSERT_EQ(expSetChangedCallback([](std::int32_t) { onLinkLost(); }, kId), 0);
    }

    /// The camera forgets who controlled it.
    void loseLink()
    {
        camera.stop();
        ASSERT_FALSE(camera.start());
    }

    VirtualCamera camera{preparedCamera()};
    Host host{kId};
};

TEST_F(ChangedCallback, ThatWaitsForTheDisconnectDoesNotKeepItFromEnding)
{
    std::promise<void> told;
    std::promise<void> disconnected;
    std::promise<void> returning;
    whenLinkLost([&] {
        told.set_value();
        disconnected.get_future().wait();
        returning.set_value();
    });
    loseLink();
    told.get_future().wait();
    std::int32_t result = -1;
    EXPECT_LT(timeOf([&] { result = host.disconnect(); }), 5s);
    EXPECT_EQ(result, 0);
    disconnected.set_value();
    returning.get_future().wait();
    EXPECT_EQ(host.connect(camera), 0); // the id and the camera are free
}

TEST_F(ChangedCallback, MayDisconnectItself)
{
    std::promise<std::int32_t> result;
    whenLinkLost([&] { result.set_value(expDisconnectGrabber(kId)); });
    loseLink();
    EXPECT_EQ(result.get_future().get(), 0);
    EXPECT_EQ(host.disconnect(), -1);
    EXPECT_EQ(host.connect(camera), 0);
}

TEST_F(ChangedCallback, MayMarshalToAThreadThatDisconnects)
{
    std::promise<void> message;
    std::promise<void> handled;
    std::promise<void> returned;
    std::int32_t result = -1;
    std::thread gui([&] {
        message.get_future().wait();
        result = expDisconnectGrabber(kId);
        handled.set_value();
    });
    whenLinkLost([&] {
        message.set_value();
        handled.get_future().wait();
        returned.set_value();
    });
    loseLink();
    const auto end = returned.get_future();
    EXPECT_EQ(end.wait_for(20s), std::future_status::ready);
    gui.join();
    EXPECT_EQ(result, 0);
}

TEST_F(ChangedCallback, MayUseTheCameraAndSetAnotherCallback)
{
    std::promise<std::int32_t> result;
    whenLinkLost([&] {
        std::uint8_t idle = 0;
        expIsStateIdle(&idle, kId);
        result.set_value(expSetChangedCallback(nullptr, kId));
    });
    loseLink();
    EXPECT_EQ(result.get_future().get(), 0);
    EXPECT_EQ(host.disconnect(), 0);
}

TEST_F(ChangedCallback, MayComeAtAnyMomentOfADisconnect)
{
    for (int round = 0; round < 8; ++round) {
        whenLinkLost([] {});
        std::thread losing([this] { loseLink(); });
        std::this_thread::sleep_for(std::chrono::milliseconds(3 * round));
        EXPECT_EQ(host.disconnect(), 0);
        losing.join();
        ASSERT_NO_FATAL_FAILURE(connect());
    }
}

} // namespace
