#include "CameraControl.h"

#include "BootstrapRegisters.h"
#include "ControlChannel.h"
#include "DeviceRegisters.h"

bool isFree(const camera::VirtualCamera& camera)
{
    const auto address = gige::net::parseIpv4(camera.options().address);
    const gige::control::LinkSettings settings;
    const auto channel = gige::control::ControlChannel::open(*address, *address, settings);
    return gige::control::DeviceRegisters(*channel)
               .readRegister(gige::wire::kRegControlPrivilege)
               .valueOr(gige::wire::kPrivilegeExclusive) == gige::wire::kPrivilegeOpen;
}
