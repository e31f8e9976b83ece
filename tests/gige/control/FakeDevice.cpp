#include "FakeDevice.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

using gige::net::Endpoint;
using gige::net::Ipv4Address;
using gige::net::ReceiveStatus;
using gige::net::UdpSocket;

namespace
{

constexpr std::uint16_t kPort = 3956;
constexpr std::size_t kHeader = 8;
constexpr Ipv4Address kLoopbackBroadcast{0x7FFFFFFF};

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

UdpSocket openSocket(Ipv4Address address, std::uint16_t port)
{
    auto socket = UdpSocket::open({.address = address, .port = port},
                                  {.reuseAddress = true, .broadcast = true});
    if (!socket) {
        throw std::runtime_error("the test device's address is taken");
    }
    return std::move(*socket);
}

} // namespace

FakeDevice::FakeDevice(const std::string& address)
    : mAddress(gige::net::parseIpv4(address).value()),
      mSocket(openSocket(mAddress, kPort)),
      mBroadcastSocket(openSocket(kLoopbackBroadcast, kPort)),
      mOtherPortSocket(openSocket(mAddress, 0)),
      mOtherAddressSocket(openSocket({mAddress.value + 100}, kPort))
{
    mReportedAddress = mAddress.value;
    mMac = {0x02, 0x54, 0x7F, 0, 2, static_cast<std::uint8_t>(mAddress.value)};
    mRegisters = {{0x0000, 0x00010002}, {0x0004, 0x80000001}, {0x0904, 1},
                  {0x0934, 0xC0000007}, {0x0938, 3000},       {0x0A00, 0}};
    mThread = std::thread([this] { serve(mSocket); });
    mBroadcastThread = std::thread([this] { serve(mBroadcastSocket); });
}

FakeDevice::~FakeDevice()
{
    mStop.wake();
    mThread.join();
    mBroadcastThread.join();
}

void FakeDevice::setScript(Script script)
{
    const std::lock_guard lock(mLock);
    mScript = std::make_shared<Script>(std::move(script));
}

void FakeDevice::setRegister(std::uint32_t address, std::uint32_t value)
{
    const std::lock_guard lock(mLock);
    mRegisters[address] = value;
}

std::uint32_t FakeDevice::registerValue(std::uint32_t address) const
{
    const std::lock_guard lock(mLock);
    return mRegisters.at(address);
}

void FakeDevice::removeRegister(std::uint32_t address)
{
    const std::lock_guard lock(mLock);
    mRegisters.erase(address);
}

void FakeDevice::setMemory(std::uint32_t address, const Bytes& bytes)
{
    const std::lock_guard lock(mLock);
    for (const std::uint8_t byte : bytes) {
        mMemory[address++] = byte;
    }
}

Bytes FakeDevice::memory(std::uint32_t address, std::size_t length) const
{
    const std::lock_guard lock(mLock);
    Bytes bytes;
    for (std::size_t i = 0; i < length; ++i) {
        bytes.push_back(mMemory.at(address++));
    }
    return bytes;
}

void FakeDevice::setMac(const std::array<std::uint8_t, 6>& mac)
{
    const std::lock_guard lock(mLock);
    mMac = mac;
}

void FakeDevice::setReportedAddress(std::uint32_t address)
{
    const std::lock_guard lock(mLock);
    mReportedAddress = address;
}

std::vector<FakeCommand> FakeDevice::commands() const
{
    const std::lock_guard lock(mLock);
    return mCommands;
}

std::vector<FakeCommand> FakeDevice::commands(std::uint16_t code) const
{
    std::vector<FakeCommand> matching = commands();
    std::erase_if(matching, [code](const FakeCommand& command) { return command.code != code; });
    return matching;
}

bool FakeDevice::waitForCount(std::uint16_t code, std::size_t wanted) const
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

void FakeDevice::serve(UdpSocket& socket)
{
    Bytes buffer(2048);
    for (;;) {
        const auto received = socket.receive(buffer, std::nullopt, &mStop);
        if (received.status != ReceiveStatus::Data) {
            return;
        }
        if (received.size >= kHeader) {
            handle(Bytes(buffer.data(), buffer.data() + received.size), received.source);
        }
    }
}

void FakeDevice::handle(const Bytes& datagram, const Endpoint& sender)
{
    const std::lock_guard turn(mTurn);
    std::vector<FakeAnswer> answers;
    {
        std::unique_lock lock(mLock);
        const FakeCommand command{.datagram = datagram,
                                  .code = u16(datagram, 2),
                                  .requestId = u16(datagram, 6),
                                  .firstWord =
                                      datagram.size() >= kHeader + 4 ? u32(datagram, 8) : 0,
                                  .senderPort = sender.port,
                                  .ack = respond(datagram)};
        mCommands.push_back(command);
        const std::shared_ptr<Script> script = mScript; // called without the lock
        lock.unlock();
        if (mSilent) {
            return;
        }
        answers = script ? (*script)(command) : std::vector{FakeAnswer{command.ack}};
    }
    for (const FakeAnswer& answer : answers) {
        if (!answer.datagram.empty()) {
            send(answer, sender);
        }
    }
}

void FakeDevice::send(const FakeAnswer& answer, Endpoint destination)
{
    std::this_thread::sleep_for(answer.delay);
    UdpSocket* from = &mSocket;
    if (answer.fromOtherPort) {
        from = &mOtherPortSocket;
    } else if (answer.fromOtherAddress) {
        from = &mOtherAddressSocket;
    }
    if (answer.broadcast) {
        destination.address = kLoopbackBroadcast;
    }
    from->send(answer.datagram, destination);
}

Bytes FakeDevice::respond(const Bytes& command)
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

Bytes FakeDevice::readRegisters(const Bytes& command)
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

Bytes FakeDevice::writeRegisters(const Bytes& command)
{
    const std::uint32_t address = u32(command, kHeader);
    if (!mRegisters.contains(address)) {
        return ackFor(command, 0x8003, {0, 0, 0, 0});
    }
    mRegisters[address] = u32(command, kHeader + 4);
    return ackFor(command, 0, {0, 0, 0, 1});
}

Bytes FakeDevice::readMemory(const Bytes& command)
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

Bytes FakeDevice::writeMemory(const Bytes& command)
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

Bytes FakeDevice::discoveryAck(const Bytes& command)
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
