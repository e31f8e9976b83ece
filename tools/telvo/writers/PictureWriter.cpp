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
    mUnwritten.insert(mPut);
    mJobs.push_back({mPut++, std::move(path), std::move(frame)});
    lock.unlock();
    mChanged.notify_all();
}

std::uint64_t PictureWriter::written()
{
    const std::lock_guard guard(mLock);
    return mUnwritten.empty() ? mPut : *mUnwritten.begin();
}

void PictureWriter::finish()
{
    std::unique_lock lock(mLock);
    mChanged.wait(lock, [this] { return mMemory == 0; });
    throwError();
}

void PictureWriter::throwError()
{
    if (mError) {
        std::rethrow_exception(mError);
    }
}

std::exception_ptr PictureWriter::tryToWrite(const Job& job) const
{
    try {
        const Picture picture = renderPicture(job.frame.view(), mStyle);
        writePngFile(job.path, picture.view(), mIfThere);
        return nullptr;
    } catch (...) {
        return std::current_exception();
    }
}

/// A series goes on behind its first picture that is missing, so that those that wait are no use.
void PictureWriter::giveUp(std::exception_ptr error)
{
    mError = mError ? mError : std::move(error);
    for (const Job& job : mJobs) {
        mMemory -= memoryOf(job.frame);
    }
    mJobs.clear();
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
        std::exception_ptr error = tryToWrite(job);
        lock.lock();
        mMemory -= memoryOf(job.frame);
        if (error) {
            giveUp(std::move(error));
        } else {
            mUnwritten.erase(job.number);
        }
        mChanged.notify_all();
    }
}

} // namespace telvo
