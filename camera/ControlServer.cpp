#include "ControlServer.h"

#include "BootstrapRegisters.h"
#include "ByteOrder.h"

#include <algorithm>
#include <thread>
#include <utility>

namespace camera
{

using namespace gige::wire;

namespace
{

constexpr std::uint32_t kWord = 4; // bytes
// The host must know well before its own time limit that an answer takes longer.
constexpr std::chrono::milliseconds kPendingFrom{100};

bool isAligned(std::uint32_t value)
{
    return value % kWord == 0;
}

template <typename Payload>
std::vector<std::uint8_t> bytesOf(const Payload& payload)
{
    const auto encoded = encode(payload);
    return {encoded.begin(), encoded.end()};
}

} // namespace

ControlServer::ControlServer(Bootstrap& bootstrap, RegisterMap& registers, Device& device,
                             Faults& faults, CameraLog& log, StreamCommands stream,
                             std::function<void(const Answer&, const Endpoint&)> send)
    : mBootstrap(bootstrap),
      mRegisters(registers),
      mDevice(device),
      mFaults(faults),
      mLog(log),
      mStream(std::move(stream)),
      mSend(std::move(send))
{
}

void ControlServer::execute(std::span<const std::uint8_t> datagram, const Endpoint& from)
{
    const auto command = decodeCommand(datagram);
    if (mFaults.isSilent() || !command || command->header.requestId == 0) {
        return;
    }
    switch (command->header.command) {
    case GvcpCommand::Discovery:
        answerDiscovery(*command, from);
        return;
    case GvcpCommand::ForceIp:
        forceIp(*command, from);
        return;
    case GvcpCommand::PacketResend:
        resend(*command, from);
        return;
    default:
        break;
    }
    mBootstrap.privilege().heard(from, mDevice.now());
    if (command->header.requestId == mLastId && from == mLastHost) {
        ++mLog.repeats;
        if ((command->header.flags & kGvcpAckRequired) != 0) {
            mSend(mLastAnswer, from);
        }
        return;
    }
    ++mLog.commands;
    mCurrentHost = from;
    mCurrentId = command->header.requestId;
    answer(*command, perform(*command, from), from);
    if (mBootstrap.takeTestRequest() && !mFaults.ignoresTestPackets()) {
        mStream.sendTestPacket(mDevice.channel());
    }
}

void ControlServer::executeBroadcast(std::span<const std::uint8_t> datagram, const Endpoint& from)
{
    const auto command = decodeCommand(datagram);
    if (mFaults.isSilent() || !command) {
        return;
    }
    if (command->header.command == GvcpCommand::Discovery) {
        answerDiscovery(*command, from);
    } else if (command->header.command == GvcpCommand::ForceIp) {
        forceIp(*command, from);
    }
}

void ControlServer::checkHeartbeat()
{
    if (mBootstrap.heartbeatEnabled() &&
        mBootstrap.privilege().isExpired(mDevice.now(), mBootstrap.heartbeatTimeout())) {
        mBootstrap.dropHost();
        mLastId = 0;
    }
}

ControlServer::Result ControlServer::perform(const Command& command, const Endpoint& from)
{
    switch (command.header.command) {
    case GvcpCommand::ReadRegister:
        return readRegisters(command, from);
    case GvcpCommand::WriteRegister:
        return writeRegisters(command, from);
    case GvcpCommand::ReadMemory:
        return readMemory(command, from);
    case GvcpCommand::WriteMemory:
        return writeMemory(command, from);
    default:
        return {.status = Status::NotImplemented};
    }
}

ControlServer::Result ControlServer::readRegisters(const Command& command, const Endpoint& from)
{
    const auto request = decodeReadRegister(command.payload);
    if (!request) {
        return {.status = Status::InvalidParameter};
    }
    Result result;
    for (const std::uint32_t address : request->addresses) {
        std::array<std::uint8_t, kWord> bytes{};
        result.status = isAligned(address) ? readBytes(address, bytes, from) : Status::BadAlignment;
        if (result.status != Status::Success) {
            break;
        }
        result.payload.insert(result.payload.end(), bytes.begin(), bytes.end());
    }
    return result;
}

ControlServer::Result ControlServer::writeRegisters(const Command& command, const Endpoint& from)
{
    const auto request = decodeWriteRegister(command.payload);
    if (!request) {
        return {.status = Status::InvalidParameter};
    }
    Result result;
    std::uint16_t index = 0;
    for (const RegisterValue& write : request->writes) {
        std::array<std::uint8_t, kWord> bytes{};
        putU32(bytes.data(), write.value);
        std::size_t written = 0;
        result.status = isAligned(write.address) ? writeBytes(write.address, bytes, from, written)
                                                 : Status::BadAlignment;
        if (result.status != Status::Success) {
            break;
        }
        ++index;
    }
    result.payload = bytesOf(WriteAck{.index = index});
    return result;
}

ControlServer::Result ControlServer::readMemory(const Command& command, const Endpoint& from)
{
    const auto request = decodeReadMemory(command.payload);
    if (!request || request->count == 0 || request->count > kMaxMemoryBytes) {
        return {.status = Status::InvalidParameter};
    }
    if (!isAligned(request->address) || !isAligned(request->count)) {
        return {.status = Status::BadAlignment};
    }
    std::vector<std::uint8_t> bytes(request->count);
    Result result{.status = readBytes(request->address, bytes, from)};
    if (result.status == Status::Success) {
        result.payload = bytesOf(MemoryBlock{.address = request->address, .data = bytes});
    }
    return result;
}

ControlServer::Result ControlServer::writeMemory(const Command& command, const Endpoint& from)
{
    const auto request = decodeMemoryBlock(command.payload);
    if (!request || request->data.size() > kMaxMemoryBytes) {
        return {.status = Status::InvalidParameter};
    }
    if (!isAligned(request->address) || request->data.size() % kWord != 0) {
        return {.status = Status::BadAlignment};
    }
    std::size_t written = 0;
    Result result{.status = writeBytes(request->address, request->data, from, written)};
    result.payload = bytesOf(WriteAck{.index = static_cast<std::uint16_t>(written)});
    return result;
}

GvcpStatus ControlServer::readBytes(std::uint32_t address, std::span<std::uint8_t> bytes,
                                    const Endpoint& from)
{
    // Anyone may look whether the camera is taken.
    if (address != kRegControlPrivilege && !mBootstrap.privilege().mayRead(from)) {
        return Status::AccessDenied;
    }
    const auto feature = RegisterMap::featureAt(address);
    const auto fault = feature ? mFaults.onAccess(*feature, false) : std::nullopt;
    if (fault && fault->kind == AccessFaultKind::Reject) {
        return fault->status;
    }
    if (fault) {
        suffer(*fault);
    }
    const Status status = mRegisters.read(address, bytes);
    if (fault && fault->kind == AccessFaultKind::Corrupt) {
        putU32(bytes.data(), fault->value);
    }
    return status;
}

GvcpStatus ControlServer::writeBytes(std::uint32_t address, std::span<const std::uint8_t> bytes,
                                     const Endpoint& from, std::size_t& written)
{
    if (!mayWrite(address, from)) {
        return Status::AccessDenied;
    }
    const auto feature = RegisterMap::featureAt(address);
    const auto fault = feature ? mFaults.onAccess(*feature, true) : std::nullopt;
    Status status = Status::Success;
    if (fault && fault->kind == AccessFaultKind::Reject) {
        status = fault->status;
    } else {
        if (fault) {
            suffer(*fault);
        }
        status = mRegisters.write(address, bytes, from, written);
    }
    if (feature) {
        mLog.addWrite({.feature = *feature, .value = getU32(bytes.data()), .status = status});
    }
    return status;
}

bool ControlServer::mayWrite(std::uint32_t address, const Endpoint& from)
{
    const ControlPrivilege& privilege = mBootstrap.privilege();
    return privilege.mayWrite(from) || address == kRegControlPrivilege;
}

void ControlServer::resend(const Command& command, const Endpoint& from)
{
    const auto request = decodePacketResend(command.header.flags, command.payload);
    const auto owner = mBootstrap.privilege().owner();
    if (request && owner && owner->address == from.address) {
        ++mLog.resendRequests;
        mStream.resend(*request);
    }
}

void ControlServer::answerDiscovery(const Command& command, const Endpoint& from)
{
    const auto payload = encode(mBootstrap.identity());
    mSend(
        ackDatagram(Status::Success, GvcpCommand::DiscoveryAck, command.header.requestId, payload),
        from);
}

void ControlServer::forceIp(const Command& command, const Endpoint& from)
{
    const auto request = decodeForceIp(command.payload);
    const DiscoveryAck self = mBootstrap.identity();
    // The address belongs to this machine: it can be confirmed, but not changed.
    const bool isMine = request && request->mac == self.mac && request->address == self.address;
    if (isMine && (command.header.flags & kGvcpAckRequired) != 0) {
        mSend(ackDatagram(Status::Success, GvcpCommand::ForceIpAck, command.header.requestId),
              from);
    }
}

void ControlServer::answer(const Command& command, const Result& result, const Endpoint& from)
{
    mLastAnswer = ackDatagram(result.status, ackOf(command.header.command),
                              command.header.requestId, result.payload);
    mLastHost = from;
    mLastId = command.header.requestId;
    std::this_thread::sleep_for(std::exchange(mAckDelay, std::chrono::milliseconds(0)));
    const bool drop = std::exchange(mDropAck, false);
    const bool twice = std::exchange(mDoubleAck, false);
    if (drop || (command.header.flags & kGvcpAckRequired) == 0) {
        return;
    }
    mSend(mLastAnswer, from);
    if (twice) {
        mSend(mLastAnswer, from);
    }
}

void ControlServer::suffer(const AccessFault& fault)
{
    switch (fault.kind) {
    case AccessFaultKind::Delay:
        if (fault.delay >= kPendingFrom && mBootstrap.pendingAckEnabled()) {
            sendPendingAck(fault.delay);
        }
        std::this_thread::sleep_for(fault.delay);
        break;
    case AccessFaultKind::DropAck:
        mDropAck = true;
        break;
    case AccessFaultKind::DoubleAck:
        mDoubleAck = true;
        break;
    case AccessFaultKind::LateAck:
        mAckDelay = fault.delay;
        break;
    case AccessFaultKind::Reject:
    case AccessFaultKind::Corrupt:
        break;
    }
}

void ControlServer::sendPendingAck(std::chrono::milliseconds time)
{
    // Some more than it will take.
    const PendingAck pending{.timeToCompletion = time + kPendingFrom};
    mSend(ackDatagram(Status::Success, GvcpCommand::PendingAck, mCurrentId, bytesOf(pending)),
          mCurrentHost);
}

} // namespace camera
