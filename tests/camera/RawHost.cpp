#include "RawHost.h"

#include <array>
#include <cstdio>
#include <stdexcept>
#include <string_view>

namespace camera
{
namespace
{

using namespace gige::net;

constexpr std::uint16_t kPort = 3956;
constexpr std::uint16_t kReadRegister = 0x0080;
constexpr std::uint16_t kWriteRegister = 0x0082;
constexpr std::uint16_t kReadMemory = 0x0084;
constexpr std::uint16_t kWriteMemory = 0x0086;
constexpr std::uint16_t kPacketResend = 0x0040;
constexpr std::uint16_t kNoAnswer = 0xFFFF;
constexpr std::size_t kIpAndUdp = 28;
constexpr std::size_t kStreamHeader = 8;

void put(Datagram& bytes, std::uint32_t value, int count)
{
    for (int shift = 8 * (count - 1); shift >= 0; shift -= 8) {
        bytes.push_back(static_cast<std::uint8_t>(value >> shift));
    }
}

std::uint32_t get(const Datagram& bytes, std::size_t at, int count)
{
    std::uint32_t value = 0;
    for (int i = 0; i < count; ++i) {
        value = (value << 8) | bytes.at(at + static_cast<std::size_t>(i));
    }
    return value;
}

Datagram command(std::uint8_t flags, std::uint16_t code, std::uint16_t id, const Datagram& payload)
{
    Datagram bytes{0x42, flags};
    put(bytes, code, 2);
    put(bytes, static_cast<std::uint32_t>(payload.size()), 2);
    put(bytes, id, 2);
    bytes.insert(bytes.end(), payload.begin(), payload.end());
    return bytes;
}

UdpSocket openSocket()
{
    auto socket = UdpSocket::open({{0x7F000001}, 0});
    if (!socket) {
        throw std::runtime_error("no socket on 127.0.0.1");
    }
    return std::move(*socket);
}

Datagram receive(UdpSocket& socket, std::chrono::milliseconds patience)
{
    std::array<std::uint8_t, 65536> buffer{};
    const Received received = socket.receive(buffer, patience);
    const std::size_t size = received.status == ReceiveStatus::Data ? received.size : 0;
    return {buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(size)};
}

} // namespace

Datagram fromHex(const std::string& text)
{
    Datagram bytes;
    std::string digits;
    for (const char character : text) {
        if (character != ' ') {
            digits += character;
        }
    }
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        bytes.push_back(static_cast<std::uint8_t>(std::stoi(digits.substr(i, 2), nullptr, 16)));
    }
    return bytes;
}

std::string toHex(const Datagram& bytes)
{
    std::string text;
    for (const std::uint8_t byte : bytes) {
        std::array<char, 3> digits{};
        std::snprintf(digits.data(), digits.size(), "%02X", byte);
        text += digits.data();
    }
    return text;
}

RawHost::RawHost(const std::string& cameraAddress)
    : mCamera{parseIpv4(cameraAddress).value(), kPort},
      mControl(openSocket()),
      mStream(openSocket())
{
    mStream.setReceiveBuffer(std::size_t{16} << 20);
}

void RawHost::send(const Datagram& bytes)
{
    mControl.send(bytes, mCamera);
}

Datagram RawHost::ask(const Datagram& bytes, std::chrono::milliseconds patience)
{
    send(bytes);
    return listen(patience);
}

Datagram RawHost::listen(std::chrono::milliseconds patience)
{
    return receive(mControl, patience);
}

std::optional<std::uint32_t> RawHost::readRegister(std::uint32_t address)
{
    Datagram payload;
    put(payload, address, 4);
    const Datagram answer = ask(command(1, kReadRegister, mNextId++, payload));
    mLastStatus = answer.size() < 8 ? kNoAnswer : static_cast<std::uint16_t>(get(answer, 0, 2));
    return answer.size() == 12 ? std::optional{get(answer, 8, 4)} : std::nullopt;
}

std::uint16_t RawHost::writeRegister(std::uint32_t address, std::uint32_t value)
{
    Datagram payload;
    put(payload, address, 4);
    put(payload, value, 4);
    const Datagram answer = ask(command(1, kWriteRegister, mNextId++, payload));
    mLastStatus = answer.size() < 8 ? kNoAnswer : static_cast<std::uint16_t>(get(answer, 0, 2));
    return mLastStatus;
}

Datagram RawHost::readMemory(std::uint32_t address, std::uint16_t count)
{
    Datagram payload;
    put(payload, address, 4);
    put(payload, count, 4);
    const Datagram answer = ask(command(1, kReadMemory, mNextId++, payload));
    mLastStatus = answer.size() < 8 ? kNoAnswer : static_cast<std::uint16_t>(get(answer, 0, 2));
    return answer.size() < 12 ? Datagram{} : Datagram(answer.begin() + 12, answer.end());
}

std::uint16_t RawHost::writeMemory(std::uint32_t address, const Datagram& bytes)
{
    Datagram payload;
    put(payload, address, 4);
    payload.insert(payload.end(), bytes.begin(), bytes.end());
    const Datagram answer = ask(command(1, kWriteMemory, mNextId++, payload));
    mLastStatus = answer.size() < 8 ? kNoAnswer : static_cast<std::uint16_t>(get(answer, 0, 2));
    return mLastStatus;
}

std::uint32_t RawHost::read(FeatureId feature)
{
    const Feature& row = featureOf(feature);
    const auto value = readRegister(registerOf(row));
    if (!value) {
        throw std::runtime_error(std::string(row.name) + " cannot be read");
    }
    return *value;
}

std::uint16_t RawHost::write(FeatureId feature, std::uint32_t value)
{
    return writeRegister(registerOf(featureOf(feature)), value);
}

void RawHost::takeControl()
{
    if (writeRegister(0x0A00, 2) != 0) {
        throw std::runtime_error("the camera is taken");
    }
}

void RawHost::openStream(std::uint32_t packetSize)
{
    mPacketSize = packetSize;
    takeControl();
    writeRegister(0x0D18, 0x7F000001);
    writeRegister(0x0D04, packetSize);
    writeRegister(0x0D00, mStream.localEndpoint().port);
}

Datagram RawHost::receivePacket(std::chrono::milliseconds patience)
{
    return receive(mStream, patience);
}

ReceivedBlock RawHost::receiveBlock(std::chrono::milliseconds patience, std::size_t mostPackets)
{
    const std::size_t perPacket = mPacketSize - kIpAndUdp - kStreamHeader;
    ReceivedBlock block;
    while (!block.hasTrailer && block.order.size() < mostPackets) {
        const Datagram packet = receivePacket(patience);
        if (packet.size() < kStreamHeader) {
            return block;
        }
        const std::uint32_t id = get(packet, 5, 3);
        const std::uint32_t format = packet[4] & 0x0FU;
        block.blockId = static_cast<std::uint16_t>(get(packet, 2, 2));
        block.order.push_back(id);
        if (format == 1) {
            block.pixelFormat = get(packet, 20, 4);
            block.width = get(packet, 24, 4);
            block.height = get(packet, 28, 4);
            block.image.resize(std::size_t{block.width} * block.height);
        } else if (format == 3) {
            const std::size_t at = (id - 1) * perPacket;
            for (std::size_t i = kStreamHeader; i < packet.size(); ++i) {
                block.image.at(at + i - kStreamHeader) = packet[i];
            }
        }
        block.hasTrailer = format == 2;
        block.packets[id] = packet;
    }
    return block;
}

void RawHost::askResend(std::uint16_t blockId, std::uint32_t first, std::uint32_t last)
{
    Datagram payload;
    put(payload, 0, 2);
    put(payload, blockId, 2);
    put(payload, first, 4);
    put(payload, last, 4);
    send(command(0, kPacketResend, mNextId++, payload));
}

void RawHost::startPlayback()
{
    write(FeatureId::AcquisitionSource, 1);
    execute(FeatureId::AcquisitionStart);
}

std::uint32_t RawHost::writeSerial(const std::string& text)
{
    Datagram bytes(text.begin(), text.end());
    bytes.resize((bytes.size() + 3) / 4 * 4);
    writeMemory(0x00040000, bytes);
    write(FeatureId::SerialPort0TransmitLength, static_cast<std::uint32_t>(text.size()));
    return read(FeatureId::SerialPort0TransmitLength);
}

} // namespace camera
