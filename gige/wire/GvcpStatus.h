#ifndef TELVO_GIGE_WIRE_GVCPSTATUS_H
#define TELVO_GIGE_WIRE_GVCPSTATUS_H

#include <cstdint>
#include <string>
#include <string_view>

namespace gige::wire
{

/// Status of an acknowledge or of a stream packet (GEV_STATUS_…). Bit 15: error; other values than
/// those named here occur.
enum class [[nodiscard]] GvcpStatus : std::uint16_t{
    Success = 0x0000,
    PacketResend = 0x0100, // stream only: a resent packet, no error
    NotImplemented = 0x8001,
    InvalidParameter = 0x8002,
    InvalidAddress = 0x8003,
    WriteProtect = 0x8004,
    BadAlignment = 0x8005,
    AccessDenied = 0x8006,
    Busy = 0x8007,
    LocalProblem = 0x8008,
    MessageMismatch = 0x8009,
    InvalidProtocol = 0x800A,
    NoMessage = 0x800B,
    PacketUnavailable = 0x800C,
    DataOverrun = 0x800D,
    InvalidHeader = 0x800E,
    WrongConfiguration = 0x800F,
    PacketNotYetAvailable = 0x8010,
    PacketAndPreviousRemoved = 0x8011,
    PacketRemoved = 0x8012,
    NoReferenceTime = 0x8013,
    PacketTemporarilyUnavailable = 0x8014,
    Overflow = 0x8015,
    ActionLate = 0x8016,
    LeaderTrailerOverflow = 0x8017,
    Error = 0x8FFF,
};

/// Bit 15 of the status.
constexpr bool isError(GvcpStatus status)
{
    return (static_cast<unsigned>(status) & 0x8000U) != 0;
}

/// "ACCESS_DENIED"; "UNKNOWN_STATUS" for a value without a name.
std::string_view statusName(GvcpStatus status);

/// "ACCESS_DENIED (0x8006)"
std::string statusText(GvcpStatus status);

} // namespace gige::wire

#endif
