// The byte pipe to the camera's command interpreter.
#include "CQuorGrabber.h"
#include "LogText.h"

#include <algorithm>
#include <string>

namespace
{
constexpr std::uint32_t kReadTimeout = 2000; // ms
}

std::int32_t CQuorGrabber::openSerialPort()
{
    if (mSerialPort.IsOpened()) {
        return kSuccess;
    }
    if (!mSerialPort.Open(&mDevice, PvIPEngineSerial::Serial0).IsOK()) {
        logLine("- Error open serial com");
        return kFailure;
    }
    logLine("- Serial com opened");
    return kSuccess;
}

std::int32_t CQuorGrabber::flushSerialPort()
{
    if (!mSerialPort.IsOpened()) {
        logLine("- Error flush serial com");
        return kSuccess;
    }
    mSerialPort.FlushRxBuffer();
    logLine("- Flush serial com");
    return kSuccess;
}

std::int32_t CQuorGrabber::writeData(const std::uint8_t* data, std::uint32_t count)
{
    // The line shows the data up to its NUL, or to its end where it has none.
    const std::string text(data, std::find(data, data + count, 0));
    logLine("Write data %s Count %d", text.c_str(), static_cast<std::int32_t>(count));
    std::uint32_t written = 0;
    mSerialPort.Write(data, count, written);
    if (written != count) {
        logLine("%d only bytes written instead of requested %d", static_cast<std::int32_t>(written),
                static_cast<std::int32_t>(count));
        return kFailure;
    }
    logLine("%d bytes written", static_cast<std::int32_t>(written));
    return kSuccess;
}

std::int32_t CQuorGrabber::readData(std::uint8_t* buffer, std::uint32_t* count)
{
    // The count alone tells the host what came: a failed read is a read of fewer bytes.
    std::uint32_t received = 0;
    mSerialPort.Read(buffer, *count, received, kReadTimeout);
    *count = received;
    return kSuccess;
}
