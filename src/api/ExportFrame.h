#ifndef TELVO_SRC_API_EXPORTFRAME_H
#define TELVO_SRC_API_EXPORTFRAME_H

#include "CQuorGrabber.h"
#include "CameraRegistry.h"
#include "TelvoDll.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <type_traits>
#include <utility>

constexpr std::int32_t kSuccess = 0;
constexpr std::int32_t kFailure = -1;

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

/// What a host gets for the end of an operation: the number of a result; success for an operation
/// that cannot fail.
template <typename Operation, typename... Args>
std::int32_t codeOf(const Operation& operation, Args&&... args)
{
    if constexpr (std::is_void_v<std::invoke_result_t<Operation, Args...>>) {
        std::invoke(operation, std::forward<Args>(args)...);
        return kSuccess;
    } else {
        return static_cast<std::int32_t>(std::invoke(operation, std::forward<Args>(args)...));
    }
}

/// The frame of an export that returns a result code.
/// @param operation  takes the CQuorGrabber and the arguments
template <typename Operation, typename... Args>
std::int32_t onGrabber(std::int32_t cameraId, Operation operation, Args... args) noexcept
{
    const auto run = [&operation](CQuorGrabber& grabber, auto... given) {
        return codeOf(operation, grabber, given...);
    };
    return callGrabber<std::int32_t>(cameraId, kFailure, run, args...);
}

/// @param operation  takes the CameraSettings and the arguments
template <typename Operation, typename... Args>
std::int32_t onSettings(std::int32_t cameraId, Operation operation, Args... args) noexcept
{
    const auto run = [&operation](CQuorGrabber& grabber, auto... given) {
        return codeOf(operation, grabber.settings(), given...);
    };
    return callGrabber<std::int32_t>(cameraId, kFailure, run, args...);
}

/// @param operation  takes the ModeControl and the arguments
template <typename Operation, typename... Args>
std::int32_t onModes(std::int32_t cameraId, Operation operation, Args... args) noexcept
{
    const auto run = [&operation](CQuorGrabber& grabber, auto... given) {
        return codeOf(operation, grabber.modes(), given...);
    };
    return callGrabber<std::int32_t>(cameraId, kFailure, run, args...);
}

/// For the few exports that answer 0 for an unknown id.
inline bool isKnown(std::int32_t cameraId)
{
    return cameraRegistry().find(cameraId) != nullptr;
}

/// The frame of an export that returns image memory.
template <typename Operation, typename... Args>
const std::uint8_t* imageOnGrabber(std::int32_t cameraId, Operation operation,
                                   Args... args) noexcept
{
    return callGrabber<const std::uint8_t*>(cameraId, nullptr, operation, args...);
}

/// The frame of an export that returns a frame and what its header says.
/// @param find  takes the CQuorGrabber and gives a HeadedFrame or nothing
template <typename Find>
const std::uint8_t* frameOnGrabber(std::int32_t cameraId, Find find, std::uint64_t* header,
                                   std::uint8_t* flags, std::uint8_t* extra) noexcept
{
    const auto run = [&find](CQuorGrabber& grabber, std::uint64_t* headerOut,
                             std::uint8_t* flagsOut,
                             std::uint8_t* extraOut) -> const std::uint8_t* {
        const std::optional<HeadedFrame> frame = find(grabber);
        if (!frame) {
            return nullptr;
        }
        *headerOut = frame->header.value;
        *flagsOut = frame->header.flags;
        *extraOut = frame->header.extra;
        return frame->data;
    };
    return imageOnGrabber(cameraId, run, header, flags, extra);
}

/// Hosts pass 32-bit numbers as unsigned; cameras' limits make them signed.
inline std::int32_t asSigned(std::uint32_t value)
{
    return static_cast<std::int32_t>(value);
}

/// Hands what a read gives to the host.
template <typename T, typename Out>
Outcome store(const Reading<T>& reading, Out* out)
{
    if (reading.value) {
        *out = static_cast<Out>(*reading.value);
    }
    return reading.outcome;
}

template <typename Out>
Outcome store(const Reading<Range>& reading, Out* minimum, Out* maximum, Out* value)
{
    if (reading.value) {
        *minimum = static_cast<Out>(reading.value->minimum);
        *maximum = static_cast<Out>(reading.value->maximum);
        *value = static_cast<Out>(reading.value->value);
    }
    return reading.outcome;
}

/// Hands over what there is of values that come one by one.
template <typename T, std::size_t Size>
void storeParts(const std::optional<T> (&parts)[Size], std::uint32_t* const (&outs)[Size])
{
    for (std::size_t i = 0; i < Size; ++i) {
        if (parts[i]) {
            *outs[i] = static_cast<std::uint32_t>(*parts[i]);
        }
    }
}

/// The frame of an export that reads into the host's variables.
/// @param source  an accessor's row, or a function that takes the CameraSettings
template <typename Source, typename... Outs>
std::int32_t readSetting(std::int32_t cameraId, const Source& source, Outs*... outs) noexcept
{
    const auto run = [&source](CameraSettings& camera, Outs*... given) {
        if constexpr (std::is_invocable_v<const Source&, CameraSettings&>) {
            return store(source(camera), given...);
        } else {
            return store(read(camera, source), given...);
        }
    };
    return onSettings(cameraId, run, outs...);
}

/// @param question  of the ModeControl
template <typename Out>
std::int32_t readMode(std::int32_t cameraId, Reading<bool> (ModeControl::*question)() const,
                      Out* out) noexcept
{
    const auto run = [question](ModeControl& modes, Out* given) {
        return store((modes.*question)(), given);
    };
    return onModes(cameraId, run, out);
}

/// The frame of an export that writes one value.
/// @param target  an accessor's row, or a function that takes the CameraSettings and the value
template <typename Target, typename Value>
std::int32_t writeSetting(std::int32_t cameraId, const Target& target, Value value) noexcept
{
    return onSettings(cameraId, [&target, value](CameraSettings& camera) {
        if constexpr (std::is_invocable_v<const Target&, CameraSettings&, Value>) {
            return target(camera, value);
        } else {
            return write(camera, target, value);
        }
    });
}

#endif
