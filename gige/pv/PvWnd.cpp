#include "PvWnd.h"

// Neither window has a surface to show itself on yet: both end as if the user had cancelled.

class PvDeviceFinderWnd::Impl
{
};

PvDeviceFinderWnd::PvDeviceFinderWnd() = default;
PvDeviceFinderWnd::~PvDeviceFinderWnd() = default;

PvResult PvDeviceFinderWnd::ShowModal(PvWnd* /*parent*/)
{
    return PvResult::Code::Aborted;
}

PvResult PvDeviceFinderWnd::Close()
{
    return PvResult::Code::Ok;
}

const PvDeviceInfo* PvDeviceFinderWnd::GetSelected() const
{
    return nullptr;
}

class PvGenBrowserWnd::Impl
{
};

PvGenBrowserWnd::PvGenBrowserWnd() = default;
PvGenBrowserWnd::~PvGenBrowserWnd() = default;

PvResult PvGenBrowserWnd::ShowModal(PvWnd* /*parent*/)
{
    return PvResult::Code::Aborted;
}

PvResult PvGenBrowserWnd::Close()
{
    return PvResult::Code::Ok;
}

void PvGenBrowserWnd::SetGenParameterArray(PvGenParameterArray* /*array*/) {}
