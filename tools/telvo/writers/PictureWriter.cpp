#include "PictureWriter.h"

#include "PngFile.h"

#include <algorithm>
#include <utility>

namespace telvo
{

PictureWriter::PictureWriter(const PictureStyle& style, IfThere ifThere)
    : mStyle(style), mIfThere(ifThere)
{
    const unsigned cores = std::max(1U, std::thread::hardware_concurrency());
    for (unsigned i = 0; i < cores; ++i) {
        mThreads.emplace_back([this] { run(); });
    }
}

PictureWriter::~PictureWriter()
{
    {
        const std::lock_guard guard(mLock);
        mEnded = true;
    }
    mChanged.notify_all();
}

/// The frame, its picture, and the file's bytes, which may be more where nothing can be squeezed.
std::size_t PictureWriter::memoryOf(const GrayImage& frame) const
{
    return frame.pixels.size() * (1 + 2 * mStyle.channels());
}

void PictureWriter::put(std::filesystem::path path, GrayImage frame)
{
    const std::size_t memory = memoryOf(frame);
    std::unique_lock lock(mLock);
    mChanged.wait(lock, [&] { return mError || mMemory == 0 || mMemory + memory <= kMemory; });
    throwError();
    mMemory += memory;
    mJobs.push_back({std::move(path), std::move(frame)});
    lock.unlock();
    mChanged.notify_all();
}

void PictureWriter::finish()
{
    std::unique_lock lock(mLock);
    mChanged.wait(lock, [this] { return mError || mMemory == 0; });
    throwError();
}

void PictureWriter::throwError()
{
    if (mError) {
        std::rethrow_exception(mError);
    }
}

void PictureWriter::write(const Job& job) const
{
    const Picture picture = renderPicture(job.frame.view(), mStyle);
    writePngFile(job.path, picture.view(), mIfThere);
}

void PictureWriter::run()
{
    std::unique_lock lock(mLock);
    for (;;) {
        mChanged.wait(lock, [this] { return mEnded || !mJobs.empty(); });
        if (mEnded) {
            return;
        }
        const Job job = std::move(mJobs.front());
        mJobs.pop_front();
        lock.unlock();
        std::exception_ptr error;
        try {
            write(job);
        } catch (...) {
            error = std::current_exception();
        }
        lock.lock();
        mMemory -= memoryOf(job.frame);
        if (error && !mError) {
            mError = error;
            mEnded = true;
        }
        mChanged.notify_all();
    }
}

} // namespace telvo
