#include "PictureWriter.h"

#include "PngFile.h"

#include <utility>

namespace telvo
{

PictureWriter::PictureWriter() : mThread([this] { run(); }) {}

PictureWriter::~PictureWriter()
{
    {
        const std::lock_guard guard(mLock);
        mEnded = true;
    }
    mChanged.notify_all();
    mThread.join();
}

void PictureWriter::put(std::filesystem::path path, GrayImage image)
{
    std::unique_lock lock(mLock);
    mChanged.wait(lock, [this] { return mError || mWaitingBytes < kQueueBytes; });
    throwError();
    mWaitingBytes += image.pixels.size();
    mJobs.push_back({std::move(path), std::move(image)});
    lock.unlock();
    mChanged.notify_all();
}

void PictureWriter::finish()
{
    std::unique_lock lock(mLock);
    mChanged.wait(lock, [this] { return mError || mJobs.empty(); });
    throwError();
}

void PictureWriter::throwError()
{
    if (mError) {
        std::rethrow_exception(mError);
    }
}

void PictureWriter::run()
{
    std::unique_lock lock(mLock);
    for (;;) {
        mChanged.wait(lock, [this] { return mEnded || !mJobs.empty(); });
        if (mEnded) {
            return;
        }
        const Job& job = mJobs.front(); // a deque keeps it in place while others are added
        lock.unlock();
        std::exception_ptr error;
        try {
            writePngFile(job.path, job.image.view());
        } catch (...) {
            error = std::current_exception();
        }
        lock.lock();
        mWaitingBytes -= job.image.pixels.size();
        mJobs.pop_front();
        if (error) {
            mError = error;
            mEnded = true;
        }
        mChanged.notify_all();
    }
}

} // namespace telvo
