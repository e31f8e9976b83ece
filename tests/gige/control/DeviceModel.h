#ifndef TELVO_TESTS_CONTROL_DEVICEMODEL_H
#define TELVO_TESTS_CONTROL_DEVICEMODEL_H

#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
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

/// A scripted GigE Vision device without its socket: registers and memory that behave, and a script
/// that may turn each answer into something else. Its packets are put together by hand here, so
/// that the host's encoders are not judged by themselves. Threads: any; commands are served in
/// turns, mLock guards the data.
class DeviceModel
{
  public:
    using Script = std::function<std::vector<FakeAnswer>(const FakeCommand&)>;

    /// @param address  where it is, for its discovery answers
    explicit DeviceModel(std::uint32_t address);
    DeviceModel(const DeviceModel&) = delete;
    DeviceModel& operator=(const DeviceModel&) = delete;

    /// Called for every command from now on, on the thread that serves it; may keep state.
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

    /// Serves a command. @return what to answer
    std::vector<FakeAnswer> answersTo(const Bytes& datagram, std::uint16_t senderPort = 0);

  private:
    Bytes respond(const Bytes& command);
    Bytes readRegisters(const Bytes& command);
    Bytes writeRegisters(const Bytes& command);
    Bytes readMemory(const Bytes& command);
    Bytes writeMemory(const Bytes& command);
    Bytes discoveryAck(const Bytes& command);

    std::atomic<bool> mSilent{false};
    mutable std::mutex mLock;
    std::shared_ptr<Script> mScript; // may be null
    std::map<std::uint32_t, std::uint32_t> mRegisters;
    std::map<std::uint32_t, std::uint8_t> mMemory;
    std::array<std::uint8_t, 6> mMac{};
    std::uint32_t mReportedAddress = 0;
    std::vector<FakeCommand> mCommands;
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
