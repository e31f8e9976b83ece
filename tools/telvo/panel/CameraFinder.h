#ifndef TELVO_TOOLS_TELVO_PANEL_CAMERAFINDER_H
#define TELVO_TOOLS_TELVO_PANEL_CAMERAFINDER_H

#include "CameraAddress.h"
#include "CameraSearch.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace telvo
{

/// A camera that answered.
struct FoundCamera {
    CameraAddress address;
    bool isFree = false; // nobody controls it, and this machine reaches it
};

/**
 * Looks for cameras on a thread of its own, whenever it is asked to. search() may be called on any
 * thread; mLock guards mIsAsked.
 */
class CameraFinder
{
  public:
    using Found = std::function<void(const std::vector<FoundCamera>&)>;
    using Failed = std::function<void(const std::string& reason)>;

    /// Both are called on the finder's thread.
    CameraFinder(SearchOptions options, Found found, Failed failed);
    ~CameraFinder();
    CameraFinder(const CameraFinder&) = delete;
    CameraFinder& operator=(const CameraFinder&) = delete;

    void search();

  private:
    void run(const std::stop_token& stop);
    void look();

    const SearchOptions mOptions;
    const Found mFound;
    const Failed mFailed;
    std::mutex mLock;
    std::condition_variable_any mChanged;
    bool mIsAsked = false;
    std::jthread mThread; // last: it uses all of the above
};

} // namespace telvo

#endif
