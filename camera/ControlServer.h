#ifndef TELVO_CAMERA_CONTROLSERVER_H
#define TELVO_CAMERA_CONTROLSERVER_H

#include "CameraLog.h"
#include "GvcpHeader.h"
#include "GvcpPayloads.h"
#include "RegisterMap.h"
#include "UdpSocket.h"

#include <array>
#include <atomic>
#include <deque>
#include <functional>
#include <mutex>
#include <vector>

namespace camera
{

/// What the control side asks of the stream side.
struct StreamCommands {
    std::function<void(const StreamChannel&)> sendTestPacket;
    std::function<void(const gige::wire::PacketResend&)> resend;
};

/// Executes control commands and answers them. A command repeated under the same id by the same
/// host is answered from memory and not executed again. execute() and checkHeartbeat() belong to
/// the control thread; discoveryAck() is thread-safe.
class ControlServer
{
  public:
    using Status = gige::wire::GvcpStatus;
    using Endpoint = gige::net::Endpoint;
    using Answer = std::vector<std::uint8_t>;

    /// @param send  hands a datagram to the network, to the given host
    ControlServer(Bootstrap& bootstrap, RegisterMap& registers, Device& device, Faults& faults,
                  CameraLog& log, StreamCommands stream,
                  std::function<void(const Answer&, const Endpoint&)> send);

    /// Takes one datagram; answers it if it wants and deserves an answer.
    void execute(std::span<const std::uint8_t> datagram, const Endpoint& from);
    /// Answers DISCOVERY and a FORCEIP for this camera; ignores everything else.
    void executeBroadcast(std::span<const std::uint8_t> datagram, const Endpoint& from);
    /// Lets go of a host that has been silent for too long.
    void checkHeartbeat();

  private:
    using Command = gige::wire::GvcpCommandPacket;
    struct Result {
        Status status = Status::Success;
        std::vector<std::uint8_t> payload{};
    };

    [[nodiscard]] Result perform(const Command& command, const Endpoint& from);
    [[nodiscard]] Result readRegisters(const Command& command, const Endpoint& from);
    [[nodiscard]] Result writeRegisters(const Command& command, const Endpoint& from);
    [[nodiscard]] Result readMemory(const Command& command, const Endpoint& from);
    [[nodiscard]] Result writeMemory(const Command& command, const Endpoint& from);
    Status readBytes(std::uint32_t address, std::span<std::uint8_t> bytes, const Endpoint& from);
    Status writeBytes(std::uint32_t address, std::span<const std::uint8_t> bytes,
                      const Endpoint& from, std::size_t& written);
    [[nodiscard]] bool mayWrite(std::uint32_t address, const Endpoint& from);
    void resend(const Command& command, const Endpoint& from);
    void answerDiscovery(const Command& command, const Endpoint& from);
    void forceIp(const Command& command, const Endpoint& from);
    void answer(const Command& command, const Result& result, const Endpoint& from);
    void suffer(const AccessFault& fault);
    void sendPendingAck(std::chrono::milliseconds time);

    Bootstrap& mBootstrap;
    RegisterMap& mRegisters;
    Device& mDevice;
    Faults& mFaults;
    CameraLog& mLog;
    StreamCommands mStream;
    std::function<void(const Answer&, const Endpoint&)> mSend;

    // The last command, for repetitions.
    Endpoint mLastHost;
    std::uint16_t mLastId = 0; // 0: none
    Answer mLastAnswer;

    // What faults of the command at hand ask for.
    Endpoint mCurrentHost;
    std::uint16_t mCurrentId = 0;
    bool mDropAck = false;
    bool mDoubleAck = false;
    std::chrono::milliseconds mAckDelay{0};
};

} // namespace camera

#endif
