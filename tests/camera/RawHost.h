#ifndef TELVO_TESTS_CAMERA_RAWHOST_H
#define TELVO_TESTS_CAMERA_RAWHOST_H

#include "FeatureTable.h"
#include "UdpSocket.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace camera
{

using Datagram = std::vector<std::uint8_t>;

/// Bytes from hexadecimal text; blanks do not count.
Datagram fromHex(const std::string& text);
std::string toHex(const Datagram& bytes);

/// One block as it arrived.
struct ReceivedBlock {
    std::uint16_t blockId = 0;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t pixelFormat = 0;
    std::map<std::uint32_t, Datagram> packets{}; ///< whole datagrams by packet id
    std::vector<std::uint32_t> order{};          ///< packet ids as they came
    bool hasTrailer = false;
    std::vector<std::uint8_t> image{};
};

/// A host written by hand from the protocol's tables, without the code that camera and library
/// share. Speaks to one camera from one control socket and one stream socket.
class RawHost
{
  public:
    explicit RawHost(const std::string& cameraAddress);

    // Control.
    /// Sends these bytes and returns the next answer; empty when none comes in time.
    Datagram ask(const Datagram& command, std::chrono::milliseconds patience = kPatience);
    Datagram listen(std::chrono::milliseconds patience = kPatience);
    void send(const Datagram& command);
    /// The value, or nothing on any error; the status stays in lastStatus().
    std::optional<std::uint32_t> readRegister(std::uint32_t address);
    /// The status: 0 success.
    std::uint16_t writeRegister(std::uint32_t address, std::uint32_t value);
    Datagram readMemory(std::uint32_t address, std::uint16_t count);
    std::uint16_t writeMemory(std::uint32_t address, const Datagram& bytes);
    std::uint16_t lastStatus() const { return mLastStatus; }

    // Features by their registers.
    std::uint32_t read(FeatureId feature);
    std::uint16_t write(FeatureId feature, std::uint32_t value);
    std::uint16_t execute(FeatureId feature) { return write(feature, 1); }

    // Stream.
    void takeControl();
    /// Takes control and lets the camera send here.
    void openStream(std::uint32_t packetSize = 1440);
    Datagram receivePacket(std::chrono::milliseconds patience = kPatience);
    /// The next block until its trailer, so many packets, or until nothing more comes.
    ReceivedBlock receiveBlock(std::chrono::milliseconds patience = kPatience,
                               std::size_t mostPackets = SIZE_MAX);
    void askResend(std::uint16_t blockId, std::uint32_t first, std::uint32_t last);
    /// Playback: source "Memory", acquisition started.
    void startPlayback();
    /// Writes text to the serial line. @return bytes taken
    std::uint32_t writeSerial(const std::string& text);

    gige::net::Endpoint camera() const { return mCamera; }

  private:
    static constexpr std::chrono::milliseconds kPatience{3000};

    gige::net::Endpoint mCamera;
    gige::net::UdpSocket mControl;
    gige::net::UdpSocket mStream;
    std::uint32_t mPacketSize = 1440;
    std::uint16_t mNextId = 1;
    std::uint16_t mLastStatus = 0;
};

} // namespace camera

#endif
