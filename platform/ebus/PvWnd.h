#ifndef TELVO_PLATFORM_EBUS_PVWND_H
#define TELVO_PLATFORM_EBUS_PVWND_H

#include "PvDeviceInfo.h"
#include "PvGenParameterArray.h"
#include "PvResult.h"

#include <memory>

/// A modal window.
class PvWnd
{
  public:
    PvWnd() = default;
    virtual ~PvWnd() = default;
    PvWnd(const PvWnd&) = delete;
    PvWnd& operator=(const PvWnd&) = delete;

    /// Shows the window and waits until the user closes it.
    /// @param parent  null: none
    /// @return OK when the user confirmed, or closed a window that asks for nothing; ABORTED when
    /// the user cancelled or no window can be shown
    virtual PvResult ShowModal(PvWnd* parent = nullptr) = 0;
    virtual PvResult Close() = 0;
};

/// Lists the cameras of the network and lets the user choose one.
class PvDeviceFinderWnd : public PvWnd
{
  public:
    PvDeviceFinderWnd();
    ~PvDeviceFinderWnd() override;

    PvResult ShowModal(PvWnd* parent = nullptr) override;
    PvResult Close() override;
    /// Null when nothing was chosen; lives as long as the window object.
    const PvDeviceInfo* GetSelected() const;

  private:
    class Impl;
    std::unique_ptr<Impl> mImpl;
};

/// Shows the parameters of an array and lets the user edit them.
class PvGenBrowserWnd : public PvWnd
{
  public:
    PvGenBrowserWnd();
    ~PvGenBrowserWnd() override;

    PvResult ShowModal(PvWnd* parent = nullptr) override;
    PvResult Close() override;
    /// @param array  borrowed while the window is shown
    void SetGenParameterArray(PvGenParameterArray* array);

  private:
    class Impl;
    std::unique_ptr<Impl> mImpl;
};

#endif
