#include "StatusTranslations.h"

using ControlStatus = gige::control::Status;
using gige::genapi::Status;
using gige::stream::BlockResult;
using gige::wire::GvcpStatus;

namespace
{

PvResult toPvResult(GvcpStatus status)
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

Status toPortStatus(GvcpStatus status)
{
    switch (status) {
    case GvcpStatus::AccessDenied:
    case GvcpStatus::WriteProtect:
        return Status::PortAccessDenied;
    case GvcpStatus::InvalidAddress:
    case GvcpStatus::BadAlignment:
        return Status::PortBadAddress;
    case GvcpStatus::Busy:
        return Status::PortBusy;
    default:
        return Status::PortError;
    }
}

} // namespace

PvResult toPvResult(ControlStatus status)
{
    switch (status) {
    case ControlStatus::Ok:
        return PvResult::Code::Ok;
    case ControlStatus::Timeout:
        return PvResult::Code::Timeout;
    case ControlStatus::NetworkError:
        return PvResult::Code::NetworkError;
    case ControlStatus::NotConnected:
        return PvResult::Code::NotConnected;
    case ControlStatus::InvalidParameter:
        return PvResult::Code::InvalidParameter;
    }
    return toPvResult(static_cast<GvcpStatus>(status)); // a device error
}

PvResult toPvResult(Status status)
{
    switch (status) {
    case Status::Ok:
        return PvResult::Code::Ok;
    case Status::NotImplemented:
    case Status::NotAvailable:
    case Status::EntryNotOffered:
        return PvResult::Code::NotAvailable;
    case Status::ReadOnly:
    case Status::WriteOnly:
    case Status::PortAccessDenied:
        return PvResult::Code::AccessDenied;
    case Status::OutOfRange:
        return PvResult::Code::OutOfRange;
    case Status::NoSuchEntry:
    case Status::PortBadAddress:
        return PvResult::Code::InvalidParameter;
    case Status::PortTimeout:
        return PvResult::Code::Timeout;
    case Status::PortNotConnected:
        return PvResult::Code::NotConnected;
    case Status::PortBusy:
        return PvResult::Code::Busy;
    case Status::UrlUnsupported:
        return PvResult::Code::NotSupported;
    default: // the description is at fault, or the device failed without a reason
        return PvResult::Code::GenericError;
    }
}

PvResult toPvResult(BlockResult result)
{
    switch (result) {
    case BlockResult::Ok:
        return PvResult::Code::Ok;
    case BlockResult::ImageError:
        return PvResult::Code::ImageError;
    case BlockResult::ResendsFailure:
        return PvResult::Code::ResendsFailure;
    case BlockResult::BufferTooSmall:
        return PvResult::Code::BufferTooSmall;
    case BlockResult::Aborted:
        return PvResult::Code::Aborted;
    case BlockResult::TimedOut:
        return PvResult::Code::Timeout;
    }
    return PvResult::Code::GenericError;
}

Status toPortStatus(ControlStatus status)
{
    switch (status) {
    case ControlStatus::Ok:
        return Status::Ok;
    case ControlStatus::Timeout:
        return Status::PortTimeout;
    case ControlStatus::NotConnected:
        return Status::PortNotConnected;
    case ControlStatus::InvalidParameter:
        return Status::PortBadAddress;
    case ControlStatus::NetworkError:
        return Status::PortError;
    }
    return toPortStatus(static_cast<GvcpStatus>(status)); // a device error
}
