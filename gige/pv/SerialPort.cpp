#include "SerialPort.h"

#include <algorithm>
#include <thread>

using gige::genapi::CommandNode;
using gige::genapi::IntegerNode;
using gige::genapi::NodeMap;
using gige::genapi::ReadFrom;
using gige::genapi::RegisterNode;
using gige::genapi::Status;

namespace
{

/// Between two looks at the receive queue: a few round trips, so that the link is not flooded.
constexpr std::chrono::milliseconds kPollPause{2};

} // namespace

std::optional<SerialPort> SerialPort::find(const NodeMap& nodes)
{
    const Nodes found{
        .transmitBuffer = nodes.find<RegisterNode>("SerialPort0TransmitBuffer"),
        .transmitLength = nodes.find<IntegerNode>("SerialPort0TransmitLength"),
        .receiveLength = nodes.find<IntegerNode>("SerialPort0ReceiveLength"),
        .receiveBuffer = nodes.find<RegisterNode>("SerialPort0ReceiveBuffer"),
        .receiveConsume = nodes.find<IntegerNode>("SerialPort0ReceiveConsume"),
        .receiveFlush = nodes.find<CommandNode>("SerialPort0ReceiveFlush"),
    };
    const bool complete = found.transmitBuffer != nullptr && found.transmitLength != nullptr &&
                          found.receiveLength != nullptr && found.receiveBuffer != nullptr &&
                          found.receiveConsume != nullptr && found.receiveFlush != nullptr;
    return complete ? std::optional(SerialPort(found)) : std::nullopt;
}

Status SerialPort::write(std::span<const std::uint8_t> data, std::size_t& written)
{
    const std::lock_guard lock(mLock);
    written = 0;
    const auto pieceLength = mNodes.transmitBuffer->length();
    if (!pieceLength || *pieceLength == 0) {
        return pieceLength ? Status::RegisterTooLarge : pieceLength.status();
    }
    while (written < data.size()) {
        const auto piece = data.subspan(written, std::min(*pieceLength, data.size() - written));
        std::size_t accepted = 0;
        const Status status = writePiece(piece, accepted);
        written += accepted;
        if (status != Status::Ok || accepted < piece.size()) {
            return status;
        }
    }
    return Status::Ok;
}

Status SerialPort::writePiece(std::span<const std::uint8_t> piece, std::size_t& accepted)
{
    if (const Status status = mNodes.transmitBuffer->write(piece); status != Status::Ok) {
        return status;
    }
    const auto length = static_cast<std::int64_t>(piece.size());
    if (const Status status = mNodes.transmitLength->setValue(length); status != Status::Ok) {
        return status;
    }
    const auto taken = mNodes.transmitLength->value(ReadFrom::Device);
    if (!taken) {
        return taken.status();
    }
    accepted = static_cast<std::size_t>(std::clamp(*taken, std::int64_t{0}, length));
    return Status::Ok;
}

Status SerialPort::read(std::span<std::uint8_t> into, std::chrono::milliseconds timeout,
                        std::size_t& received)
{
    const std::lock_guard lock(mLock);
    received = 0;
    std::size_t waiting = 0;
    if (const Status status = awaitBytes(into.size(), timeout, waiting); status != Status::Ok) {
        return status;
    }
    const std::size_t wanted = std::min(into.size(), waiting);
    while (received < wanted) {
        std::size_t taken = 0;
        const Status status = takePiece(into.subspan(received, wanted - received), taken);
        received += taken;
        if (status != Status::Ok || taken == 0) {
            return status;
        }
    }
    return Status::Ok;
}

Status SerialPort::awaitBytes(std::size_t wanted, std::chrono::milliseconds timeout,
                              std::size_t& waiting)
{
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    for (;;) {
        const auto length = mNodes.receiveLength->value(ReadFrom::Device);
        if (!length) {
            return length.status();
        }
        waiting = static_cast<std::size_t>(std::max(*length, std::int64_t{0}));
        if (waiting >= wanted || std::chrono::steady_clock::now() >= deadline) {
            return Status::Ok;
        }
        std::this_thread::sleep_for(kPollPause);
    }
}

Status SerialPort::takePiece(std::span<std::uint8_t> into, std::size_t& taken)
{
    const auto bytes = mNodes.receiveBuffer->read(ReadFrom::Device);
    if (!bytes) {
        return bytes.status();
    }
    const std::size_t count = std::min(into.size(), bytes->size());
    const Status status = mNodes.receiveConsume->setValue(static_cast<std::int64_t>(count));
    if (status == Status::Ok) {
        std::copy_n(bytes->begin(), count, into.begin());
        taken = count;
    }
    return status;
}

Status SerialPort::flush()
{
    const std::lock_guard lock(mLock);
    return mNodes.receiveFlush->execute();
}
