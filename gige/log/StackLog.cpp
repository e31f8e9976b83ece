#include "StackLog.h"

#include "LogChannel.h"
#include "Repetitions.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <optional>

namespace gige::log
{

namespace
{

// Without destructors: exit handlers may still have something to say.
constinit Repetitions repetitions;
constinit std::atomic_flag isInUse;

/// Whoever finds it in use does not wait: a forked child might do so for ever. Its line is let
/// through.
std::optional<std::uint32_t> admit(std::string_view line)
{
    if (isInUse.test_and_set(std::memory_order_acquire)) {
        return 0;
    }
    const auto heldBack = repetitions.admit(line, std::chrono::steady_clock::now());
    isInUse.clear(std::memory_order_release);
    return heldBack;
}

} // namespace

void say(std::string_view device, const Reason& reason) noexcept
{
    Line line(device);
    line << (device.empty() ? "" : ": ") << reason.text;
    if (!reason.advice.empty()) {
        line << " -> " << reason.advice;
    }
    if (const auto heldBack = admit(line.view())) {
        if (*heldBack > 0) {
            line << " (" << *heldBack << " more in between)";
        }
        send(line.view());
    }
}

} // namespace gige::log
