#include "Kernel.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

namespace
{

TEST(Event, AutoResetLetsOneWaitThroughPerSignal)
{
    HANDLE event = CreateEventA(nullptr, FALSE, FALSE, nullptr);
    EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_TIMEOUT);
    EXPECT_TRUE(SetEvent(event));
    EXPECT_EQ(WaitForSingleObject(event, INFINITE), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_TIMEOUT);
    EXPECT_TRUE(CloseHandle(event));
}

TEST(Event, ManualResetStaysSignalled)
{
    HANDLE event = CreateEventA(nullptr, TRUE, TRUE, nullptr);
    EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_OBJECT_0);
    EXPECT_TRUE(CloseHandle(event));
}

TEST(Event, WaitEndsAtItsLimit)
{
    HANDLE event = CreateEventA(nullptr, FALSE, FALSE, nullptr);
    const DWORD start = GetTickCount();
    EXPECT_EQ(WaitForSingleObject(event, 50), WAIT_TIMEOUT);
    EXPECT_GE(GetTickCount() - start, 49U);
    CloseHandle(event);
}

struct Gate {
    HANDLE open = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    std::atomic<int> passed{0};
};

DWORD WINAPI passGate(LPVOID parameter)
{
    auto* gate = static_cast<Gate*>(parameter);
    WaitForSingleObject(gate->open, INFINITE);
    gate->passed = 1;
    return 0;
}

TEST(Thread, HandleIsSignalledAtItsEnd)
{
    Gate gate;
    DWORD id = 0;
    HANDLE thread = CreateThread(nullptr, 0, passGate, &gate, 0, &id);
    ASSERT_NE(thread, nullptr);
    EXPECT_NE(id, 0U);
    EXPECT_EQ(WaitForSingleObject(thread, 0), WAIT_TIMEOUT);
    SetEvent(gate.open);
    EXPECT_EQ(WaitForSingleObject(thread, 5000), WAIT_OBJECT_0);
    EXPECT_EQ(gate.passed, 1);
    EXPECT_EQ(WaitForSingleObject(thread, 0), WAIT_OBJECT_0);
    EXPECT_TRUE(CloseHandle(thread));
    CloseHandle(gate.open);
}

TEST(Thread, GoesOnAfterItsHandleIsClosed)
{
    Gate gate;
    CloseHandle(CreateThread(nullptr, 0, passGate, &gate, 0, nullptr));
    SetEvent(gate.open);
    for (int i = 0; i < 5000 && gate.passed == 0; ++i) {
        Sleep(1);
    }
    EXPECT_EQ(gate.passed, 1);
    CloseHandle(gate.open);
}

TEST(Handle, NullAndInvalidAreRefused)
{
    EXPECT_EQ(WaitForSingleObject(nullptr, 0), WAIT_FAILED);
    EXPECT_EQ(WaitForSingleObject(INVALID_HANDLE_VALUE, 0), WAIT_FAILED);
    EXPECT_FALSE(CloseHandle(nullptr));
    EXPECT_FALSE(CloseHandle(INVALID_HANDLE_VALUE));
    EXPECT_FALSE(SetEvent(nullptr));
}

TEST(CriticalSection, MayBeEnteredAgainByItsOwner)
{
    CRITICAL_SECTION section;
    InitializeCriticalSection(&section);
    EnterCriticalSection(&section);
    EnterCriticalSection(&section);
    LeaveCriticalSection(&section);
    LeaveCriticalSection(&section);
    DeleteCriticalSection(&section);
}

TEST(Sleep, LastsAtLeastItsTime)
{
    const DWORD start = GetTickCount();
    Sleep(30);
    EXPECT_GE(GetTickCount() - start, 29U);
}

/// The debug viewer's end: the abstract socket that lines are sent to.
class Viewer
{
  public:
    Viewer() : mSocket(socket(AF_UNIX, SOCK_DGRAM, 0))
    {
        constexpr char kName[] = "\0TelvoDll.debug";
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::memcpy(address.sun_path, kName, sizeof kName - 1);
        const auto length =
            static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + sizeof kName - 1);
        EXPECT_EQ(bind(mSocket, reinterpret_cast<const sockaddr*>(&address), length), 0);
        const timeval limit{.tv_sec = 5, .tv_usec = 0};
        setsockopt(mSocket, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
    }
    ~Viewer() { close(mSocket); }
    Viewer(const Viewer&) = delete;
    Viewer& operator=(const Viewer&) = delete;

    std::string next() const
    {
        std::array<char, 2000> received{};
        const ssize_t size = recv(mSocket, received.data(), received.size(), 0);
        return size < 0 ? "nothing" : std::string(received.data(), static_cast<std::size_t>(size));
    }

  private:
    int mSocket;
};

TEST(DebugOutput, SendsTheBytesAsOneDatagram)
{
    const Viewer viewer;
    OutputDebugStringA("Vorg\xE4nger\r\n");
    OutputDebugStringA("second\r\n");
    EXPECT_EQ(viewer.next(), "Vorg\xE4nger\r\n");
    EXPECT_EQ(viewer.next(), "second\r\n");
}

TEST(DebugOutput, DropsTheLineWithoutAViewer)
{
    OutputDebugStringA("unseen");
    const Viewer viewer;
    OutputDebugStringA("seen");
    EXPECT_EQ(viewer.next(), "seen");
}

TEST(DebugOutput, WaitsAShortTimeForAViewerThatDoesNotRead)
{
    const Viewer viewer;
    const DWORD start = GetTickCount();
    DWORD slowest = 0;
    for (int line = 0; line < 2000 && GetTickCount() - start < 1000; ++line) {
        const DWORD sent = GetTickCount();
        OutputDebugStringA("x");
        slowest = std::max(slowest, GetTickCount() - sent);
    }
    EXPECT_GE(slowest, 90U); // the viewer's queue was full
    EXPECT_LE(slowest, 2000U);
}

} // namespace
