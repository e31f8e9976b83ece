#include "SerialLine.h"

#include "LogText.h"

#include <algorithm>
#include <string>

namespace
{
constexpr std::uint32_t kReadTimeout = 2000; // ms
}

void SerialLine::open(PvDevice& device)
{
    if (mPort.IsOpened()) {
        return;
    }
    if (!mPort.Open(&device, PvIPEngineSerial::Serial0).IsOK()) {
        logLine("- Error open serial com");
        return;
    }
    logLine("- Serial com opened");
}

void SerialLine::flush()
{
    if (!mPort.IsOpened()) {
        logLine("- Error flush serial com");
        return;
    }
    (void)mPort.FlushRxBuffer();
    logLine("- Flush serial com");
}

Outcome SerialLine::write(std::span<const std::uint8_t> data)
{
    const auto count = static_cast<std::uint32_t>(data.size());
    // The line shows the data up to its NUL, or to its end where it has none.
    const std::string text(data.begin(), std::ranges::find(data, 0));
    logLine("Write data %s Count %d", text.c_str(), static_cast<std::int32_t>(count));
    std::uint32_t written = 0;
    (void)mPort.Write(data.data(), count, written);
    if (written != count) {
        logLine("%d only bytes written instead of requested %d", static_cast<std::int32_t>(written),
                static_cast<std::int32_t>(count));
        return Outcome::Failed;
    }
    logLine("%d bytes written", static_cast<std::int32_t>(written));
    return Outcome::Done;
}

std::size_t SerialLine::read(std::span<std::uint8_t> buffer)
{
    std::uint32_t received = 0;
    (void)mPort.Read(buffer.data(), static_cast<std::uint32_t>(buffer.size()), received,
                     kReadTimeout);
    return received;
}
