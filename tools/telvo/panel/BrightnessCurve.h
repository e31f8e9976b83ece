#ifndef TELVO_TOOLS_TELVO_PANEL_BRIGHTNESSCURVE_H
#define TELVO_TOOLS_TELVO_PANEL_BRIGHTNESSCURVE_H

#include "Json.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <vector>

namespace telvo
{

/// The mean grey value of some of a sequence's frames, evenly spread, as far as they were read.
class BrightnessCurve
{
  public:
    explicit BrightnessCurve(std::uint32_t frames) : mFrames(frames) {}

    /// So many points are wanted. Frames whose mean is known stay.
    void want(std::uint32_t points);
    /// A frame's mean, whether it is a point or not.
    void add(std::uint32_t frame, double mean) { mMeans[frame] = mean; }

    /// A frame to be read; those that halve the gaps come first, so that the whole curve is seen
    /// early. None: all are known.
    std::optional<std::uint32_t> next();

    /// The points that are known, in order, and how many there will be.
    Json json() const;
    bool isWhole() const;

  private:
    std::uint32_t mFrames;
    std::vector<std::uint32_t> mPoints; // frames, in order
    std::vector<std::uint32_t> mOpen;   // in the order in which they are read, the next one last
    std::map<std::uint32_t, double> mMeans;
};

} // namespace telvo

#endif
