#ifndef TELVO_SRC_API_EXPORTFRAME_H
#define TELVO_SRC_API_EXPORTFRAME_H

#include "CQuorGrabber.h"
#include "CameraRegistry.h"
#include "TelvoDll.h"

#include <cstdint>
#include <functional>
#include <type_traits>

/// The host's null pointers end here: no operation sees one.
template <typename... Args>
bool isAnyNull(Args... args)
{
    [[maybe_unused]] const auto isNull = []<typename T>(T arg) {
        if constexpr (std::is_pointer_v<T>) {
            return arg == nullptr;
        } else {
            return false;
        }
    };
    return (isNull(args) || ...);
}

/// Nothing unwinds into a host, not even for want of memory or threads: what is thrown in there is
/// a failure like any other.
template <typename Result, typename Body>
Result orFailure(Result failure, Body body) noexcept
{
    try {
        return body();
    } catch (...) {
        return failure;
    }
}

/// Finds the camera, calls exactly one operation and returns its result.
/// @return failure for an unknown id or a null pointer among the arguments
template <typename Result, typename Operation, typename... Args>
Result callGrabber(std::int32_t cameraId, Result failure, Operation operation,
                   Args... args) noexcept
{
    return orFailure(failure, [&]() -> Result {
        CQuorGrabber* const grabber = cameraRegistry().find(cameraId);
        if (grabber == nullptr || isAnyNull(args...)) {
            return failure;
        }
        return std::invoke(operation, *grabber, args...);
    });
}

/// The frame of an export that returns a result code.
template <typename Operation, typename... Args>
std::int32_t onGrabber(std::int32_t cameraId, Operation operation, Args... args) noexcept
{
    return callGrabber<std::int32_t>(cameraId, kFailure, operation, args...);
}

/// The frame of one of the few exports that answer 0 for an unknown id.
template <typename Operation, typename... Args>
std::int32_t onKnownGrabber(std::int32_t cameraId, Operation operation, Args... args) noexcept
{
    const bool isKnown = cameraRegistry().find(cameraId) != nullptr;
    return isKnown ? onGrabber(cameraId, operation, args...) : 0;
}

/// The frame of an export that returns image memory.
template <typename Operation, typename... Args>
const std::uint8_t* imageOnGrabber(std::int32_t cameraId, Operation operation,
                                   Args... args) noexcept
{
    return callGrabber<const std::uint8_t*>(cameraId, nullptr, operation, args...);
}

/// Hosts pass 32-bit numbers as unsigned; cameras' limits make them signed.
inline std::int32_t asSigned(std::uint32_t value)
{
    return static_cast<std::int32_t>(value);
}

inline std::int32_t* asSigned(std::uint32_t* value)
{
    return reinterpret_cast<std::int32_t*>(value);
}

#endif
