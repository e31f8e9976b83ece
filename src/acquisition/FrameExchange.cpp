#include "FrameExchange.h"

#include "FrameHeader.h"

#include <algorithm>

namespace
{

class Locked
{
  public:
    explicit Locked(CRITICAL_SECTION& section) : mSection(section)
    {
        EnterCriticalSection(&mSection);
    }
    ~Locked() { LeaveCriticalSection(&mSection); }
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;

  private:
    CRITICAL_SECTION& mSection;
};

} // namespace

FrameExchange::FrameExchange()
{
    InitializeCriticalSection(&mLock);
}

FrameExchange::~FrameExchange()
{
    DeleteCriticalSection(&mLock);
}

void FrameExchange::reset(std::uint32_t frameSize)
{
    // Room for a header even where the image is smaller: the host's side reads it from any image.
    const std::size_t size = std::max<std::size_t>(frameSize, kFrameHeaderSize);
    const Locked lock(mLock);
    for (Buffer& buffer : mBuffers) {
        buffer = {HostMemory(size), false};
    }
    mWriteIndex = 0;
    mFrameSize = frameSize;
}

void FrameExchange::clear()
{
    const Locked lock(mLock);
    mBuffers = {};
    mFrameSize = 0;
}

void FrameExchange::put(std::span<const std::uint8_t> image)
{
    const Locked lock(mLock);
    Buffer& target = mBuffers[mWriteIndex];
    if (target.data.empty()) {
        return;
    }
    std::copy_n(image.begin(), std::min(image.size(), mFrameSize), target.data.begin());
    target.filled = true;
}

std::span<const std::uint8_t> FrameExchange::take(std::size_t size)
{
    const Locked lock(mLock);
    Buffer& taken = mBuffers[mWriteIndex];
    if (!taken.filled || !growTo(taken.data, size)) {
        return {};
    }
    mWriteIndex = 1 - mWriteIndex;
    mBuffers[mWriteIndex].filled = false;
    return taken.data;
}
