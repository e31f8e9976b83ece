#include "FrameRequester.h"

#include <array>
#include <cstdio>
#include <span>

namespace
{
constexpr int kTries = 3;
constexpr std::size_t kSerialRequestSize = 37; // characters
} // namespace

std::string serialFrameRequest(const FrameRange& range)
{
    std::array<char, kSerialRequestSize + 1> text{};
    std::snprintf(text.data(), text.size(), ":GW07b0%08X:GW07a8%08X:GW07f8",
                  static_cast<unsigned>(range.last), static_cast<unsigned>(range.first));
    return text.data();
}

void FrameRequester::bind(CameraLink& link, std::int32_t readoutMode)
{
    mLink = &link;
    const CameraFeatures& features = link.features;
    mStartNumber = features.find<PvGenInteger>("StreamStartNumber");
    mEndNumber = features.find<PvGenInteger>("StreamEndNumber");
    mSequenceStart = features.find<PvGenCommand>("StreamSequenceStart");
    mAcquisitionStart = features.find<PvGenCommand>("AcquisitionStart");
    features.find<PvGenCommand>("AcquisitionStop"); // sent by the grabber, through its own handle
    if (hasRange()) {
        (void)mStartNumber->SetValue(0);
        (void)mEndNumber->SetValue(0);
    }
    mIsSerial = readoutMode == 1 && link.serialLine.isOpen();
    if (mIsSerial) {
        link.serialLine.flush();
    }
}

bool FrameRequester::canSend() const
{
    return mIsSerial || canSendFeatures();
}

bool FrameRequester::canSendFeatures() const
{
    return hasRange() && mSequenceStart != nullptr;
}

bool FrameRequester::hasRange() const
{
    return mStartNumber != nullptr && mEndNumber != nullptr;
}

bool FrameRequester::send(const FrameRange& range)
{
    return mIsSerial ? sendSerial(range) : sendFeatures(range);
}

void FrameRequester::startAcquisition()
{
    execute(mAcquisitionStart);
}

bool FrameRequester::sendSerial(const FrameRange& range)
{
    const std::string request = serialFrameRequest(range);
    const std::span bytes(reinterpret_cast<const std::uint8_t*>(request.data()), request.size());
    for (int i = 0; i < kTries; ++i) {
        if (mLink->serialLine.write(bytes) == Outcome::Done) {
            return true;
        }
    }
    return false;
}

bool FrameRequester::sendFeatures(const FrameRange& range)
{
    for (int i = 0; canSendFeatures() && i < kTries; ++i) {
        if (setRange(range)) {
            execute(mSequenceStart);
            return true;
        }
    }
    return false;
}

bool FrameRequester::setRange(const FrameRange& range)
{
    const auto setFirst = [&] { return mStartNumber->SetValue(range.first).IsOK(); };
    const auto setLast = [&] { return mEndNumber->SetValue(range.last).IsOK(); };
    // The camera refuses a number that crosses the other, old one: then the other goes first.
    if (!setLast() && !(setFirst() && setLast())) {
        return false;
    }
    return setFirst() || (setLast() && setFirst());
}
