#include "GvcpStatus.h"

#include <array>
#include <cstdio>

namespace gige::wire
{

std::string_view statusName(GvcpStatus status)
{
    switch (status) {
    case GvcpStatus::Success:
        return "SUCCESS";
    case GvcpStatus::PacketResend:
        return "PACKET_RESEND";
    case GvcpStatus::NotImplemented:
        return "NOT_IMPLEMENTED";
    case GvcpStatus::InvalidParameter:
        return "INVALID_PARAMETER";
    case GvcpStatus::InvalidAddress:
        return "INVALID_ADDRESS";
    case GvcpStatus::WriteProtect:
        return "WRITE_PROTECT";
    case GvcpStatus::BadAlignment:
        return "BAD_ALIGNMENT";
    case GvcpStatus::AccessDenied:
        return "ACCESS_DENIED";
    case GvcpStatus::Busy:
        return "BUSY";
    case GvcpStatus::LocalProblem:
        return "LOCAL_PROBLEM";
    case GvcpStatus::MessageMismatch:
        return "MSG_MISMATCH";
    case GvcpStatus::InvalidProtocol:
        return "INVALID_PROTOCOL";
    case GvcpStatus::NoMessage:
        return "NO_MSG";
    case GvcpStatus::PacketUnavailable:
        return "PACKET_UNAVAILABLE";
    case GvcpStatus::DataOverrun:
        return "DATA_OVERRUN";
    case GvcpStatus::InvalidHeader:
        return "INVALID_HEADER";
    case GvcpStatus::WrongConfiguration:
        return "WRONG_CONFIG";
    case GvcpStatus::PacketNotYetAvailable:
        return "PACKET_NOT_YET_AVAILABLE";
    case GvcpStatus::PacketAndPreviousRemoved:
        return "PACKET_AND_PREV_REMOVED_FROM_MEMORY";
    case GvcpStatus::PacketRemoved:
        return "PACKET_REMOVED_FROM_MEMORY";
    case GvcpStatus::NoReferenceTime:
        return "NO_REF_TIME";
    case GvcpStatus::PacketTemporarilyUnavailable:
        return "PACKET_TEMPORARILY_UNAVAILABLE";
    case GvcpStatus::Overflow:
        return "OVERFLOW";
    case GvcpStatus::ActionLate:
        return "ACTION_LATE";
    case GvcpStatus::LeaderTrailerOverflow:
        return "LEADER_TRAILER_OVERFLOW";
    case GvcpStatus::Error:
        return "ERROR";
    }
    return "UNKNOWN_STATUS";
}

std::string statusText(GvcpStatus status)
{
    std::array<char, 16> number{};
    std::snprintf(number.data(), number.size(), " (0x%04X)", static_cast<unsigned>(status));
    return std::string(statusName(status)) + number.data();
}

} // namespace gige::wire
