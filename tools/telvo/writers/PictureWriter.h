#ifndef TELVO_TOOLS_TELVO_WRITERS_PICTUREWRITER_H
#define TELVO_TOOLS_TELVO_WRITERS_PICTUREWRITER_H

#include "GrayImage.h"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <filesystem>
#include <mutex>
#include <thread>

namespace telvo
{

/**
 * Writes pictures on a thread of its own, so that compressing one does not make the camera's next
 * be missed. At most kQueueBytes wait; put() then waits for the writer.
 * Threads: put() and finish() on one thread; mLock guards the members below it.
 */
class PictureWriter
{
  public:
    static constexpr std::size_t kQueueBytes = std::size_t{256} << 20;

    PictureWriter();
    /// Drops the pictures that still wait.
    ~PictureWriter();
    PictureWriter(const PictureWriter&) = delete;
    PictureWriter& operator=(const PictureWriter&) = delete;

    /// Takes the picture for writing. Throws the Failure of an earlier one.
    void put(std::filesystem::path path, GrayImage image);

    /// Waits until all are written. Throws the first Failure.
    void finish();

  private:
    struct Job {
        std::filesystem::path path;
        GrayImage image;
    };

    void run();
    void throwError();

    std::mutex mLock;
    std::condition_variable mChanged;
    std::deque<Job> mJobs; // the front one is being written
    std::size_t mWaitingBytes = 0;
    std::exception_ptr mError;
    bool mEnded = false;
    std::thread mThread; // last: it uses all of the above
};

} // namespace telvo

#endif
