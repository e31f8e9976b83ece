#include "PvResults.h"

namespace
{

using gige::wire::GvcpStatus;

PvResult deviceAnswer(GvcpStatus status)
{
    switch (status) {
    case GvcpStatus::AccessDenied:
    case GvcpStatus::WriteProtect:
        return PvResult::Code::AccessDenied;
    case GvcpStatus::Busy:
        return PvResult::Code::Busy;
    case GvcpStatus::NotImplemented:
        return PvResult::Code::NotSupported;
    case GvcpStatus::InvalidParameter:
    case GvcpStatus::InvalidAddress:
    case GvcpStatus::BadAlignment:
        return PvResult::Code::InvalidParameter;
    default:
        return PvResult::Code::GenericError;
    }
}

} // namespace

PvResult toPvResult(const gige::control::ControlResult& result)
{
    using gige::control::ControlStatus;
    switch (result.status) {
    case ControlStatus::Ok:
        return PvResult::Code::Ok;
    case ControlStatus::DeviceError:
        return deviceAnswer(result.deviceStatus);
    case ControlStatus::Timeout:
        return PvResult::Code::Timeout;
    case ControlStatus::NetworkError:
        return PvResult::Code::NetworkError;
    case ControlStatus::NotConnected:
        return PvResult::Code::NotConnected;
    case ControlStatus::NotFound:
        return PvResult::Code::NotFound;
    case ControlStatus::InvalidParameter:
        return PvResult::Code::InvalidParameter;
    }
    return PvResult::Code::GenericError;
}
