#ifndef TELVO_TOOLS_TELVO_WRITERS_FRAMESINK_H
#define TELVO_TOOLS_TELVO_WRITERS_FRAMESINK_H

#include "GrayImage.h"

#include <cstdint>

namespace telvo
{

/// Where a series of frames goes. What is not finished leaves no half-written file.
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
    /// All is safely written when this returns. Throws Failure.
    virtual void finish() = 0;
};

} // namespace telvo

#endif
