#include "VirtualCamera.h"

#include "Bootstrap.h"
#include "ControlServer.h"
#include "DescriptionXml.h"
#include "Device.h"
#include "FrameRenderer.h"
#include "NetworkInterface.h"
#include "RegisterMap.h"
#include "Streamer.h"
#include "ZipFile.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <thread>

namespace camera
{

using namespace gige::net;
using gige::wire::kGvcpPort;

namespace
{

constexpr std::chrono::milliseconds kHeartbeatStep{100};
constexpr std::size_t kControlBuffer = 1024;         // bytes: longer datagrams are not commands
constexpr std::size_t kSendBuffer = 8 * 1024 * 1024; // bytes
constexpr std::size_t kDescriptionUrlSize = 64;

struct DescriptionFile {
    std::string url;
    std::vector<std::uint8_t> bytes;
};

DescriptionFile describe(const CameraOptions& options)
{
    const bool zipped = options.description != DescriptionForm::Xml;
    const std::string xml = descriptionXml(options);
    DescriptionFile file;
    if (zipped) {
        file.bytes =
            zipFile("telvo-camera.xml", xml, options.description == DescriptionForm::DeflatedZip);
    } else {
        file.bytes.assign(xml.begin(), xml.end());
    }
    std::array<char, kDescriptionUrlSize> url{};
    std::snprintf(url.data(), url.size(), "Local:telvo-camera.%s;%X;%zX", zipped ? "zip" : "xml",
                  kDescriptionFile, file.bytes.size());
    file.url = url.data();
    return file;
}

std::string reason(const std::error_code& error, const Endpoint& endpoint)
{
    if (error == std::errc::address_in_use) {
        return "address " + toText(endpoint.address) + " is taken by another camera";
    }
    return "cannot listen on " + toText(endpoint) + ": " + error.message();
}

NetworkInterface interfaceOf(Ipv4Address address)
{
    for (const NetworkInterface& candidate : networkInterfaces()) {
        if (candidate.isUp && candidate.contains(address)) {
            return candidate;
        }
    }
    return {.address = address, .netmask = {0xFFFFFFFF}};
}

/// False for the addresses of none and of many.
bool isOneDevices(Ipv4Address address, const NetworkInterface& network)
{
    constexpr std::uint32_t kFirstMulticast = 0xE0000000; // 224.0.0.0; broadcast lies behind, too
    const bool broadcast = address == network.broadcast() && address != network.address;
    return address != kAnyAddress && address.value < kFirstMulticast && !broadcast;
}

std::string defaultSerial(const std::string& address)
{
    constexpr std::uint32_t kLastOctets = 0x00FFFFFF;
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "VC%06X",
                  parseIpv4(address).value_or(Ipv4Address{}).value & kLastOctets);
    return text.data();
}

} // namespace

struct VirtualCamera::Running {
    Running(VirtualCamera& camera, const NetworkIdentity& identity, NetworkInterface home,
            DescriptionFile description, UdpSocket control, UdpSocket stream)
        : network(std::move(home)),
          device(camera.mOptions, camera.mFaults),
          bootstrap(camera.mOptions, identity, description.url, device, camera.mFaults),
          registers(bootstrap, device, std::move(description.bytes)),
          controlSocket(std::move(control)),
          streamSocket(std::move(stream)),
          streamer(streamSocket, camera.mOptions, device, camera.mFaults, camera.mLog),
          server(
              bootstrap, registers, device, camera.mFaults, camera.mLog,
              {.sendTestPacket = [this](const auto& channel) { streamer.sendTestPacket(channel); },
               .resend = [this](const auto& request) { streamer.resend(request); }},
              [this](const auto& answer, const auto& host) { controlSocket.send(answer, host); })
    {
        bootstrap.setSourcePort(streamSocket.localEndpoint().port);
        streamSocket.setSendBuffer(kSendBuffer);
    }

    ~Running()
    {
        waker.wake();
        streamer.stop();
        for (std::thread& thread : threads) {
            thread.join();
        }
    }

    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

    void begin()
    {
        threads.emplace_back([this] { listenForCommands(); });
        threads.emplace_back([this] { streamer.run(); });
        for (UdpSocket& socket : broadcastSockets) {
            threads.emplace_back([this, &socket] { listenForBroadcasts(socket); });
        }
    }

    void listenForCommands()
    {
        std::array<std::uint8_t, kControlBuffer> buffer{};
        bool moreMayWait = false;
        while (true) {
            const auto patience = moreMayWait ? std::chrono::milliseconds(0) : kHeartbeatStep;
            const Received received = controlSocket.receive(buffer, patience, &waker);
            if (received.status == ReceiveStatus::Woken) {
                return;
            }
            moreMayWait = received.status == ReceiveStatus::Data;
            if (moreMayWait) {
                server.execute(std::span(buffer).first(received.size), received.source);
            } else {
                // Only with an empty queue: a command that waits counts as heard in time.
                server.checkHeartbeat();
            }
        }
    }

    /// The limited broadcast is heard from every interface, but only hosts on this machine's
    /// loopback reach a camera there.
    [[nodiscard]] bool isNear(const Endpoint& host) const
    {
        return !network.isLoopback || network.contains(host.address);
    }

    void listenForBroadcasts(UdpSocket& socket)
    {
        std::array<std::uint8_t, kControlBuffer> buffer{};
        while (true) {
            const Received received = socket.receive(buffer, std::nullopt, &waker);
            if (received.status == ReceiveStatus::Woken) {
                return;
            }
            if (received.status == ReceiveStatus::Data && isNear(received.source)) {
                server.executeBroadcast(std::span(buffer).first(received.size), received.source);
            }
        }
    }

    const NetworkInterface network;
    Device device;
    Bootstrap bootstrap;
    RegisterMap registers;
    UdpSocket controlSocket;
    UdpSocket streamSocket;
    std::vector<UdpSocket> broadcastSockets;
    Streamer streamer;
    ControlServer server;
    Waker waker;
    std::vector<std::thread> threads;
};

VirtualCamera::VirtualCamera(CameraOptions options) : mOptions(std::move(options))
{
    if (mOptions.mac.empty()) {
        mOptions.mac = defaultMac(mOptions.address);
    }
    if (mOptions.serial.empty()) {
        mOptions.serial = defaultSerial(mOptions.address);
    }
}

VirtualCamera::~VirtualCamera()
{
    stop();
}

std::optional<std::string> VirtualCamera::start()
{
    const auto address = parseIpv4(mOptions.address);
    if (!address) {
        return "'" + mOptions.address + "' is not an IPv4 address";
    }
    const auto mac = gige::wire::parseMac(mOptions.mac);
    if (!mac) {
        return "'" + mOptions.mac + "' is not a MAC address";
    }
    const NetworkInterface network = interfaceOf(*address);
    if (!isOneDevices(*address, network)) {
        return "'" + mOptions.address + "' is not the address of one device";
    }
    std::error_code error;
    const Endpoint here{*address, kGvcpPort};
    auto control = UdpSocket::open(here, {}, error);
    if (!control) {
        return reason(error, here);
    }
    const Endpoint anyPort{*address, 0};
    auto stream = UdpSocket::open(anyPort, {}, error);
    if (!stream) {
        return reason(error, anyPort);
    }
    mRunning = std::make_unique<Running>(
        *this, NetworkIdentity{.mac = *mac, .address = *address, .netmask = network.netmask},
        network, describe(mOptions), std::move(*control), std::move(*stream));
    // Without these the camera is still found under its own address.
    for (const Ipv4Address broadcast : {network.broadcast(), kLimitedBroadcast}) {
        auto socket = UdpSocket::open({broadcast, kGvcpPort}, {.reuseAddress = true});
        if (socket) {
            mRunning->broadcastSockets.push_back(std::move(*socket));
        }
    }
    mRunning->begin();
    return std::nullopt;
}

void VirtualCamera::stop()
{
    mRunning.reset();
}

std::string VirtualCamera::macText() const
{
    return mOptions.mac;
}

bool VirtualCamera::hearsBroadcasts() const
{
    return mRunning && !mRunning->broadcastSockets.empty();
}

bool VirtualCamera::trigger()
{
    return mRunning->device.trigger();
}

bool VirtualCamera::setTriggerInput(bool high)
{
    return mRunning->device.setTriggerInput(high);
}

void VirtualCamera::occupyFlash(std::chrono::milliseconds time)
{
    mRunning->device.occupyFlash(time);
}

std::int64_t VirtualCamera::value(FeatureId feature) const
{
    return mRunning->device.read(feature);
}

std::optional<FrameStamp> VirtualCamera::recordedFrame(std::uint32_t sequence,
                                                       std::uint32_t index) const
{
    return mRunning->device.recordedFrame(sequence, index);
}

SceneView VirtualCamera::recordedView() const
{
    return mRunning->device.recordedView();
}

SceneView VirtualCamera::liveView() const
{
    return mRunning->device.liveView();
}

std::vector<std::uint8_t> VirtualCamera::recordedBytes(std::uint32_t sequence,
                                                       std::uint32_t index) const
{
    const auto stamp = recordedFrame(sequence, index);
    return stamp ? renderFrame(recordedView(), *stamp) : std::vector<std::uint8_t>{};
}

std::string defaultMac(const std::string& address)
{
    const std::uint32_t value = parseIpv4(address).value_or(Ipv4Address{}).value;
    return toText(gige::wire::MacAddress{{0x02, 0x54, 0x45, static_cast<std::uint8_t>(value >> 16),
                                          static_cast<std::uint8_t>(value >> 8),
                                          static_cast<std::uint8_t>(value)}});
}

} // namespace camera
