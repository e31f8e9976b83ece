#include "ControlPrivilege.h"

#include "BootstrapRegisters.h"

namespace camera
{

using namespace gige::wire;

GvcpStatus ControlPrivilege::write(std::uint32_t value, const Endpoint& from, CameraTime now)
{
    if (mOwner && mOwner != from) {
        return GvcpStatus::AccessDenied;
    }
    const std::uint32_t wanted = value & (kPrivilegeExclusive | kPrivilegeControl);
    if (wanted == kPrivilegeOpen) {
        release();
        return GvcpStatus::Success;
    }
    mValue = wanted;
    mOwner = from;
    mLastHeard = now;
    return GvcpStatus::Success;
}

void ControlPrivilege::release()
{
    mValue = kPrivilegeOpen;
    mOwner.reset();
}

bool ControlPrivilege::mayRead(const Endpoint& from) const
{
    return (mValue & kPrivilegeExclusive) == 0 || mOwner == from;
}

void ControlPrivilege::heard(const Endpoint& from, CameraTime now)
{
    if (mOwner == from) {
        mLastHeard = now;
    }
}

bool ControlPrivilege::isExpired(CameraTime now, CameraTime timeout) const
{
    return mOwner.has_value() && now - mLastHeard > timeout;
}

} // namespace camera
