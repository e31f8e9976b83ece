#include "GenApiStatus.h"

namespace gige::genapi
{

const char* name(Status status)
{
    switch (status) {
    case Status::Ok:
        return "OK";
    case Status::NotImplemented:
        return "NOT_IMPLEMENTED";
    case Status::NotAvailable:
        return "NOT_AVAILABLE";
    case Status::ReadOnly:
        return "READ_ONLY";
    case Status::WriteOnly:
        return "WRITE_ONLY";
    case Status::OutOfRange:
        return "OUT_OF_RANGE";
    case Status::NoSuchEntry:
        return "NO_SUCH_ENTRY";
    case Status::EntryNotOffered:
        return "ENTRY_NOT_OFFERED";
    case Status::WrongKind:
        return "WRONG_KIND";
    case Status::BadNode:
        return "BAD_NODE";
    case Status::CircularReference:
        return "CIRCULAR_REFERENCE";
    case Status::TooComplex:
        return "TOO_COMPLEX";
    case Status::ArithmeticError:
        return "ARITHMETIC_ERROR";
    case Status::RegisterTooLarge:
        return "REGISTER_TOO_LARGE";
    case Status::FormulaTooLong:
        return "FORMULA_TOO_LONG";
    case Status::FormulaTooDeep:
        return "FORMULA_TOO_DEEP";
    case Status::FormulaMalformed:
        return "FORMULA_MALFORMED";
    case Status::PortTimeout:
        return "PORT_TIMEOUT";
    case Status::PortNotConnected:
        return "PORT_NOT_CONNECTED";
    case Status::PortAccessDenied:
        return "PORT_ACCESS_DENIED";
    case Status::PortBadAddress:
        return "PORT_BAD_ADDRESS";
    case Status::PortBusy:
        return "PORT_BUSY";
    case Status::PortError:
        return "PORT_ERROR";
    case Status::DescriptionTooLarge:
        return "DESCRIPTION_TOO_LARGE";
    case Status::DescriptionTooDeep:
        return "DESCRIPTION_TOO_DEEP";
    case Status::TooManyNodes:
        return "TOO_MANY_NODES";
    case Status::DescriptionMalformed:
        return "DESCRIPTION_MALFORMED";
    case Status::ZipMalformed:
        return "ZIP_MALFORMED";
    case Status::UrlMalformed:
        return "URL_MALFORMED";
    case Status::UrlUnsupported:
        return "URL_UNSUPPORTED";
    }
    return "UNKNOWN_STATUS";
}

} // namespace gige::genapi
