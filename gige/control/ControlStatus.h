#ifndef TELVO_GIGE_CONTROL_CONTROLSTATUS_H
#define TELVO_GIGE_CONTROL_CONTROLSTATUS_H

#include "GvcpStatus.h"
#include "Result.h"

#include <cstdint>

namespace gige::control
{

/// Outcome of every operation on a device. Other values than these are errors that the device
/// answered with, under their numbers on the wire, all of which have bit 15.
enum class [[nodiscard]] Status : std::uint16_t{
    Ok = 0,
    Timeout,          ///< no answer
    NetworkError,     ///< the system could not send, or has no socket or thread for us
    NotConnected,     ///< closed by the host, or the link was lost
    InvalidParameter, ///< refused before anything was sent
};

/// An error that the device answered with.
constexpr Status deviceError(wire::GvcpStatus error)
{
    return static_cast<Status>(error);
}

/// The device answered, with an error.
constexpr bool isDeviceError(Status status)
{
    return wire::isError(static_cast<wire::GvcpStatus>(status));
}

template <typename T>
using Result = gige::Result<T, Status>;

} // namespace gige::control

#endif
