#include "ControlResult.h"

namespace gige::control
{

std::string resultText(const ControlResult& result)
{
    switch (result.status) {
    case ControlStatus::Ok:
        return "OK";
    case ControlStatus::DeviceError:
        return wire::statusText(result.deviceStatus);
    case ControlStatus::Timeout:
        return "TIMEOUT";
    case ControlStatus::NetworkError:
        return "NETWORK_ERROR";
    case ControlStatus::NotConnected:
        return "NOT_CONNECTED";
    case ControlStatus::NotFound:
        return "NOT_FOUND";
    case ControlStatus::InvalidParameter:
        return "INVALID_PARAMETER";
    }
    return "UNKNOWN_RESULT";
}

} // namespace gige::control
