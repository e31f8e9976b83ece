#include "PictureRenderer.h"

#include <algorithm>
#include <thread>
#include <utility>

namespace telvo
{

namespace
{

/// Pictures in work: one a core, as many as the memory holds, one at least.
std::size_t mostAtOnce(std::size_t frameSize, std::uint32_t channels)
{
    const std::size_t cores = std::max(1U, std::thread::hardware_concurrency());
    const std::size_t size = std::max<std::size_t>(1, frameSize * (1 + channels));
    return std::max<std::size_t>(1, std::min(cores, PictureRenderer::kMemory / size));
}

} // namespace

PictureRenderer::PictureRenderer(const PictureStyle& style, Take take)
    : mStyle(style), mTake(std::move(take))
{
}

void PictureRenderer::put(GrayView frame)
{
    if (!mStyle.colour) { // less work than a thread is
        return mTake(renderPicture(frame, mStyle).view());
    }
    mRunning.push_back(std::async(std::launch::async, [image = GrayImage(frame), style = mStyle] {
        return renderPicture(image.view(), style);
    }));
    while (mRunning.size() >= mostAtOnce(frame.pixels.size(), mStyle.channels())) {
        takeFirst();
    }
}

void PictureRenderer::flush()
{
    while (!mRunning.empty()) {
        takeFirst();
    }
}

void PictureRenderer::takeFirst()
{
    try {
        const Picture picture = mRunning.front().get();
        mRunning.pop_front();
        mTake(picture.view());
    } catch (...) {
        mRunning.clear(); // behind a gap they are no use
        throw;
    }
}

} // namespace telvo
