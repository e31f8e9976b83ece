#include "Waker.h"

#include <cstdint>
#include <sys/eventfd.h>
#include <unistd.h>

namespace gige::net
{

Waker::Waker() : mHandle(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {}

void Waker::wake()
{
    const std::uint64_t one = 1;
    // Fails only when the counter is full, and then it is signalled anyway.
    [[maybe_unused]] const auto written = write(mHandle.get(), &one, sizeof one);
}

void Waker::clear()
{
    std::uint64_t count = 0;
    [[maybe_unused]] const auto got = read(mHandle.get(), &count, sizeof count);
}

} // namespace gige::net
