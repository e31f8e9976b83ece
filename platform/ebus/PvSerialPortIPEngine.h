#ifndef TELVO_PLATFORM_EBUS_PVSERIALPORTIPENGINE_H
#define TELVO_PLATFORM_EBUS_PVSERIALPORTIPENGINE_H

#include "PvDevice.h"
#include "PvResult.h"

#include <cstdint>
#include <memory>

/// Serial ports of a camera, by index.
enum class PvIPEngineSerial : std::uint32_t { Serial0 = 0 };

/// Byte pipe to the camera's command interpreter. Calls may come from several threads.
class PvSerialPortIPEngine
{
  public:
    PvSerialPortIPEngine();
    virtual ~PvSerialPortIPEngine();
    PvSerialPortIPEngine(const PvSerialPortIPEngine&) = delete;
    PvSerialPortIPEngine& operator=(const PvSerialPortIPEngine&) = delete;

    /// @param device  borrowed until Close
    /// @return NOT_SUPPORTED when the camera has no such port
    PvResult Open(PvDevice* device, PvIPEngineSerial port);
    PvResult Close();

    virtual bool IsOpened() const;
    /// @param written  out: bytes that the serial line accepted
    virtual PvResult Write(const std::uint8_t* data, std::uint32_t size, std::uint32_t& written);
    /// @param received  out: bytes read, fewer than size when the timeout passed first
    /// @param timeout   milliseconds
    virtual PvResult Read(std::uint8_t* buffer, std::uint32_t size, std::uint32_t& received,
                          std::uint32_t timeout);
    /// Drops the bytes waiting.
    virtual PvResult FlushRxBuffer();

  private:
    class Impl;
    std::unique_ptr<Impl> mImpl;
};

#endif
