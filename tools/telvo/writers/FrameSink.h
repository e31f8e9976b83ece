#ifndef TELVO_TOOLS_TELVO_WRITERS_FRAMESINK_H
#define TELVO_TOOLS_TELVO_WRITERS_FRAMESINK_H

#include "GrayImage.h"

#include <cstdint>

namespace telvo
{

/// Where a series of frames goes. What is not finished leaves no half-written file. After a Failure
/// of put() or flush(), the frames that are written may still be finished.
class FrameSink
{
  public:
    FrameSink() = default;
    virtual ~FrameSink() = default;
    FrameSink(const FrameSink&) = delete;
    FrameSink& operator=(const FrameSink&) = delete;

    /// The series' next frame as the camera delivers it, under its number. All have one size.
    /// Throws Failure.
    virtual void put(std::uint64_t number, GrayView frame) = 0;
    /// Waits until all frames are with the system. Throws Failure.
    virtual void flush() = 0;
    /// How many of the frames, from the first on, stay whatever becomes of this process, so that
    /// the series can be continued behind them. 0 for one that cannot.
    virtual std::uint64_t written() = 0;
    /// All is safely written when this returns. Throws Failure.
    virtual void finish() = 0;
};

} // namespace telvo

#endif
