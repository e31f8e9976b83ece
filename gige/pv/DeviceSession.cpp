#include "DeviceSession.h"

#include "BootstrapRegisters.h"
#include "DeviceDescription.h"
#include "OpenStreams.h"
#include "PacketSizeNegotiation.h"
#include "Reasons.h"
#include "StackLog.h"
#include "StatusTranslations.h"
#include "UdpSocket.h"

#include <algorithm>
#include <chrono>
#include <string>
#include <utility>
#include <vector>

using gige::control::DeviceConnection;
using gige::control::PacketSizeLimits;
using gige::control::StreamChannel;
using gige::genapi::IntegerNode;
using gige::genapi::NodeMap;

namespace
{

/// Stream channels of a device: the register layout has room for 512.
constexpr std::uint32_t kStreamChannels = 512;
/// Bytes: longer than any datagram, so that a wrong size shows.
constexpr std::size_t kDatagramRoom = 65536;

std::uint32_t limitOr(gige::genapi::Result<std::int64_t> limit, std::uint32_t fallback)
{
    const bool usable =
        limit && *limit > 0 && *limit <= std::int64_t{gige::control::kLargestPacketSize};
    return usable ? static_cast<std::uint32_t>(*limit) : fallback;
}

PacketSizeLimits packetSizeLimits(const gige::net::NetworkInterface& reaching, const NodeMap& nodes)
{
    PacketSizeLimits limits{.interfaceMtu = reaching.mtu, .loopback = reaching.isLoopback};
    if (auto* feature = nodes.find<IntegerNode>("GevSCPSPacketSize")) {
        limits.minimum = limitOr(feature->minimum(), limits.minimum);
        limits.maximum = limitOr(feature->maximum(), limits.maximum);
        limits.increment = limitOr(feature->increment(), limits.increment);
    }
    return limits;
}

/// Waits for a datagram of one length from the device, dropping all others.
bool awaitTestPacket(gige::net::UdpSocket& socket, gige::net::Ipv4Address device,
                     std::uint32_t udpPayload, std::chrono::milliseconds timeout)
{
    using Clock = std::chrono::steady_clock;
    std::vector<std::uint8_t> room(kDatagramRoom);
    const auto deadline = Clock::now() + timeout;
    for (auto now = Clock::now(); now < deadline; now = Clock::now()) {
        const auto left = std::chrono::duration_cast<std::chrono::microseconds>(deadline - now);
        const auto received = socket.receive(room, left);
        if (received.status != gige::net::ReceiveStatus::Data) {
            return false;
        }
        if (received.source.address == device && received.size == udpPayload) {
            return true;
        }
    }
    return false;
}

/// @param size  bytes, as the device has it in the end
void saySmallPackets(const gige::control::DeviceAddress& camera, std::uint32_t size,
                     const PacketSizeLimits& limits, bool testPacketCame)
{
    const std::string ip = gige::net::toText(camera.ip);
    const std::uint32_t wanted = std::min(camera.nic.mtu, gige::log::kJumboPacket);
    if (!testPacketCame) {
        gige::log::say(ip, gige::log::noTestPacket(size));
    } else if (size + limits.increment <= wanted) {
        gige::log::say(ip, gige::log::smallPackets(size, camera.nic.mtu));
    }
}

} // namespace

DeviceSession::DeviceSession(std::unique_ptr<DeviceConnection> connection)
    : mConnection(std::move(connection))
{
}

PvResult DeviceSession::open(const gige::control::DeviceAddress& address, PvAccessType access,
                             const gige::control::LinkSettings& settings,
                             std::function<void()> linkLost,
                             std::shared_ptr<DeviceSession>& session)
{
    auto connection = DeviceConnection::open(
        address, static_cast<gige::control::AccessType>(access), settings, std::move(linkLost));
    if (!connection) {
        return toPvResult(connection.status());
    }
    const std::shared_ptr<DeviceSession> opened(new DeviceSession(std::move(*connection)));
    if (!opened->loadFeatures()) {
        return PvResult::Code::GenericError;
    }
    session = opened;
    return PvResult::Code::Ok;
}

bool DeviceSession::loadFeatures()
{
    const auto opening = mConnection->opening();
    const auto& traits = mConnection->registers().traits();
    return readDescription(mConnection->registers(), [&](const std::string& xml) {
        auto loaded =
            NodeMap::load(xml, mPort,
                          {.fourBytesAsRegister = std::nullopt,
                           .hasWriteMemory = traits.has(gige::wire::kCapabilityWriteMemory),
                           .isBigEndian = traits.bigEndianRegisters});
        if (!loaded) {
            return false;
        }
        mNodes = *std::move(loaded);
        mFeatures = std::make_unique<GenParameterArray>(
            *mNodes, [this] { return isConnected(); }, static_cast<CommandObserver*>(this));
        return true;
    });
}

PvResult DeviceSession::negotiatePacketSize(std::uint32_t channel, std::uint32_t defaultSize)
{
    if (channel >= kStreamChannels) {
        return PvResult::Code::InvalidParameter;
    }
    const auto& address = mConnection->address();
    auto socket = gige::net::UdpSocket::open({.address = address.nic.address, .port = 0});
    if (!socket) {
        return PvResult::Code::NetworkError;
    }
    StreamChannel stream = streamChannel(channel);
    const auto opened =
        stream.setDestination(socket->localEndpoint().address, socket->localEndpoint().port);
    if (opened != gige::control::Status::Ok) {
        return toPvResult(opened);
    }
    bool testPacketCame = false;
    const auto wait = [&](std::uint32_t udpPayload, std::chrono::milliseconds timeout) {
        const bool comes = awaitTestPacket(*socket, address.ip, udpPayload, timeout);
        testPacketCame = testPacketCame || comes;
        return comes;
    };
    const PacketSizeLimits limits = packetSizeLimits(address.nic, *mNodes);
    const auto size = gige::control::negotiatePacketSize(stream, limits, defaultSize, wait);
    if (size) {
        saySmallPackets(address, *size, limits, testPacketCame);
    }
    const auto closed = stream.resetDestination();
    mNodes->invalidate(); // registers were written past the feature tree
    return toPvResult(size ? closed : size.status());
}

PvResult DeviceSession::setStreamDestination(const gige::net::Endpoint& destination,
                                             std::uint32_t channel)
{
    if (channel >= kStreamChannels) {
        return PvResult::Code::InvalidParameter;
    }
    StreamChannel stream = streamChannel(channel);
    const auto result = stream.setDestination(destination.address, destination.port);
    mNodes->invalidate();
    if (result == gige::control::Status::Ok) {
        const bool resends = registers().traits().has(gige::wire::kCapabilityPacketResend);
        OpenStreams::instance().setSource(
            destination, {.port = stream.sourcePort().valueOr(0), .resends = resends});
        const std::lock_guard lock(mDestinationLock);
        mDestination = destination;
    }
    return toPvResult(result);
}

PvResult DeviceSession::resetStreamDestination(std::uint32_t channel)
{
    if (channel >= kStreamChannels) {
        return PvResult::Code::InvalidParameter;
    }
    mConnection->hurry(); // a host closes the stream when it leaves
    const auto result = streamChannel(channel).resetDestination();
    mNodes->invalidate();
    return toPvResult(result);
}

void DeviceSession::beforeCommand(std::string_view name)
{
    // Before, since the first packet may be there before the command is acknowledged.
    if (name == "AcquisitionStart") {
        setAcquiring(true);
    } else if (name == "AcquisitionStop") {
        setAcquiring(false);
    }
}

void DeviceSession::afterFailedCommand(std::string_view name)
{
    if (name == "AcquisitionStart") {
        setAcquiring(false);
    }
}

void DeviceSession::setAcquiring(bool acquiring)
{
    gige::net::Endpoint destination;
    {
        const std::lock_guard lock(mDestinationLock);
        destination = mDestination;
    }
    OpenStreams::instance().setAcquiring(destination, acquiring);
}
