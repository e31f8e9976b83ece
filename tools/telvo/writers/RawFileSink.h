#ifndef TELVO_TOOLS_TELVO_WRITERS_RAWFILESINK_H
#define TELVO_TOOLS_TELVO_WRITERS_RAWFILESINK_H

#include "FrameSink.h"
#include "OutputFile.h"
#include "PictureRenderer.h"

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
    void flush() override;
    std::uint64_t written() override;
    void finish() override;

  private:
    template <typename Work>
    void orKeepWhole(Work work);

    std::unique_ptr<OutputFile> mFile; // never null
    PictureStyle mStyle;
    std::uint64_t mThere;         // bytes, when it began
    std::uint64_t mFrameSize = 0; // bytes; 0: none came yet
    PictureRenderer mRenderer;
};

} // namespace telvo

#endif
