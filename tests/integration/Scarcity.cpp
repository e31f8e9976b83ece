#include "Scarcity.h"

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <ctime>
#include <dlfcn.h>
#include <limits>
#include <new>
#include <pthread.h>

namespace
{

constexpr long kPlenty = std::numeric_limits<long>::max() / 2;

/// So many may be had, then so many are refused.
struct Supply {
    std::atomic<long> left{kPlenty};
    std::atomic<long> refusals{0};
    std::atomic<bool> hasRefused{false};

    void set(long granted, long refused)
    {
        hasRefused = false;
        refusals = refused;
        left = granted;
    }

    bool take()
    {
        if (left.fetch_sub(1) > 0 || refusals.fetch_sub(1) <= 0) {
            return true;
        }
        hasRefused = true;
        return false;
    }
};

constinit Supply memory;
constinit Supply threads;

} // namespace

namespace scarcity
{

void leaveAllocations(long count)
{
    memory.set(count, kPlenty);
}

void failAllocationAfter(long count)
{
    memory.set(count, 1);
}

void leaveThreads(long count)
{
    threads.set(count, kPlenty);
}

bool end()
{
    const bool hasRefused = memory.hasRefused || threads.hasRefused;
    memory.set(kPlenty, 0);
    threads.set(kPlenty, 0);
    return hasRefused;
}

} // namespace scarcity

void* operator new(std::size_t size)
{
    void* const allocated = memory.take() ? std::malloc(size == 0 ? 1 : size) : nullptr;
    if (allocated == nullptr) {
        throw std::bad_alloc();
    }
    return allocated;
}

void operator delete(void* allocated) noexcept
{
    std::free(allocated);
}

void operator delete(void* allocated, std::size_t /*size*/) noexcept
{
    std::free(allocated);
}

extern "C" int pthread_create(pthread_t* thread, const pthread_attr_t* attributes,
                              void* (*start)(void*), void* argument)
{
    static const auto create =
        reinterpret_cast<decltype(&pthread_create)>(dlsym(RTLD_NEXT, "pthread_create"));
    return threads.take() ? create(thread, attributes, start, argument) : EAGAIN;
}

extern "C" int nanosleep(const timespec* /*time*/, timespec* /*left*/)
{
    return 0;
}
