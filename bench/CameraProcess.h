#ifndef TELVO_BENCH_CAMERAPROCESS_H
#define TELVO_BENCH_CAMERAPROCESS_H

#include "CameraOptions.h"

#include <cstdint>
#include <sys/types.h>
#include <vector>

/// Virtual cameras in a process of their own, so that what a process uses of the processor is the
/// host's alone. To be made while the program has one thread.
class CameraProcess
{
  public:
    /// @throws std::runtime_error if a camera does not start
    explicit CameraProcess(const std::vector<camera::CameraOptions>& cameras);
    ~CameraProcess();
    CameraProcess(const CameraProcess&) = delete;
    CameraProcess& operator=(const CameraProcess&) = delete;

    /// Image bytes that all of them have sent.
    std::uint64_t bytesSent() const;

  private:
    struct Shared;

    Shared* mShared;
    pid_t mProcess;
};

#endif
