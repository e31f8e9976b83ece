#ifndef TELVO_GIGE_UI_DEVICEFINDER_H
#define TELVO_GIGE_UI_DEVICEFINDER_H

#include "DeviceList.h"
#include "Discovery.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string>
#include <thread>
#include <vector>

namespace gige::ui
{

/// Searches the network for cameras, round after round, on a thread of its own that ends with the
/// object. Threads: any; mLock guards the members behind it.
class DeviceFinder
{
  public:
    struct Snapshot {
        std::vector<ListedDevice> devices;
        std::optional<std::size_t> selectedRow;
        bool isSearching = true; ///< a round is under way
    };

    /// @param changed  called on the finder's thread when there is something new to show; must not
    /// wait for the thread that destroys the finder
    explicit DeviceFinder(std::function<void()> changed);

    Snapshot snapshot() const;
    std::optional<ListedDevice> selected() const;
    void select(const wire::MacAddress& mac);
    /// Begins the next round at once.
    void refresh();

  private:
    void search(const std::stop_token& stop);
    void searchOnce(const std::stop_token& stop);
    void pause(std::stop_token stop);
    template <typename Change>
    void change(Change operation);

    std::function<void()> mChanged;
    mutable std::mutex mLock;
    std::condition_variable_any mWake;
    DeviceList mList;
    bool mIsSearching = true;
    bool mRefreshWanted = false;
    std::jthread mThread; // last: it uses all of the above
};

/// The line below the list: what to know of the selected camera, or how the search goes.
std::string finderHint(const DeviceFinder::Snapshot& snapshot);

/// Shows the finder's window, or dialog on the terminal, until the user has decided.
/// @return none: the user cancelled, or there is nothing to show the finder on
std::optional<ListedDevice> chooseDevice();

} // namespace gige::ui

#endif
