#include "CameraProcess.h"

#include "Require.h"
#include "VirtualCamera.h"

#include <atomic>
#include <chrono>
#include <csignal>
#include <list>
#include <new>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace
{

constexpr std::chrono::milliseconds kReportTime{2};

bool startAll(std::list<camera::VirtualCamera>& running,
              const std::vector<camera::CameraOptions>& cameras)
{
    for (const camera::CameraOptions& options : cameras) {
        if (running.emplace_back(options).start()) {
            return false;
        }
    }
    return true;
}

} // namespace

/// Seen by both processes.
struct CameraProcess::Shared {
    enum class State : int { Starting, Running, Failed };

    std::atomic<State> state = State::Starting;
    std::atomic<std::uint64_t> bytes = 0;

    [[noreturn]] void run(const std::vector<camera::CameraOptions>& cameras)
    {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        std::list<camera::VirtualCamera> running;
        state = startAll(running, cameras) ? State::Running : State::Failed;
        while (state == State::Running) {
            std::uint64_t sum = 0;
            for (const camera::VirtualCamera& each : running) {
                sum += each.log().bytes;
            }
            bytes = sum;
            std::this_thread::sleep_for(kReportTime);
        }
        _exit(1);
    }
};

CameraProcess::CameraProcess(const std::vector<camera::CameraOptions>& cameras)
{
    void* const memory =
        mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    require(memory != MAP_FAILED, "sharing memory");
    mShared = new (memory) Shared;
    mProcess = fork();
    require(mProcess >= 0, "starting a process");
    if (mProcess == 0) {
        mShared->run(cameras);
    }
    while (mShared->state == Shared::State::Starting) {
        std::this_thread::sleep_for(kReportTime);
    }
    require(mShared->state == Shared::State::Running, "starting the cameras");
}

CameraProcess::~CameraProcess()
{
    kill(mProcess, SIGKILL);
    waitpid(mProcess, nullptr, 0);
    munmap(mShared, sizeof(Shared));
}

std::uint64_t CameraProcess::bytesSent() const
{
    return mShared->bytes;
}
