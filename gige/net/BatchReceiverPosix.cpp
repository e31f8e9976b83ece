#include "BatchReceiver.h"

#include "PosixSocket.h"
#include "RingSwitch.h"
#include "SlotSizing.h"
#include "SocketBatch.h"

#include <sys/prctl.h>

namespace gige::net
{

namespace
{

/// Takes out of the ring in a row before the socket is asked, which has hardly ever anything then.
constexpr int kRingTakes = 16;
/// What the system may add to a sleep of the receiving thread, nanoseconds; else 50 us.
constexpr unsigned long kTimerSlack = 5000;

} // namespace

struct BatchReceiver::Buffers {
    SocketBatch batch;
    RingSwitch ring;
    int ringTakes = 0; // in a row
    bool hasPreciseTimer = false;

    explicit Buffers(NativeSocket socket) : batch(socket), ring(socket) {}

    bool isRingsTurn() const { return ring.isInstead() && ringTakes < kRingTakes; }
};

BatchReceiver::BatchReceiver(UdpSocket& socket)
    : mSocket(socket), mRuns(kMostSlots), mBuffers(std::make_unique<Buffers>(socket.handle()))
{
}

BatchReceiver::~BatchReceiver() = default;

void BatchReceiver::useRing(RingUse use, Ipv4Address source)
{
    mBuffers->ring.allow(use, {.source = source, .destination = mSocket.localEndpoint()});
}

bool BatchReceiver::isRingInUse() const
{
    return mBuffers->ring.isInUse();
}

ReceiveStatus BatchReceiver::take()
{
    const bool ringFirst = mBuffers->isRingsTurn();
    if (ringFirst && takeFromRing()) {
        return ReceiveStatus::Data;
    }
    const std::span<DatagramRun, kMostSlots> room(mRuns);
    const auto count = mBuffers->batch.take(room);
    if (!count) {
        return ReceiveStatus::Failed;
    }
    mBuffers->ringTakes = 0;
    mRunCount = *count;
    mMayHaveMore = mBuffers->batch.isFull();
    if (mRunCount > 0) {
        mBuffers->ring.noteReceived(runs());
        return ReceiveStatus::Data;
    }
    return !ringFirst && takeFromRing() ? ReceiveStatus::Data : ReceiveStatus::TimedOut;
}

bool BatchReceiver::takeFromRing()
{
    ++mBuffers->ringTakes;
    mRunCount = mBuffers->ring.take(mRuns);
    mMayHaveMore = mRunCount == mRuns.size();
    return mRunCount > 0;
}

ReceiveStatus BatchReceiver::wait(Timeout timeout, const Waker* waker)
{
    const RingSwitch& ring = mBuffers->ring;
    return ring.isInUse()
               ? waitReadable(mSocket.handle(), ring.handle(), RingSwitch::limit(timeout), waker)
               : waitReadable(mSocket.handle(), timeout, waker);
}

ReceiveStatus BatchReceiver::pause(std::chrono::microseconds time, const Waker& waker)
{
    if (!mBuffers->hasPreciseTimer) {
        mBuffers->hasPreciseTimer = prctl(PR_SET_TIMERSLACK, kTimerSlack) == 0;
    }
    const ReceiveStatus status = waitReadable(waker.handle(), time, nullptr);
    return status == ReceiveStatus::Data ? ReceiveStatus::Woken : status;
}

} // namespace gige::net
