#ifndef TELVO_PLATFORM_EBUS_PVRESULT_H
#define TELVO_PLATFORM_EBUS_PVRESULT_H

#include "PvString.h"

#include <cstdint>

/// Outcome of every operation of the network stack.
class [[nodiscard]] PvResult
{
  public:
    /// The values are this stack's own; `Ok` is 0.
    enum class Code : std::uint32_t {
        Ok = 0,
        Pending,
        Timeout,
        Aborted,
        Busy,
        NotConnected,
        NotFound,
        NotAvailable,
        AccessDenied,
        InvalidParameter,
        OutOfRange,
        StateError,
        NetworkError,
        GenericError,
        ImageError,
        ResendsFailure,
        BufferTooSmall,
        NotEnoughMemory,
        NotSupported,
    };

    PvResult() = default;
    PvResult(Code code) : mCode(code) {} // implicit: operations return a bare code

    bool IsOK() const { return mCode == Code::Ok; }
    bool IsPending() const { return mCode == Code::Pending; }

    /// The code as a number, for log lines.
    std::uint32_t GetCode() const { return static_cast<std::uint32_t>(mCode); }

    /// The code's name: "OK", "TIMEOUT", "IMAGE_ERROR", …
    PvString GetCodeString() const { return name(mCode); }

    bool operator==(const PvResult&) const = default;

  private:
    static const char* name(Code code)
    {
        switch (code) {
        case Code::Ok:
            return "OK";
        case Code::Pending:
            return "PENDING";
        case Code::Timeout:
            return "TIMEOUT";
        case Code::Aborted:
            return "ABORTED";
        case Code::Busy:
            return "BUSY";
        case Code::NotConnected:
            return "NOT_CONNECTED";
        case Code::NotFound:
            return "NOT_FOUND";
        case Code::NotAvailable:
            return "NOT_AVAILABLE";
        case Code::AccessDenied:
            return "ACCESS_DENIED";
        case Code::InvalidParameter:
            return "INVALID_PARAMETER";
        case Code::OutOfRange:
            return "OUT_OF_RANGE";
        case Code::StateError:
            return "STATE_ERROR";
        case Code::NetworkError:
            return "NETWORK_ERROR";
        case Code::GenericError:
            return "GENERIC_ERROR";
        case Code::ImageError:
            return "IMAGE_ERROR";
        case Code::ResendsFailure:
            return "RESENDS_FAILURE";
        case Code::BufferTooSmall:
            return "BUFFER_TOO_SMALL";
        case Code::NotEnoughMemory:
            return "NOT_ENOUGH_MEMORY";
        case Code::NotSupported:
            return "NOT_SUPPORTED";
        }
        return "GENERIC_ERROR";
    }

    Code mCode = Code::Ok;
};

#endif
