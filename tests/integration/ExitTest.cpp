// Hosts that disconnect when the process ends, by then whatever exit handlers have run already; and
// hosts that load and unload the library again and again.
#include "ChildProcess.h"
#include "TelvoDll.h"
#include "VirtualCamera.h"

#include <algorithm>
#include <chrono>
#include <dlfcn.h>
#include <filesystem>
#include <future>
#include <gtest/gtest.h>
#include <malloc.h>
#include <string>
#include <thread>
#include <tuple>

namespace
{

using camera::VirtualCamera;

camera::CameraOptions preparedCamera()
{
    camera::CameraOptions options;
    options.address = "127.0.0.11";
    options.userSetsPrepared = true;
    return options;
}

/// The program, and which of its exit handlers disconnects.
class ExitHandler : public testing::TestWithParam<std::tuple<std::string, std::string>>
{
};

TEST_P(ExitHandler, MayDisconnectALiveCamera)
{
    const auto& [program, handler] = GetParam();
    VirtualCamera camera(preparedCamera());
    ASSERT_FALSE(camera.start());
    const ChildResult result = runChild({TELVO_TEST_PROGRAMS "/" + program, handler, TELVO_LIBRARY,
                                         camera.macText(), camera.options().address});
    EXPECT_EQ(result.output, "disconnected: 0\n");
    EXPECT_EQ(result.status, 0);
}

INSTANTIATE_TEST_SUITE_P(, ExitHandler,
                         testing::Combine(testing::Values("exit_host_linked", "exit_host_loaded"),
                                          testing::Values("atexit", "static-destructor",
                                                          "destructor-function")),
                         [](const auto& instance) {
                             std::string name =
                                 std::get<0>(instance.param) + "_" + std::get<1>(instance.param);
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

TEST(ExitWithoutHandler, LeavesTheCameraAlone)
{
    VirtualCamera camera(preparedCamera());
    ASSERT_FALSE(camera.start());
    const ChildResult result = runChild({TELVO_TEST_PROGRAMS "/exit_host_linked", "none", "",
                                         camera.macText(), camera.options().address});
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.status, 0);
}

long entriesOf(const char* folder)
{
    const std::filesystem::directory_iterator entries(folder);
    return std::distance(begin(entries), end(entries));
}

/// What a process has of that which a library could leave behind.
struct Belongings {
    long descriptors = entriesOf("/proc/self/fd");
    long threads = entriesOf("/proc/self/task");
};

/// Loads the library, does this with its functions, and unloads it.
template <typename Use>
void loadOnce(Use use)
{
    void* const library = dlopen(TELVO_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << dlerror();
    use(library);
    dlclose(library);
}

template <typename Function>
Function* find(void* library, const char* name)
{
    return reinterpret_cast<Function*>(dlsym(library, name));
}

void connect(void* library, const VirtualCamera& camera)
{
    const TelvoConnectionSettings settings{};
    EXPECT_EQ(find<decltype(expConnectGrabber)>(library, "expConnectGrabber")(
                  camera.macText().c_str(), camera.options().address.c_str(), 1, &settings, 1),
              0);
}

void disconnect(void* library)
{
    EXPECT_EQ(find<decltype(expDisconnectGrabber)>(library, "expDisconnectGrabber")(1), 0);
}

/// Loads, uses and unloads the library so many times. @return bytes of heap that it has cost
template <typename Use>
long loadAgainAndAgain(int turns, Use use)
{
    const auto heap = static_cast<long>(mallinfo2().uordblks);
    for (int turn = 0; turn < turns; ++turn) {
        loadOnce(use);
    }
    return static_cast<long>(mallinfo2().uordblks) - heap;
}

TEST(Unloading, LeavesNothingBehindInAHundredTurns)
{
    const auto use = [](void* library) {
        EXPECT_EQ(find<decltype(expStopLiveMode)>(library, "expStopLiveMode")(1), -1);
    };
    loadAgainAndAgain(100, use); // what the system keeps of the first times
    const Belongings before;
    EXPECT_LE(loadAgainAndAgain(100, use), 0);
    const Belongings after;
    EXPECT_EQ(after.descriptors, before.descriptors);
    EXPECT_EQ(after.threads, before.threads);
    EXPECT_EQ(dlopen(TELVO_LIBRARY, RTLD_NOW | RTLD_NOLOAD), nullptr);
}

TEST(Unloading, LeavesNoDescriptorAndNoThreadBehindAfterACamera)
{
    VirtualCamera camera(preparedCamera());
    ASSERT_FALSE(camera.start());
    const auto use = [&](void* library) {
        connect(library, camera);
        disconnect(library);
    };
    loadOnce(use);
    const Belongings before;
    loadAgainAndAgain(5, use);
    const Belongings after;
    EXPECT_EQ(after.descriptors, before.descriptors);
    EXPECT_EQ(after.threads, before.threads);
    EXPECT_EQ(dlopen(TELVO_LIBRARY, RTLD_NOW | RTLD_NOLOAD), nullptr);
}

/// Lets the camera forget its host, whose callback then runs.
void loseLink(VirtualCamera& camera)
{
    camera.stop();
    ASSERT_FALSE(camera.start());
}

std::promise<void> told;
std::promise<void> mayReturn;

// Comes last: the library is here to stay.
TEST(UnloadingUnderACallback, LeavesTheLibraryInPlaceForIt)
{
    VirtualCamera camera(preparedCamera());
    ASSERT_FALSE(camera.start());
    const long threads = entriesOf("/proc/self/task");
    loadOnce([&](void* library) {
        connect(library, camera);
        find<decltype(expSetStreamParam)>(library, "expSetStreamParam")("HeartbeatInterval", 10, 1);
        const auto callback = [](std::int32_t) {
            told.set_value();
            mayReturn.get_future().wait();
        };
        find<decltype(expSetChangedCallback)>(library, "expSetChangedCallback")(callback, 1);
        loseLink(camera);
        told.get_future().wait();
        disconnect(library);
    });
    EXPECT_NE(dlopen(TELVO_LIBRARY, RTLD_NOW | RTLD_NOLOAD), nullptr);
    mayReturn.set_value();
    while (entriesOf("/proc/self/task") > threads) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

} // namespace
