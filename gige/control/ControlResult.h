#ifndef TELVO_GIGE_CONTROL_CONTROLRESULT_H
#define TELVO_GIGE_CONTROL_CONTROLRESULT_H

#include "GvcpStatus.h"

#include <cassert>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

namespace gige::control
{

enum class ControlStatus : std::uint8_t {
    Ok,
    DeviceError,      // the device answered with an error: see ControlResult::deviceStatus
    Timeout,          // no answer
    NetworkError,     // the system could not send, or has no socket or thread for us
    NotConnected,     // closed by the host, or the link was lost
    NotFound,         // no device with this address
    InvalidParameter, // refused before anything was sent
};

/// Outcome of an operation on a device.
struct ControlResult {
    ControlStatus status = ControlStatus::Ok;
    /// What the device said; Success unless status is DeviceError.
    wire::GvcpStatus deviceStatus = wire::GvcpStatus::Success;

    [[nodiscard]] bool ok() const { return status == ControlStatus::Ok; }
    /// The device answered with exactly this error.
    [[nodiscard]] bool refused(wire::GvcpStatus reason) const
    {
        return status == ControlStatus::DeviceError && deviceStatus == reason;
    }
    bool operator==(const ControlResult&) const = default;
};

inline constexpr ControlResult kOk{};

/// An error that the device answered.
constexpr ControlResult deviceError(wire::GvcpStatus status)
{
    return {ControlStatus::DeviceError, status};
}

/// "OK", "TIMEOUT", "ACCESS_DENIED (0x8006)": for logs and messages.
std::string resultText(const ControlResult& result);

/// A value, or the reason why there is none.
template <typename T>
class ControlValue
{
  public:
    ControlValue(T value) : mValue(std::move(value)) {} // implicit: `return value;`
    /// @param failure  not Ok
    ControlValue(const ControlResult& failure) : mResult(failure) { assert(!failure.ok()); }
    ControlValue(ControlStatus failure) : ControlValue(ControlResult{failure}) {}

    [[nodiscard]] bool ok() const { return mValue.has_value(); }
    [[nodiscard]] const ControlResult& result() const { return mResult; }
    /// Only if ok().
    [[nodiscard]] const T& operator*() const { return *mValue; }
    [[nodiscard]] T& operator*() { return *mValue; }
    [[nodiscard]] const T* operator->() const { return &*mValue; }
    [[nodiscard]] T* operator->() { return &*mValue; }
    [[nodiscard]] T valueOr(T other) const { return mValue.value_or(std::move(other)); }

  private:
    ControlResult mResult;
    std::optional<T> mValue;
};

} // namespace gige::control

#endif
