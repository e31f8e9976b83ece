#include "BlockReadout.h"

#include "HostSettings.h"
#include "Require.h"
#include "TelvoDll.h"

#include <algorithm>
#include <chrono>

namespace
{

void readBlock(std::uint32_t first, std::uint32_t count)
{
    require(expGetRecordedFrameBlock(nullptr, 0, first, count, kCamera) == 0, "requesting");
    std::int64_t got = 0;
    std::uint32_t status = 0;
    require(expGetRecordedFrameBlockResult(nullptr, &got, &status, kCamera) != nullptr &&
                got == count,
            "reading a block");
}

} // namespace

void connectHost(const char* macAddress, const char* ipAddress, std::uint32_t packetSize)
{
    const TelvoConnectionSettings settings = hostSettings(packetSize);
    require(expConnectGrabber(macAddress, ipAddress, 1, &settings, kCamera) == 0, "connecting");
    require(expInitializeGrabber(&settings, kCamera) == 0, "initialising");
}

double readInBlocks(std::uint32_t frames)
{
    std::uint32_t blockFrames = 0;
    require(expStartFrameBlockTransfer(kCamera) == 0, "starting the transfer");
    require(expGetFrameBlockSize(&blockFrames, kCamera) == 0, "asking for the block size");
    const auto start = std::chrono::steady_clock::now();
    for (std::uint32_t first = 0; first < frames; first += blockFrames) {
        readBlock(first, std::min(blockFrames, frames - first));
    }
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
    require(expStopFrameBlockTransfer(kCamera) == 0, "stopping the transfer");
    return time.count();
}
