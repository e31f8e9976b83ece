#ifndef TELVO_GIGE_PV_SERIALPORT_H
#define TELVO_GIGE_PV_SERIALPORT_H

#include "NodeMap.h"

#include <chrono>
#include <cstdint>
#include <mutex>
#include <optional>
#include <span>

/// Serial port 0 of a device, carried by six nodes of its feature tree (SerialPort0…). Threads:
/// any; mLock keeps one transfer in one piece.
class SerialPort
{
  public:
    /// @return none when the device lacks one of the nodes, or has it as another kind
    static std::optional<SerialPort> find(const gige::genapi::NodeMap& nodes);
    SerialPort(SerialPort&& other) noexcept : mNodes(other.mNodes) {}

    /// Writes in pieces of the transmit buffer's length and stops at the first that is not taken
    /// whole. @param written  out: bytes that the line accepted
    gige::genapi::Status write(std::span<const std::uint8_t> data, std::size_t& written);
    /// Waits until as many bytes as asked for have come, or the time is over, and takes what is
    /// there. @param received  out: bytes stored
    gige::genapi::Status read(std::span<std::uint8_t> into, std::chrono::milliseconds timeout,
                              std::size_t& received);
    gige::genapi::Status flush();

  private:
    struct Nodes {
        gige::genapi::RegisterNode* transmitBuffer = nullptr;
        gige::genapi::IntegerNode* transmitLength = nullptr;
        gige::genapi::IntegerNode* receiveLength = nullptr;
        gige::genapi::RegisterNode* receiveBuffer = nullptr;
        gige::genapi::IntegerNode* receiveConsume = nullptr;
        gige::genapi::CommandNode* receiveFlush = nullptr;
    };

    explicit SerialPort(const Nodes& nodes) : mNodes(nodes) {}

    gige::genapi::Status writePiece(std::span<const std::uint8_t> piece, std::size_t& accepted);
    gige::genapi::Status awaitBytes(std::size_t wanted, std::chrono::milliseconds timeout,
                                    std::size_t& waiting);
    gige::genapi::Status takePiece(std::span<std::uint8_t> into, std::size_t& taken);

    Nodes mNodes;
    std::mutex mLock;
};

#endif
