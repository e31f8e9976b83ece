#include "PvWnd.h"

#include "DeviceFinder.h"
#include "ParameterBrowser.h"

#include <exception>

using gige::ui::FeatureSource;

namespace
{

/// The host's thread is in here: without memory or threads for a window there is none.
template <typename Show>
PvResult showOrAbort(Show show)
{
    try {
        return show() ? PvResult::Code::Ok : PvResult::Code::Aborted;
    } catch (const std::exception&) {
        return PvResult::Code::Aborted;
    }
}

} // namespace

class PvDeviceFinderWnd::Impl
{
  public:
    bool show()
    {
        mSelected.reset();
        if (const auto device = gige::ui::chooseDevice()) {
            mSelected.emplace(toText(device->mac), toText(device->ip));
        }
        return mSelected.has_value();
    }

    const PvDeviceInfo* selected() const { return mSelected ? &*mSelected : nullptr; }

  private:
    std::optional<PvDeviceInfo> mSelected;
};

PvDeviceFinderWnd::PvDeviceFinderWnd() : mImpl(std::make_unique<Impl>()) {}
PvDeviceFinderWnd::~PvDeviceFinderWnd() = default;

PvResult PvDeviceFinderWnd::ShowModal(PvWnd* /*parent*/)
{
    return showOrAbort([this] { return mImpl->show(); });
}

/// A modal window is closed already when its caller gets here.
PvResult PvDeviceFinderWnd::Close()
{
    return PvResult::Code::Ok;
}

const PvDeviceInfo* PvDeviceFinderWnd::GetSelected() const
{
    return mImpl->selected();
}

class PvGenBrowserWnd::Impl
{
  public:
    void setSource(FeatureSource* source) { mSource = source; }
    bool show() { return mSource != nullptr && gige::ui::browseParameters(*mSource); }

  private:
    FeatureSource* mSource = nullptr;
};

PvGenBrowserWnd::PvGenBrowserWnd() : mImpl(std::make_unique<Impl>()) {}
PvGenBrowserWnd::~PvGenBrowserWnd() = default;

PvResult PvGenBrowserWnd::ShowModal(PvWnd* /*parent*/)
{
    return showOrAbort([this] { return mImpl->show(); });
}

PvResult PvGenBrowserWnd::Close()
{
    return PvResult::Code::Ok;
}

void PvGenBrowserWnd::SetGenParameterArray(PvGenParameterArray* array)
{
    mImpl->setSource(dynamic_cast<FeatureSource*>(array)); // every array of this stack is one
}
