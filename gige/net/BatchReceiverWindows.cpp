#include "WinsockRuntime.h"

#include "BatchReceiver.h"

#include <array>
#include <cstring>

namespace gige::net
{

namespace
{

constexpr std::size_t kSlots = 64;
constexpr std::size_t kBatch = kSlots / 2; // the other half stays posted meanwhile
constexpr std::size_t kSlotSize = 65536;   // bytes; longer than any datagram

// Named here since not every SDK header has them.
constexpr int kUdpRecvMaxCoalescedSize = 3; // UDP_RECV_MAX_COALESCED_SIZE
constexpr INT kUdpCoalescedInfo = 3;        // UDP_COALESCED_INFO
constexpr DWORD kLongestRun = 65527;        // bytes; what a datagram may carry at most
constexpr std::size_t kControlSize = 64;    // bytes; room for that one piece of information
constexpr DWORD kHighResolutionTimer = 2;   // CREATE_WAITABLE_TIMER_HIGH_RESOLUTION

LPFN_WSARECVMSG findReceiveMessage(SOCKET socket)
{
    GUID id = WSAID_WSARECVMSG;
    LPFN_WSARECVMSG function = nullptr;
    DWORD size = 0;
    WSAIoctl(socket, SIO_GET_EXTENSION_FUNCTION_POINTER, &id, sizeof id, &function, sizeof function,
             &size, nullptr, nullptr);
    return function;
}

/// Errors of one receive after which the socket goes on: the other side's port was closed, or the
/// thread that posted the receive has ended.
bool isOfOneReceive(int error)
{
    return error == WSAECONNRESET || error == WSA_OPERATION_ABORTED;
}

/// A timer with the precision of the processor's. None on systems older than it: their timers are
/// too coarse for the pauses here.
struct PreciseTimer {
    HANDLE handle =
        CreateWaitableTimerExW(nullptr, nullptr, kHighResolutionTimer, TIMER_ALL_ACCESS);
    PreciseTimer() = default;
    ~PreciseTimer()
    {
        if (handle != nullptr) {
            CloseHandle(handle);
        }
    }
    PreciseTimer(const PreciseTimer&) = delete;
    PreciseTimer& operator=(const PreciseTimer&) = delete;

    bool start(std::chrono::microseconds time)
    {
        LARGE_INTEGER due{};
        due.QuadPart = -10 * time.count(); // relative, in units of 100 ns
        return handle != nullptr &&
               SetWaitableTimer(handle, &due, 0, nullptr, nullptr, FALSE) != FALSE;
    }
};

struct WsaEvent {
    WSAEVENT handle = WSACreateEvent();
    WsaEvent() = default;
    ~WsaEvent() { WSACloseEvent(handle); }
    WsaEvent(const WsaEvent&) = delete;
    WsaEvent& operator=(const WsaEvent&) = delete;
};

/// What the system writes to while a receive is posted.
struct Slot {
    WsaEvent done;
    WSAOVERLAPPED overlapped{};
    WSABUF buffer{};
    sockaddr_in source{};
    alignas(WSACMSGHDR) std::array<char, kControlSize> control{};
    WSAMSG message{};

    /// @return 0, or the error
    int post(SOCKET socket, LPFN_WSARECVMSG receiveMessage)
    {
        if (receiveMessage == nullptr) {
            return WSAEOPNOTSUPP;
        }
        overlapped = {};
        overlapped.hEvent = done.handle;
        message = {};
        message.name = reinterpret_cast<sockaddr*>(&source);
        message.namelen = sizeof source;
        message.lpBuffers = &buffer;
        message.dwBufferCount = 1;
        message.Control = {.len = kControlSize, .buf = control.data()};
        if (receiveMessage(socket, &message, nullptr, &overlapped, nullptr) == 0) {
            return 0;
        }
        const int error = WSAGetLastError();
        return error == WSA_IO_PENDING ? 0 : error;
    }

    /// Length of each datagram in the run; 0: the system joined nothing.
    std::size_t segmentSize() const
    {
        WSACMSGHDR header{};
        DWORD size = 0;
        if (message.Control.len < sizeof header + sizeof size) {
            return 0;
        }
        std::memcpy(&header, control.data(), sizeof header);
        std::memcpy(&size, control.data() + sizeof header, sizeof size);
        const bool tells =
            header.cmsg_level == IPPROTO_UDP && header.cmsg_type == kUdpCoalescedInfo;
        return tells ? size : 0;
    }

    DatagramRun run(std::size_t length) const
    {
        const std::size_t segment = segmentSize();
        return {.bytes = {reinterpret_cast<const std::uint8_t*>(buffer.buf), length},
                .segmentSize = segment == 0 ? length : segment,
                .source = fromNative(source)};
    }
};

} // namespace

/// A ring of receives: `posted` of them from `first` on, which complete in this order. The others
/// hold what the last receive brought.
struct BatchReceiver::Buffers {
    const SOCKET socket;
    const LPFN_WSARECVMSG receiveMessage;
    std::vector<char> memory = std::vector<char>(kSlots * kSlotSize);
    std::array<Slot, kSlots> slots{};
    std::size_t first = 0;
    std::size_t posted = 0;
    WsaEvent woken;
    PreciseTimer timer;

    explicit Buffers(SOCKET ofSocket)
        : socket(ofSocket), receiveMessage(findReceiveMessage(ofSocket))
    {
        for (std::size_t i = 0; i < kSlots; ++i) {
            slots[i].buffer = {.len = kSlotSize, .buf = &memory[i * kSlotSize]};
        }
        // Systems without it deliver the datagrams one by one.
        setsockopt(socket, IPPROTO_UDP, kUdpRecvMaxCoalescedSize,
                   reinterpret_cast<const char*>(&kLongestRun), sizeof kLongestRun);
    }

    /// The system must have let go of the memory.
    ~Buffers()
    {
        CancelIoEx(reinterpret_cast<HANDLE>(socket), nullptr);
        for (; posted > 0; advance()) {
            DWORD length = 0;
            DWORD flags = 0;
            WSAGetOverlappedResult(socket, &slots[first].overlapped, &length, TRUE, &flags);
        }
    }

    Buffers(const Buffers&) = delete;
    Buffers& operator=(const Buffers&) = delete;

    /// Has the event signalled when the waker is, at once if it is awake already.
    void watch(const Waker& waker)
    {
        WSAResetEvent(woken.handle);
        WSAEventSelect(waker.handle(), woken.handle, FD_READ);
    }

    void advance()
    {
        first = (first + 1) % kSlots;
        --posted;
    }

    /// Posts all that are not. @return false: the socket takes no more receives at all
    bool post()
    {
        while (posted < kSlots) {
            const int error = slots[(first + posted) % kSlots].post(socket, receiveMessage);
            if (error != 0 && !isOfOneReceive(error)) {
                return posted > 0;
            }
            posted += error == 0 ? 1 : 0;
        }
        return true;
    }
};

BatchReceiver::BatchReceiver(UdpSocket& socket)
    : mSocket(socket), mRuns(kBatch), mBuffers(std::make_unique<Buffers>(socket.handle()))
{
}

BatchReceiver::~BatchReceiver() = default;

void BatchReceiver::useRing(RingUse /*use*/, Ipv4Address /*source*/) {}

bool BatchReceiver::isRingInUse() const
{
    return false;
}

ReceiveStatus BatchReceiver::take()
{
    Buffers& ring = *mBuffers;
    if (!ring.post()) {
        return ReceiveStatus::Failed;
    }
    for (; ring.posted > 0 && mRunCount < kBatch; ring.advance()) {
        Slot& slot = ring.slots[ring.first];
        DWORD length = 0;
        DWORD flags = 0;
        if (WSAGetOverlappedResult(ring.socket, &slot.overlapped, &length, FALSE, &flags) !=
            FALSE) {
            mRuns[mRunCount++] = slot.run(length);
        } else if (const int error = WSAGetLastError(); error == WSA_IO_INCOMPLETE) {
            break;
        } else if (!isOfOneReceive(error) && mRunCount == 0) {
            return ReceiveStatus::Failed;
        }
    }
    mMayHaveMore = mRunCount == kBatch;
    return mRunCount == 0 ? ReceiveStatus::TimedOut : ReceiveStatus::Data;
}

ReceiveStatus BatchReceiver::wait(Timeout timeout, const Waker* waker)
{
    Buffers& ring = *mBuffers;
    if (!ring.post()) {
        return ReceiveStatus::Failed;
    }
    const std::array<WSAEVENT, 2> events{ring.slots[ring.first].done.handle, ring.woken.handle};
    if (waker != nullptr) {
        ring.watch(*waker);
    }
    switch (WSAWaitForMultipleEvents(waker == nullptr ? 1 : 2, events.data(), FALSE,
                                     static_cast<DWORD>(waitLimit(timeout)), FALSE)) {
    case WSA_WAIT_EVENT_0:
        return ReceiveStatus::Data;
    case WSA_WAIT_EVENT_0 + 1:
        return ReceiveStatus::Woken;
    case WSA_WAIT_TIMEOUT:
        return ReceiveStatus::TimedOut;
    default:
        return ReceiveStatus::Failed;
    }
}

ReceiveStatus BatchReceiver::pause(std::chrono::microseconds time, const Waker& waker)
{
    Buffers& ring = *mBuffers;
    if (!ring.timer.start(time)) {
        return ReceiveStatus::TimedOut;
    }
    ring.watch(waker);
    const std::array<HANDLE, 2> events{ring.timer.handle, ring.woken.handle};
    return WaitForMultipleObjects(2, events.data(), FALSE, INFINITE) == WAIT_OBJECT_0 + 1
               ? ReceiveStatus::Woken
               : ReceiveStatus::TimedOut;
}

} // namespace gige::net
