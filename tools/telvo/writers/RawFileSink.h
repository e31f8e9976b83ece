#ifndef TELVO_TOOLS_TELVO_WRITERS_RAWFILESINK_H
#define TELVO_TOOLS_TELVO_WRITERS_RAWFILESINK_H

#include "FrameSink.h"
#include "OutputFile.h"
#include "PictureStyle.h"

#include <cstdint>
#include <memory>

namespace telvo
{

/// One file of all frames, one after the other, as the camera sent them, headers included; with a
/// style in colours as three bytes a pixel.
class RawFileSink : public FrameSink
{
  public:
    /// @param there  bytes of frames that the file has already; what is behind them is cut off
    /// Throws Failure if the file has fewer.
    RawFileSink(std::unique_ptr<OutputFile> file, const PictureStyle& style,
                std::uint64_t there = 0);
    void put(std::uint64_t number, GrayView frame) override;
    void finish() override;

  private:
    std::unique_ptr<OutputFile> mFile; // never null
    PictureStyle mStyle;
};

} // namespace telvo

#endif
