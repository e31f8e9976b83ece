#include "PvWnd.h"
#include "StandIn.h"

namespace
{

std::string parentText(const PvWnd* parent)
{
    return parent == nullptr ? "no parent" : "parent";
}

} // namespace

class PvDeviceFinderWnd::Impl
{
  public:
    std::unique_ptr<PvDeviceInfo> selected;
};

PvDeviceFinderWnd::PvDeviceFinderWnd() : mImpl(std::make_unique<Impl>()) {}

PvDeviceFinderWnd::~PvDeviceFinderWnd() = default;

PvResult PvDeviceFinderWnd::ShowModal(PvWnd* parent)
{
    const StandIn::Choice choice = StandIn::current().choice();
    if (choice.selected) {
        mImpl->selected = std::make_unique<PvDeviceInfo>(choice.macAddress, choice.ipAddress);
    }
    return StandIn::current().call("PvDeviceFinderWnd.ShowModal", parentText(parent),
                                   choice.confirmed ? Code::Ok : Code::Aborted);
}

PvResult PvDeviceFinderWnd::Close()
{
    return StandIn::current().call("PvDeviceFinderWnd.Close");
}

const PvDeviceInfo* PvDeviceFinderWnd::GetSelected() const
{
    return mImpl->selected.get();
}

class PvGenBrowserWnd::Impl
{
};

PvGenBrowserWnd::PvGenBrowserWnd() : mImpl(std::make_unique<Impl>()) {}

PvGenBrowserWnd::~PvGenBrowserWnd()
{
    StandIn::current().record(StandIn::Kind::Call, "PvGenBrowserWnd destroyed");
}

PvResult PvGenBrowserWnd::ShowModal(PvWnd* parent)
{
    return StandIn::current().call("PvGenBrowserWnd.ShowModal", parentText(parent));
}

PvResult PvGenBrowserWnd::Close()
{
    return StandIn::current().call("PvGenBrowserWnd.Close");
}

void PvGenBrowserWnd::SetGenParameterArray(PvGenParameterArray* array)
{
    StandIn& standIn = StandIn::current();
    const std::string name = array == &standIn.camera()   ? "device"
                             : array == &standIn.stream() ? "stream"
                                                          : "other";
    standIn.record(StandIn::Kind::Call, "PvGenBrowserWnd.SetGenParameterArray " + name);
}
