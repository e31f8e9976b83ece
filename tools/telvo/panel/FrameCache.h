#ifndef TELVO_TOOLS_TELVO_PANEL_FRAMECACHE_H
#define TELVO_TOOLS_TELVO_PANEL_FRAMECACHE_H

#include "GrayImage.h"

#include <cstddef>
#include <cstdint>
#include <list>
#include <map>
#include <utility>

namespace telvo
{

/// A recorded frame's place in the camera's memory.
struct FramePlace {
    std::uint32_t sequence = 0;
    std::uint32_t frame = 0;
    auto operator<=>(const FramePlace&) const = default;
};

/// Frames that were read, as many as fit; those that were not wanted for longest go first. Of one
/// thread.
class FrameCache
{
  public:
    explicit FrameCache(std::size_t mostBytes) : mMostBytes(mostBytes) {}

    /// Null: it is not there. Valid until the next put().
    const GrayImage* find(FramePlace place);
    bool has(FramePlace place) const { return mFrames.contains(place); }
    /// Even where it is larger than all that fits. @return it
    const GrayImage& put(FramePlace place, GrayImage frame);

  private:
    struct Entry {
        GrayImage frame;
        std::list<FramePlace>::iterator use;
    };

    void makeRoom();

    const std::size_t mMostBytes;
    std::size_t mBytes = 0;
    std::list<FramePlace> mUses; // the last wanted in front
    std::map<FramePlace, Entry> mFrames;
};

} // namespace telvo

#endif
