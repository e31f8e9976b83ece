#ifndef TELVO_TESTS_GIGE_CONTROL_FAKEDEVICE_H
#define TELVO_TESTS_GIGE_CONTROL_FAKEDEVICE_H

#include "UdpSocket.h"

#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

/// A command as it arrived, and what a faultless device would answer.
struct FakeCommand {
    Bytes datagram;
    std::uint16_t code = 0;
    std::uint16_t requestId = 0;
    std::uint32_t firstWord = 0; // first four payload bytes: the address, for register and memory
    std::uint16_t senderPort = 0;
    Bytes ack;
};

/// One datagram that the device sends as an answer.
struct FakeAnswer {
    Bytes datagram;
    std::chrono::milliseconds delay{0}; // before it is sent
    bool fromOtherPort = false;         // leaves from a socket that is not the device's
    bool broadcast = false;             // goes to 127.255.255.255 and the sender's port
    bool fromOtherAddress = false;      // port 3956, but of the address 100 higher
};

/**
 * A scripted GigE Vision device on one loopback address: registers and memory that behave, and a
 * script that may turn each answer into something else. Its packets are put together by hand here,
 * so that the host's encoders are not judged by themselves.
 * Threads: two of its own, one a socket, serve commands and call the script in turns; mLock guards
 * the data.
 */
class FakeDevice
{
  public:
    using Script = std::function<std::vector<FakeAnswer>(const FakeCommand&)>;

    /// @param address  "127.0.2.x", free; opens it at port 3956 and listens for loopback broadcasts
    explicit FakeDevice(const std::string& address);
    ~FakeDevice();
    FakeDevice(const FakeDevice&) = delete;
    FakeDevice& operator=(const FakeDevice&) = delete;

    /// Called for every command from now on, on a thread of the device; may keep state.
    void setScript(Script script);
    void setRegister(std::uint32_t address, std::uint32_t value);
    std::uint32_t registerValue(std::uint32_t address) const;
    void setMemory(std::uint32_t address, const Bytes& bytes);
    Bytes memory(std::uint32_t address, std::size_t length) const;
    /// Registers that do not exist answer INVALID_ADDRESS.
    void removeRegister(std::uint32_t address);

    /// Silent: receives and records, answers nothing. Leaves discovery alone unless told.
    void setSilent(bool silent) { mSilent = silent; }
    void setMac(const std::array<std::uint8_t, 6>& mac);
    /// What its discovery answers name as its address.
    void setReportedAddress(std::uint32_t address);

    std::vector<FakeCommand> commands() const;
    /// Commands with this code, in order of arrival.
    std::vector<FakeCommand> commands(std::uint16_t code) const;
    std::size_t count(std::uint16_t code) const { return commands(code).size(); }

    // Waits up to ten seconds for the number of commands with this code.
    bool waitForCount(std::uint16_t code, std::size_t count) const;

  private:
    void serve(gige::net::UdpSocket& socket);
    void handle(const Bytes& datagram, const gige::net::Endpoint& sender);
    Bytes respond(const Bytes& command);
    Bytes readRegisters(const Bytes& command);
    Bytes writeRegisters(const Bytes& command);
    Bytes readMemory(const Bytes& command);
    Bytes writeMemory(const Bytes& command);
    Bytes discoveryAck(const Bytes& command);
    void send(const FakeAnswer& answer, gige::net::Endpoint destination);

    gige::net::Ipv4Address mAddress;
    gige::net::UdpSocket mSocket;
    gige::net::UdpSocket mBroadcastSocket;
    gige::net::UdpSocket mOtherPortSocket;
    gige::net::UdpSocket mOtherAddressSocket;
    gige::net::Waker mStop;
    std::atomic<bool> mSilent{false};

    std::mutex mTurn; // of the thread that serves a command
    mutable std::mutex mLock;
    std::shared_ptr<Script> mScript; // may be null
    std::map<std::uint32_t, std::uint32_t> mRegisters;
    std::map<std::uint32_t, std::uint8_t> mMemory;
    std::array<std::uint8_t, 6> mMac{};
    std::uint32_t mReportedAddress = 0;
    std::vector<FakeCommand> mCommands;
    std::thread mThread;
    std::thread mBroadcastThread;
};

// Command codes as the device sees them.
constexpr std::uint16_t kDiscoveryCommand = 0x0002;
constexpr std::uint16_t kForceIpCommand = 0x0004;
constexpr std::uint16_t kReadRegisterCommand = 0x0080;
constexpr std::uint16_t kWriteRegisterCommand = 0x0082;
constexpr std::uint16_t kReadMemoryCommand = 0x0084;
constexpr std::uint16_t kWriteMemoryCommand = 0x0086;

/// An ack to `command` without payload, with this status.
Bytes errorAck(const FakeCommand& command, std::uint16_t status);
/// PENDING_ACK to `command`, naming this time.
Bytes pendingAck(const FakeCommand& command, std::uint16_t milliseconds);
/// The faultless ack with another request id.
Bytes withRequestId(Bytes ack, std::uint16_t requestId);
Bytes withCode(Bytes ack, std::uint16_t code);

#endif
