// What an operation throws, for want of memory or threads, ends in the export.
#include "AnyExport.h"
#include "GrabberTest.h"

#include <atomic>
#include <new>

namespace
{

using ThrowingTest = InitializedGrabberTest;

constexpr std::int64_t kFailure = -1;
constexpr std::int64_t kNull = 0;

TEST_F(ThrowingTest, EveryExportFailsWhoseOperationThrows)
{
    std::atomic<bool> hasThrown{false};
    s.onCall([&](const std::string& call) {
        // Neither logging nor the end of an object throws.
        if (!call.starts_with("log ") && !call.ends_with(" destroyed")) {
            hasThrown = true;
            throw std::bad_alloc();
        }
    });
    int thrown = 0;
    for (const AnyExport& entry : exportsWithKnownId()) {
        if (entry.name == "expDisconnectGrabber" || entry.name == "expGetParam") {
            continue; // the one has to succeed, the other asks nothing of the camera
        }
        hasThrown = false;
        const Attempt attempt = entry.call(kCamera, std::nullopt);
        if (hasThrown) {
            ++thrown;
            EXPECT_EQ(attempt.result, returnsPointer(entry.name) ? kNull : kFailure) << entry.name;
        }
    }
    EXPECT_GT(thrown, 80);
}

TEST_F(ThrowingTest, ADisconnectSucceedsWhateverItsStepsThrow)
{
    s.onCall([](const std::string& call) {
        if (call == "PvDevice.UnregisterEventSink") {
            throw std::bad_alloc();
        }
    });
    EXPECT_EQ(expDisconnectGrabber(kCamera), 0);
    EXPECT_EQ(expDisconnectGrabber(kCamera), -1);
}

TEST_F(GrabberTest, AConnectThatThrowsLeavesTheIdFree)
{
    s.onCall([](const std::string& call) {
        if (call.starts_with("PvDevice.Connect")) {
            throw std::bad_alloc();
        }
    });
    EXPECT_EQ(connect(), -1);
    s.onCall(nullptr);
    EXPECT_EQ(connect(), 0);
    EXPECT_EQ(expDisconnectGrabber(kCamera), 0);
}

} // namespace
