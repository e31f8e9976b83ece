#include "GenResults.h"

PvResult toPvResult(gige::genapi::Status status)
{
    using gige::genapi::Status;
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
