#include "RawFileSink.h"

#include "Failure.h"

#include <utility>

namespace telvo
{

RawFileSink::RawFileSink(std::unique_ptr<OutputFile> file, const PictureStyle& style,
                         std::uint64_t there)
    : mFile(std::move(file)),
      mStyle(style),
      mThere(there),
      mRenderer(style, [this](PictureView picture) { mFile->write(picture.pixels); })
{
    if (!mFile->isFile()) {
        return;
    }
    if (mFile->size() < there) {
        throw Failure("the file is shorter than it was; download it anew");
    }
    mFile->resize(there);
}

/// What fails leaves the file with whole frames.
template <typename Work>
void RawFileSink::orKeepWhole(Work work)
{
    try {
        work();
    } catch (const Failure&) {
        if (mFile->isFile() && mFrameSize > 0) {
            mFile->keepWritten();
            mFile->resize(mThere + written() * mFrameSize);
        }
        throw;
    }
}

void RawFileSink::put(std::uint64_t /*number*/, GrayView frame)
{
    mFrameSize = frame.pixels.size() * mStyle.channels();
    orKeepWhole([&] {
        if (mStyle.colour) {
            mRenderer.put(frame);
        } else {
            mFile->write(frame.pixels);
        }
    });
}

void RawFileSink::flush()
{
    orKeepWhole([&] {
        mRenderer.flush();
        mFile->flush();
    });
}

std::uint64_t RawFileSink::written()
{
    return mFile->isFile() && mFrameSize > 0 ? (mFile->written() - mThere) / mFrameSize : 0;
}

void RawFileSink::finish()
{
    flush();
    mFile->sync();
    mFile->commit();
}

} // namespace telvo
