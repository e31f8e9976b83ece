#ifndef TELVO_TOOLS_TELVO_WRITERS_PICTURERENDERER_H
#define TELVO_TOOLS_TELVO_WRITERS_PICTURERENDERER_H

#include "PictureStyle.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <future>

namespace telvo
{

/// Frames into pictures, in colours on all of the machine's cores. The pictures come in the order
/// of the frames, on the caller's thread.
class PictureRenderer
{
  public:
    using Take = std::function<void(PictureView)>;

    static constexpr std::size_t kMemory = std::size_t{32} << 20; // bytes that wait, at most

    /// @param take  gets each picture, which is valid during the call
    PictureRenderer(const PictureStyle& style, Take take);

    /// Gives pictures of earlier frames, too. What take() throws comes out here; the frames that
    /// wait are then dropped.
    void put(GrayView frame);
    /// Gives all that wait. Throws as put().
    void flush();

  private:
    void takeFirst();

    PictureStyle mStyle;
    Take mTake;
    std::deque<std::future<Picture>> mRunning;
};

} // namespace telvo

#endif
