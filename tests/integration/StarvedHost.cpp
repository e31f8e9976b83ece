/// A host whose process runs out of something: starved_host WHAT MAC-ADDRESS IP-ADDRESS
/// WHAT is allocations, one-allocation, address-space, threads or processes. It calls every export
/// while there is less and less of it, and after each failure uses the camera as if nothing had
/// happened. It prints what went wrong, and ends with 0 if nothing did.
#include "AnyExport.h"
#include "Scarcity.h"
#include "TelvoDll.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <unistd.h>

namespace
{

constexpr std::int32_t kCamera = 1;
constexpr int kNotPossibleHere = 77;
constexpr unsigned kLongestRun = 100; // seconds, on a busy machine; a call that hangs ends so

const char* macAddress;
const char* ipAddress;
int complaints = 0;

/// @param operation, what  texts that need no memory
void expect(bool condition, const char* operation, const char* what)
{
    if (!condition) {
        std::printf("%s: %s\n", operation, what);
        ++complaints;
    }
}

/// What becomes scarce. Step 0 leaves nothing of it, higher ones ever more.
struct Shortage {
    void (*begin)(long step);
    bool (*end)(); ///< whether the call between was refused something; unknown ones say so
    bool isCounted;
    /// Strides between the steps are a step's own size divided by this. A lasting shortage keeps
    /// the host from giving the camera back, which then is taken for some seconds: so it has few
    /// steps.
    long fineness;
};

void limit(__rlimit_resource resource, rlim_t value)
{
    rlimit limits{};
    getrlimit(resource, &limits);
    limits.rlim_cur = std::min(value, limits.rlim_max);
    setrlimit(resource, &limits);
}

/// Bytes, without any memory to count them in.
rlim_t addressSpaceInUse()
{
    std::array<char, 64> text{};
    const int file = open("/proc/self/statm", O_RDONLY | O_CLOEXEC);
    expect(read(file, text.data(), text.size() - 1) > 0, "/proc/self/statm", "unreadable");
    close(file);
    return std::strtoul(text.data(), nullptr, 10) * static_cast<rlim_t>(getpagesize());
}

void leaveAddressSpace(long step)
{
    constexpr rlim_t kStride = rlim_t{128} << 10;
    limit(RLIMIT_AS, addressSpaceInUse() + static_cast<rlim_t>(step) * kStride);
}

bool endAddressSpace()
{
    limit(RLIMIT_AS, RLIM_INFINITY);
    return true;
}

void leaveProcesses(long step)
{
    limit(RLIMIT_NPROC, static_cast<rlim_t>(step) + 1);
}

bool endProcesses()
{
    limit(RLIMIT_NPROC, RLIM_INFINITY);
    return true;
}

constexpr Shortage kAllocations{scarcity::leaveAllocations, scarcity::end, true, 1};
constexpr Shortage kOneAllocation{scarcity::failAllocationAfter, scarcity::end, true, 4};
constexpr Shortage kThreads{scarcity::leaveThreads, scarcity::end, true, 4};
constexpr Shortage kAddressSpace{leaveAddressSpace, endAddressSpace, false, 1};
constexpr Shortage kProcesses{leaveProcesses, endProcesses, false, 4};

std::int32_t connect()
{
    const TelvoConnectionSettings settings{};
    return expConnectGrabber(macAddress, ipAddress, 1, &settings, kCamera);
}

std::int32_t initialize()
{
    const TelvoConnectionSettings settings{};
    return expInitializeGrabber(&settings, kCamera);
}

/// Asks again and again until the condition holds, for 20 seconds.
template <typename Condition>
bool eventually(Condition condition)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
    }
    return true;
}

long nextStep(const Shortage& shortage, long step)
{
    return step + 1 + step / shortage.fineness;
}

/// Calls while there is ever more, until there is enough.
/// @param recover  takes back what the call has done, and shows that the camera can be used
template <typename Call, typename Recover>
void callInShortage(const Shortage& shortage, const char* name, Call call, Recover recover)
{
    constexpr long kMostSteps = 1'000'000;
    for (long step = 0; step < kMostSteps; step = nextStep(shortage, step)) {
        shortage.begin(step);
        const bool succeeded = call();
        const bool wasShort = shortage.end();
        if (shortage.isCounted ? !wasShort : succeeded) {
            expect(succeeded, name, "fails without a shortage");
            return;
        }
        recover();
    }
    expect(false, name, "never has enough");
}

/// The same for what cannot be taken back.
template <typename Call>
void callOnceInShortage(const Shortage& shortage, const char* name, Call call)
{
    bool succeeded = false;
    bool wasShort = true;
    for (long step = 0; !succeeded && wasShort; step = nextStep(shortage, step)) {
        shortage.begin(step);
        succeeded = call();
        wasShort = shortage.end();
    }
    expect(succeeded, name, "fails without a shortage");
}

void connectInShortage(const Shortage& shortage)
{
    callInShortage(
        shortage, "connect", [] { return connect() == 0; },
        [] {
            expDisconnectGrabber(kCamera);
            expect(eventually([] { return connect() == 0; }), "connect",
                   "fails after one in shortage");
            expDisconnectGrabber(kCamera);
        });
    callOnceInShortage(shortage, "initialize", [] { return initialize() == 0; });
}

bool hasImage()
{
    std::uint8_t status = 0;
    std::uint8_t last = 0;
    return expGetPreviewImage(&status, &last, kCamera) != nullptr;
}

void goLiveInShortage(const Shortage& shortage)
{
    callInShortage(
        shortage, "live", [] { return expStartLiveMode(kCamera) == 0; },
        [] { expStopLiveMode(kCamera); });
    expect(eventually(hasImage), "live", "shows no image");
    callOnceInShortage(shortage, "stop", [] { return expStopLiveMode(kCamera) == 0; });
}

bool isIdle()
{
    std::uint8_t idle = 0;
    return expIsStateIdle(&idle, kCamera) == 0 && idle == 1;
}

/// A recording that ends when the camera's memory is full.
void recordInShortage(const Shortage& shortage)
{
    expSetRecordMode(0, kCamera);
    callInShortage(
        shortage, "record", [] { return expStartRecordMode(kCamera) == 0; },
        [] { expStopRecordMode(kCamera); });
    expect(eventually(isIdle), "record", "does not end");
    callOnceInShortage(shortage, "stop", [] { return expStopRecordMode(kCamera) == 0; });
}

void readBlockInShortage(const Shortage& shortage)
{
    const auto stop = [] { expStopFrameBlockTransfer(kCamera); };
    callInShortage(
        shortage, "transfer", [] { return expStartFrameBlockTransfer(kCamera) == 0; }, stop);
    callOnceInShortage(shortage, "block",
                       [] { return expGetRecordedFrameBlock(nullptr, 0, 0, 2, kCamera) == 0; });
    std::int64_t frames = 0;
    std::uint32_t status = 0;
    expect(expGetRecordedFrameBlockResult(nullptr, &frames, &status, kCamera) != nullptr, "block",
           "does not come");
    callOnceInShortage(shortage, "stop", [] { return expStopFrameBlockTransfer(kCamera) == 0; });
}

/// With any result: it has to return.
template <typename Call>
void returnsInShortage(const Shortage& shortage, Call call)
{
    long step = 0;
    do {
        shortage.begin(step);
        call();
        step = nextStep(shortage, step);
    } while (shortage.end() && shortage.isCounted);
}

/// Those that take the length of a host's buffer.
void callThoseWithLengths(const Shortage& shortage)
{
    returnsInShortage(shortage, [] {
        std::array<char, 50> text{};
        const std::uint32_t size = text.size();
        expGetParam("model", text.data(), &size, kCamera);
    });
    returnsInShortage(shortage, [] {
        std::array<std::uint8_t, 50> bytes{};
        std::uint32_t count = bytes.size();
        expReadData(bytes.data(), &count, kCamera);
    });
}

/// The other exports, with any arguments.
void callAllInShortage(const Shortage& shortage)
{
    const std::set<std::string> called{"expInitializeGrabber", "expDisconnectGrabber",
                                       "expGetParam", "expReadData"};
    for (const AnyExport& entry : exportsWithKnownId()) {
        if (!called.contains(entry.name)) {
            returnsInShortage(shortage, [&] { entry.call(kCamera, std::nullopt); });
        }
    }
    callThoseWithLengths(shortage);
    std::uint32_t width = 0;
    expect(expGetWidth(&width, kCamera) == 0 && width < 10'000, "width", "cannot be read");
}

/// A few times only: a camera that hears no goodbye is taken for as long as it waits for the next
/// heartbeat.
void disconnectInShortage(const Shortage& shortage)
{
    constexpr long kMostForDisconnect = 40;
    bool wasShort = true;
    for (long step = 0; wasShort && step <= kMostForDisconnect; step += kMostForDisconnect / 2) {
        shortage.begin(step);
        expect(expDisconnectGrabber(kCamera) == 0, "disconnect", "fails");
        wasShort = shortage.end();
        expect(eventually([] { return connect() == 0; }), "connect", "fails after a disconnect");
    }
}

void useCameraInShortage(const Shortage& shortage)
{
    connectInShortage(shortage);
    if (complaints == 0) {
        goLiveInShortage(shortage);
        recordInShortage(shortage);
        readBlockInShortage(shortage);
        callAllInShortage(shortage);
        disconnectInShortage(shortage);
    }
    expect(expDisconnectGrabber(kCamera) == 0, "last disconnect", "fails");
}

/// The system limits no processes of the superuser.
void becomeNobody()
{
    constexpr uid_t kNobody = 65534;
    if (setuid(kNobody) != 0) {
        std::exit(kNotPossibleHere);
    }
}

const Shortage& shortageOf(std::string_view what)
{
    if (what == "processes") {
        becomeNobody();
        return kProcesses;
    }
    return what == "allocations"      ? kAllocations
           : what == "one-allocation" ? kOneAllocation
           : what == "threads"        ? kThreads
                                      : kAddressSpace;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4) {
        return 2;
    }
    alarm(kLongestRun);
    macAddress = argv[2];
    ipAddress = argv[3];
    useCameraInShortage(shortageOf(argv[1]));
    return complaints == 0 ? 0 : 1;
}
