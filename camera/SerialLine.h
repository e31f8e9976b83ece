#ifndef TELVO_CAMERA_SERIALLINE_H
#define TELVO_CAMERA_SERIALLINE_H

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <vector>

namespace camera
{

// Registers of the serial interpreter that stream recorded frames.
inline constexpr std::uint16_t kSerialFirstFrame = 0x07A8;
inline constexpr std::uint16_t kSerialLastFrame = 0x07B0;
inline constexpr std::uint16_t kSerialStartStream = 0x07F8;

/// The camera's serial command interpreter behind the device's serial bridge. A command is a colon,
/// "GW" or "GR", four hexadecimal digits of a register, and for a write an optional value of up to
/// eight digits. "GR" is answered with ":rrrrvvvvvvvv". Writes are answered with ":OK" once
/// acknowledges are enabled, anything else with ":ER"; all answers end with CR.
/// Not thread-safe.
class SerialLine
{
  public:
    /// Called when a register is written; false when the camera cannot do it now.
    using WriteHandler = std::function<bool(std::uint16_t address, std::uint32_t value)>;

    explicit SerialLine(WriteHandler onWrite) : mOnWrite(std::move(onWrite)) {}

    /// Takes bytes from the bridge. A command ends where the next begins, or with the bytes.
    void send(std::span<const std::uint8_t> bytes);

    void enableAcknowledges() { mAcknowledges = true; }

    [[nodiscard]] std::size_t waiting() const { return mAnswers.size(); }
    /// The first bytes that wait, at most limit; they stay.
    [[nodiscard]] std::vector<std::uint8_t> peek(std::size_t limit) const;
    void consume(std::size_t count);
    void flush() { mAnswers.clear(); }

  private:
    void execute(const std::string& command);
    void answer(const std::string& text);

    WriteHandler mOnWrite;
    std::map<std::uint16_t, std::uint32_t> mRegisters;
    std::string mCommand; // unfinished, without its colon
    std::deque<std::uint8_t> mAnswers;
    bool mInCommand = false;
    bool mAcknowledges = false;
};

} // namespace camera

#endif
