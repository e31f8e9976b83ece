#include "DeviceModel.h"

#include <algorithm>
#include <string>
#include <thread>
#include <utility>

namespace
{

constexpr std::size_t kHeader = 8;

std::uint16_t u16(const Bytes& bytes, std::size_t offset)
{
    return static_cast<std::uint16_t>(bytes.at(offset) << 8 | bytes.at(offset + 1));
}

std::uint32_t u32(const Bytes& bytes, std::size_t offset)
{
    return static_cast<std::uint32_t>(u16(bytes, offset)) << 16 | u16(bytes, offset + 2);
}

void append16(Bytes& bytes, std::uint32_t value)
{
    bytes.push_back(static_cast<std::uint8_t>(value >> 8));
    bytes.push_back(static_cast<std::uint8_t>(value));
}

void append32(Bytes& bytes, std::uint32_t value)
{
    append16(bytes, value >> 16);
    append16(bytes, value & 0xFFFF);
}

Bytes ackFor(const Bytes& command, std::uint16_t status, const Bytes& payload)
{
    Bytes ack;
    append16(ack, status);
    append16(ack, u16(command, 2) + 1U);
    append16(ack, static_cast<std::uint32_t>(payload.size()));
    append16(ack, u16(command, 6));
    ack.insert(ack.end(), payload.begin(), payload.end());
    return ack;
}

} // namespace

DeviceModel::DeviceModel(std::uint32_t address)
    : mRegisters{{0x0000, 0x00010002}, {0x0004, 0x80000001}, {0x0904, 1},
                 {0x0934, 0xC0000007}, {0x0938, 3000},       {0x0A00, 0}},
      mMac{0x02, 0x54, 0x7F, 0, 2, static_cast<std::uint8_t>(address)},
      mReportedAddress(address)
{
}

void DeviceModel::setScript(Script script)
{
    const std::lock_guard lock(mLock);
    mScript = std::make_shared<Script>(std::move(script));
}

void DeviceModel::setRegister(std::uint32_t address, std::uint32_t value)
{
    const std::lock_guard lock(mLock);
    mRegisters[address] = value;
}

std::uint32_t DeviceModel::registerValue(std::uint32_t address) const
{
    const std::lock_guard lock(mLock);
    return mRegisters.at(address);
}

void DeviceModel::removeRegister(std::uint32_t address)
{
    const std::lock_guard lock(mLock);
    mRegisters.erase(address);
}

void DeviceModel::setMemory(std::uint32_t address, const Bytes& bytes)
{
    const std::lock_guard lock(mLock);
    for (const std::uint8_t byte : bytes) {
        mMemory[address++] = byte;
    }
}

Bytes DeviceModel::memory(std::uint32_t address, std::size_t length) const
{
    const std::lock_guard lock(mLock);
    Bytes bytes;
    for (std::size_t i = 0; i < length; ++i) {
        bytes.push_back(mMemory.at(address++));
    }
    return bytes;
}

void DeviceModel::setMac(const std::array<std::uint8_t, 6>& mac)
{
    const std::lock_guard lock(mLock);
    mMac = mac;
}

void DeviceModel::setReportedAddress(std::uint32_t address)
{
    const std::lock_guard lock(mLock);
    mReportedAddress = address;
}

std::vector<FakeCommand> DeviceModel::commands() const
{
    const std::lock_guard lock(mLock);
    return mCommands;
}

std::vector<FakeCommand> DeviceModel::commands(std::uint16_t code) const
{
    std::vector<FakeCommand> matching = commands();
    std::erase_if(matching, [code](const FakeCommand& command) { return command.code != code; });
    return matching;
}

bool DeviceModel::waitForCount(std::uint16_t code, std::size_t wanted) const
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (count(code) < wanted) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

std::vector<FakeAnswer> DeviceModel::answersTo(const Bytes& datagram, std::uint16_t senderPort)
{
    std::unique_lock lock(mLock);
    const FakeCommand command{.datagram = datagram,
                              .code = u16(datagram, 2),
                              .requestId = u16(datagram, 6),
                              .firstWord = datagram.size() >= kHeader + 4 ? u32(datagram, 8) : 0,
                              .senderPort = senderPort,
                              .ack = respond(datagram)};
    mCommands.push_back(command);
    const std::shared_ptr<Script> script = mScript; // called without the lock
    lock.unlock();
    if (mSilent) {
        return {};
    }
    return script ? (*script)(command) : std::vector{FakeAnswer{command.ack}};
}

Bytes DeviceModel::respond(const Bytes& command)
{
    switch (u16(command, 2)) {
    case kDiscoveryCommand:
        return discoveryAck(command);
    case kReadRegisterCommand:
        return readRegisters(command);
    case kWriteRegisterCommand:
        return writeRegisters(command);
    case kReadMemoryCommand:
        return readMemory(command);
    case kWriteMemoryCommand:
        return writeMemory(command);
    case kForceIpCommand:
        return {}; // loopback addresses cannot be changed
    default:
        return ackFor(command, 0x8001, {});
    }
}

Bytes DeviceModel::readRegisters(const Bytes& command)
{
    Bytes values;
    for (std::size_t at = kHeader; at + 4 <= command.size(); at += 4) {
        const auto found = mRegisters.find(u32(command, at));
        if (found == mRegisters.end()) {
            return ackFor(command, 0x8003, values);
        }
        append32(values, found->second);
    }
    return ackFor(command, 0, values);
}

Bytes DeviceModel::writeRegisters(const Bytes& command)
{
    const std::uint32_t address = u32(command, kHeader);
    if (!mRegisters.contains(address)) {
        return ackFor(command, 0x8003, {0, 0, 0, 0});
    }
    mRegisters[address] = u32(command, kHeader + 4);
    return ackFor(command, 0, {0, 0, 0, 1});
}

Bytes DeviceModel::readMemory(const Bytes& command)
{
    const std::uint32_t address = u32(command, kHeader);
    const std::uint16_t count = u16(command, kHeader + 6);
    if (address % 4 != 0 || count % 4 != 0) {
        return ackFor(command, 0x8005, {});
    }
    Bytes payload;
    append32(payload, address);
    for (std::uint32_t at = address; at < address + count; ++at) {
        const auto found = mMemory.find(at);
        if (found == mMemory.end()) {
            return ackFor(command, 0x8003, {});
        }
        payload.push_back(found->second);
    }
    return ackFor(command, 0, payload);
}

Bytes DeviceModel::writeMemory(const Bytes& command)
{
    std::uint32_t address = u32(command, kHeader);
    const std::size_t count = command.size() - kHeader - 4;
    if (address % 4 != 0 || count % 4 != 0) {
        return ackFor(command, 0x8005, {});
    }
    for (std::size_t at = kHeader + 4; at < command.size(); ++at) {
        mMemory[address++] = command[at];
    }
    return ackFor(command, 0,
                  {0, 0, static_cast<std::uint8_t>(count >> 8), static_cast<std::uint8_t>(count)});
}

Bytes DeviceModel::discoveryAck(const Bytes& command)
{
    Bytes payload(248, 0);
    const auto put32 = [&payload](std::size_t offset, std::uint32_t value) {
        Bytes bytes;
        append32(bytes, value);
        std::ranges::copy(bytes, payload.begin() + static_cast<std::ptrdiff_t>(offset));
    };
    const auto putText = [&payload](std::size_t offset, const std::string& text) {
        std::ranges::copy(text, payload.begin() + static_cast<std::ptrdiff_t>(offset));
    };
    put32(0, 0x00010002);
    put32(4, 0x80000001);
    std::ranges::copy(mMac, payload.begin() + 10);
    put32(36, mReportedAddress);
    put32(52, 0xFF000000);
    putText(72, "Fake Maker");
    putText(104, "Fake Camera");
    putText(216, "SN-1");
    putText(232, "test");
    return ackFor(command, 0, payload);
}

Bytes errorAck(const FakeCommand& command, std::uint16_t status)
{
    return ackFor(command.datagram, status, {});
}

Bytes pendingAck(const FakeCommand& command, std::uint16_t milliseconds)
{
    Bytes ack{0, 0, 0x00, 0x89, 0, 4};
    append16(ack, command.requestId);
    append16(ack, 0);
    append16(ack, milliseconds);
    return ack;
}

Bytes withRequestId(Bytes ack, std::uint16_t requestId)
{
    ack.at(6) = static_cast<std::uint8_t>(requestId >> 8);
    ack.at(7) = static_cast<std::uint8_t>(requestId);
    return ack;
}

Bytes withCode(Bytes ack, std::uint16_t code)
{
    ack.at(2) = static_cast<std::uint8_t>(code >> 8);
    ack.at(3) = static_cast<std::uint8_t>(code);
    return ack;
}
