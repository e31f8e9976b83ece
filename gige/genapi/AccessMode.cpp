#include "AccessMode.h"

#include <algorithm>

namespace gige::genapi
{

AccessMode intersect(AccessMode first, AccessMode second)
{
    // The enum runs from nothing to everything: the lower mode allows less.
    const auto [lower, higher] = std::minmax(first, second);
    const bool isContrary = lower == AccessMode::WriteOnly && higher == AccessMode::ReadOnly;
    return isContrary ? AccessMode::NotAvailable : lower;
}

AccessMode lock(AccessMode mode)
{
    switch (mode) {
    case AccessMode::ReadWrite:
        return AccessMode::ReadOnly;
    case AccessMode::WriteOnly:
        return AccessMode::NotAvailable;
    default:
        return mode;
    }
}

namespace
{

Status offered(AccessMode mode, AccessMode forbidden, Status refusal)
{
    if (mode == AccessMode::NotImplemented) {
        return Status::NotImplemented;
    }
    if (mode == AccessMode::NotAvailable) {
        return Status::NotAvailable;
    }
    return mode == forbidden ? refusal : Status::Ok;
}

} // namespace

Status readability(AccessMode mode)
{
    return offered(mode, AccessMode::WriteOnly, Status::WriteOnly);
}

Status writability(AccessMode mode)
{
    return offered(mode, AccessMode::ReadOnly, Status::ReadOnly);
}

} // namespace gige::genapi
