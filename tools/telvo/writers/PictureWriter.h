#ifndef TELVO_TOOLS_TELVO_WRITERS_PICTUREWRITER_H
#define TELVO_TOOLS_TELVO_WRITERS_PICTUREWRITER_H

#include "OutputFile.h"
#include "PictureStyle.h"

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <exception>
#include <filesystem>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

namespace telvo
{

/**
 * Writes frames as PNG files on all of the machine's cores, so that compressing one does not make
 * the camera's next be missed. What waits and is worked on takes kMemory at most; put() then waits.
 * Threads: put() and finish() on one thread; mLock guards the members below it.
 */
class PictureWriter
{
  public:
    static constexpr std::size_t kMemory = std::size_t{128} << 20; // bytes

    explicit PictureWriter(const PictureStyle& style = {}, IfThere ifThere = IfThere::Refuse);
    /// Drops the frames that still wait.
    ~PictureWriter();
    PictureWriter(const PictureWriter&) = delete;
    PictureWriter& operator=(const PictureWriter&) = delete;

    /// Takes the frame for writing. Throws the Failure of an earlier one.
    void put(std::filesystem::path path, GrayImage frame);

    /// How many are written, from the first on without a gap.
    std::uint64_t written();

    /// Waits until all are written, or given up since one could not be. Throws the Failure of that
    /// one.
    void finish();

  private:
    struct Job {
        std::uint64_t number = 0; // of the frames that were put
        std::filesystem::path path;
        GrayImage frame;
    };

    void run();
    std::size_t memoryOf(const GrayImage& frame) const;
    std::exception_ptr tryToWrite(const Job& job) const;
    void giveUp(std::exception_ptr error);
    void throwError();

    const PictureStyle mStyle;
    const IfThere mIfThere;
    std::mutex mLock;
    std::condition_variable mChanged;
    std::deque<Job> mJobs;              // waiting
    std::size_t mMemory = 0;            // of those that wait and those being written
    std::uint64_t mPut = 0;             // frames
    std::set<std::uint64_t> mUnwritten; // of them
    std::exception_ptr mError;
    bool mEnded = false;
    std::vector<std::jthread> mThreads; // last: they use all of the above
};

} // namespace telvo

#endif
