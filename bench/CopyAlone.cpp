#include "CopyAlone.h"

#include "ProcessUse.h"
#include "Require.h"

#include <algorithm>
#include <csignal>
#include <cstring>
#include <span>
#include <sys/eventfd.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace
{

using Clock = std::chrono::steady_clock;
using Bytes = std::span<std::uint8_t>;

constexpr std::size_t kSharedMemory = std::size_t{32} << 20; // bytes
constexpr std::size_t kHostBuffers = 4; // a host that keeps up uses the same few again and again

/// Pictures in a row, which begins again after the last.
class Pictures
{
  public:
    Pictures(Bytes memory, std::size_t size) : mMemory(memory), mSize(size) {}

    Bytes at(std::uint64_t number) const
    {
        return mMemory.subspan(number % (mMemory.size() / mSize) * mSize, mSize);
    }

  private:
    Bytes mMemory;
    std::size_t mSize;
};

class SharedMemory
{
  public:
    SharedMemory()
        : mStart(mmap(nullptr, kSharedMemory, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS,
                      -1, 0))
    {
        require(mStart != MAP_FAILED, "sharing memory");
    }
    ~SharedMemory() { munmap(mStart, kSharedMemory); }
    SharedMemory(const SharedMemory&) = delete;
    SharedMemory& operator=(const SharedMemory&) = delete;

    Bytes bytes() const { return {static_cast<std::uint8_t*>(mStart), kSharedMemory}; }

  private:
    void* mStart;
};

/// A process that writes pictures at its pace, and counts each.
class Writer
{
  public:
    Writer(const Pictures& pictures, Clock::duration pause) : mWritten(eventfd(0, EFD_CLOEXEC))
    {
        require(mWritten >= 0, "making an event");
        mProcess = fork();
        if (mProcess == 0) {
            run(pictures, pause);
        }
    }
    ~Writer()
    {
        if (mProcess > 0) {
            kill(mProcess, SIGKILL);
            waitpid(mProcess, nullptr, 0);
        }
        close(mWritten);
    }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    bool isRunning() const { return mProcess > 0; }

    /// Waits for more. @return how many pictures have come since the last call
    std::uint64_t awaitMore() const
    {
        std::uint64_t count = 0;
        require(read(mWritten, &count, sizeof count) == sizeof count, "waiting for a picture");
        return count;
    }

  private:
    [[noreturn]] void run(const Pictures& pictures, Clock::duration pause) const
    {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        auto due = Clock::now();
        for (std::uint64_t number = 0;; ++number) {
            std::ranges::fill(pictures.at(number), static_cast<std::uint8_t>(number));
            const std::uint64_t one = 1;
            if (write(mWritten, &one, sizeof one) != sizeof one) {
                _exit(1);
            }
            std::this_thread::sleep_until(due += pause);
        }
    }

    int mWritten;
    pid_t mProcess = -1;
};

void copyPacketwise(Bytes from, Bytes to, std::size_t packetSize)
{
    for (std::size_t at = 0; at < from.size(); at += packetSize) {
        const std::size_t size = std::min(packetSize, from.size() - at);
        std::memcpy(to.data() + at, from.data() + at, size);
    }
}

} // namespace

double copyAlone(std::size_t pictureSize, std::size_t packetSize, std::uint64_t bytesPerSecond,
                 std::chrono::seconds time)
{
    const SharedMemory memory;
    const Pictures written(memory.bytes(), pictureSize);
    std::vector<std::uint8_t> host(kHostBuffers * pictureSize);
    const Pictures wanted(host, pictureSize);
    const Writer writer(written,
                        std::chrono::nanoseconds(pictureSize * 1'000'000'000 / bytesPerSecond));
    require(writer.isRunning(), "starting a process");
    std::uint64_t number = 0;
    const auto copyFor = [&](Clock::duration duration) {
        const std::uint64_t first = number;
        for (const auto end = Clock::now() + duration; Clock::now() < end;) {
            for (std::uint64_t left = writer.awaitMore(); left > 0; --left, ++number) {
                copyPacketwise(written.at(number), wanted.at(number), packetSize);
            }
        }
        return static_cast<double>((number - first) * pictureSize);
    };
    copyFor(std::chrono::seconds(1)); // all memory is there after that
    const double before = cpuSeconds();
    const double bytes = copyFor(time);
    return (cpuSeconds() - before) / bytes;
}
