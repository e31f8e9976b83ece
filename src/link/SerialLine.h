#ifndef TELVO_SRC_LINK_SERIALLINE_H
#define TELVO_SRC_LINK_SERIALLINE_H

#include "Outcome.h"

#include "PvDevice.h"
#include "PvSerialPortIPEngine.h"

#include <cstddef>
#include <cstdint>
#include <span>

/**
 * The byte pipe to the camera's command interpreter.
 * Threads: those that PvSerialPortIPEngine allows, once the line is open.
 */
class SerialLine
{
  public:
    /// A camera without one is asked for frames through its features.
    /// @param device  borrowed for this object's life
    void open(PvDevice& device);
    bool isOpen() const { return mPort.IsOpened(); }
    /// Drops what the camera has sent.
    void flush();
    /// @return Failed when the line took fewer bytes
    Outcome write(std::span<const std::uint8_t> data);
    /// Waits at most 2000 ms for the buffer to fill.
    /// @return bytes read: a failed read is a read of fewer bytes
    std::size_t read(std::span<std::uint8_t> buffer);

  private:
    PvSerialPortIPEngine mPort;
};

#endif
