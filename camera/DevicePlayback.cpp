#include "Device.h"

#include <algorithm>

namespace camera
{

using gige::wire::GvcpStatus;

namespace
{

constexpr std::size_t kMostRequests = 64; // that wait to be sent

} // namespace

GvcpStatus Device::requestInfo()
{
    if (mAcquisition != Acquisition::Playback || mRequests.size() >= kMostRequests) {
        return Status::AccessDenied;
    }
    mRequests.push_back({.info = true});
    return Status::Success;
}

GvcpStatus Device::requestFrame(std::uint32_t number)
{
    const std::uint32_t sequence = get32(FeatureId::StreamSequenceSelector);
    if (mAcquisition != Acquisition::Playback || mRequests.size() >= kMostRequests) {
        return Status::AccessDenied;
    }
    if (!mRecorder.frame(sequence, number)) {
        return Status::InvalidParameter;
    }
    set(FeatureId::StreamSingleFrame, number);
    mRequests.push_back({.sequence = sequence, .next = number, .last = number});
    return Status::Success;
}

GvcpStatus Device::selectRange(FeatureId id, std::uint32_t number)
{
    const bool isStart = id == FeatureId::StreamStartNumber;
    const std::int64_t other =
        get(isStart ? FeatureId::StreamEndNumber : FeatureId::StreamStartNumber);
    const bool inOrder = isStart ? number <= other : number >= other;
    if (mFaults.requiresOrderedRange() && !inOrder) {
        return Status::InvalidParameter;
    }
    set(id, number);
    return Status::Success;
}

GvcpStatus Device::requestRange()
{
    const std::uint32_t sequence = get32(FeatureId::StreamSequenceSelector);
    const std::uint32_t first = get32(FeatureId::StreamStartNumber);
    const std::uint32_t last = get32(FeatureId::StreamEndNumber);
    if (mAcquisition != Acquisition::Playback) {
        return Status::AccessDenied;
    }
    if (first > last || !mRecorder.frame(sequence, last)) {
        return Status::InvalidParameter;
    }
    // A new range takes the place of one that is still being sent: the host has given that one up.
    mRequests.clear();
    mRequests.push_back({.sequence = sequence, .next = first, .last = last});
    return Status::Success;
}

bool Device::serialWrite(std::uint16_t address, std::uint32_t value)
{
    switch (address) {
    case kSerialFirstFrame:
        set(FeatureId::StreamStartNumber, value);
        return true;
    case kSerialLastFrame:
        set(FeatureId::StreamEndNumber, value);
        return true;
    case kSerialStartStream:
        return requestRange() == Status::Success;
    default:
        return true; // a register without an effect here
    }
}

GvcpStatus Device::transmit(std::uint32_t count)
{
    mTransmitted = std::min(count, mFaults.serialLimit());
    mSerial.send(std::span(mTransmitBuffer).first(mTransmitted));
    return Status::Success;
}

void Device::writeTransmitBuffer(std::size_t offset, std::span<const std::uint8_t> bytes)
{
    const std::scoped_lock lock(mLock);
    if (offset + bytes.size() <= mTransmitBuffer.size()) {
        std::ranges::copy(bytes, mTransmitBuffer.begin() + static_cast<std::ptrdiff_t>(offset));
    }
}

std::vector<std::uint8_t> Device::transmitBuffer()
{
    const std::scoped_lock lock(mLock);
    return {mTransmitBuffer.begin(), mTransmitBuffer.end()};
}

std::vector<std::uint8_t> Device::receiveBuffer()
{
    const std::scoped_lock lock(mLock);
    std::vector<std::uint8_t> bytes = mSerial.peek(kSerialBufferLength);
    bytes.resize(kSerialBufferLength);
    return bytes;
}

std::optional<StreamOrder> Device::playbackOrder()
{
    while (!mRequests.empty()) {
        Request& request = mRequests.front();
        if (request.info) {
            mRequests.pop_front();
            return infoOrder();
        }
        const auto stamp = mRecorder.frame(request.sequence, request.next);
        if (!stamp) {
            mRequests.pop_front(); // a newer recording has taken its place
            continue;
        }
        StreamOrder block = order(mRecorder.settings().view, *stamp);
        block.pixelFormat = mRecorder.settings().pixelFormat;
        block.position = request.position;
        ++request.position;
        if (request.next++ == request.last) {
            mRequests.pop_front();
        }
        return block;
    }
    return std::nullopt;
}

StreamOrder Device::infoOrder()
{
    const RecordSettings& settings = mRecorder.settings();
    const bool recorded = mRecorder.hasRecorded();
    const SceneView shown = recorded ? settings.view : view();
    RecordingInfo info{.width = shown.width,
                       .height = shown.height,
                       .continuous = recorded ? settings.continuous
                                              : get(FeatureId::RecordMode) == kRecordContinuous,
                       .sequences = recorded ? settings.sequences : sequences()};
    for (std::uint32_t i = 0; i < kMaxSequences; ++i) {
        info.stopPointers[i] = mRecorder.stopPointer(i);
    }
    // At the set geometry, for which the host has its buffer.
    StreamOrder block = order(view(), {});
    block.info = encode(info);
    return block;
}

std::optional<FrameStamp> Device::recordedFrame(std::uint32_t sequence, std::uint32_t index)
{
    const std::scoped_lock lock(mLock);
    return mRecorder.frame(sequence, index);
}

SceneView Device::recordedView()
{
    const std::scoped_lock lock(mLock);
    return mRecorder.settings().view;
}

} // namespace camera
