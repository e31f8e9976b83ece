#ifndef TELVO_CAMERA_SERIALBRIDGE_H
#define TELVO_CAMERA_SERIALBRIDGE_H

#include "FeatureTable.h"
#include "SerialLine.h"

#include <algorithm>
#include <array>

namespace camera
{

/// The two buffers through which the host reaches the serial line. Not thread-safe.
class SerialBridge
{
  public:
    explicit SerialBridge(SerialLine::WriteHandler onWrite) : mLine(std::move(onWrite)) {}

    [[nodiscard]] SerialLine& line() { return mLine; }
    [[nodiscard]] const SerialLine& line() const { return mLine; }

    /// Bytes beyond the buffer's end are not for it: nothing is written then.
    void write(std::size_t offset, std::span<const std::uint8_t> bytes)
    {
        if (offset + bytes.size() <= mTransmitBuffer.size()) {
            std::ranges::copy(bytes, mTransmitBuffer.begin() + static_cast<std::ptrdiff_t>(offset));
        }
    }
    [[nodiscard]] std::vector<std::uint8_t> transmitBuffer() const
    {
        return {mTransmitBuffer.begin(), mTransmitBuffer.end()};
    }
    /// The bytes that wait, zero behind them.
    [[nodiscard]] std::vector<std::uint8_t> receiveBuffer() const
    {
        std::vector<std::uint8_t> bytes = mLine.peek(kSerialBufferLength);
        bytes.resize(kSerialBufferLength);
        return bytes;
    }

    /// Sends the transmit buffer's first bytes, at most as many as it holds.
    void transmit(std::uint32_t count)
    {
        mTransmitted = count;
        mLine.send(std::span(mTransmitBuffer).first(count));
    }
    /// How many bytes were sent last.
    [[nodiscard]] std::uint32_t transmitted() const { return mTransmitted; }

  private:
    SerialLine mLine;
    std::array<std::uint8_t, kSerialBufferLength> mTransmitBuffer{};
    std::uint32_t mTransmitted = 0;
};

} // namespace camera

#endif
