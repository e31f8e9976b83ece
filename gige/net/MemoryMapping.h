/// Linux only.
#ifndef TELVO_GIGE_NET_MEMORYMAPPING_H
#define TELVO_GIGE_NET_MEMORYMAPPING_H

#include <cstddef>
#include <cstdint>
#include <sys/mman.h>
#include <utility>

namespace gige::net
{

/// Owns memory that is mapped into this process.
class MemoryMapping
{
  public:
    MemoryMapping() = default;
    /// @param start  what mmap returned
    MemoryMapping(void* start, std::size_t size)
        : mStart(start == MAP_FAILED ? nullptr : start), mSize(size)
    {
    }
    ~MemoryMapping() { reset(); }
    MemoryMapping(MemoryMapping&& other) noexcept
        : mStart(std::exchange(other.mStart, nullptr)), mSize(other.mSize)
    {
    }
    MemoryMapping& operator=(MemoryMapping&& other) noexcept
    {
        reset();
        mStart = std::exchange(other.mStart, nullptr);
        mSize = other.mSize;
        return *this;
    }
    MemoryMapping(const MemoryMapping&) = delete;
    MemoryMapping& operator=(const MemoryMapping&) = delete;

    explicit operator bool() const { return mStart != nullptr; }
    std::uint8_t* get() const { return static_cast<std::uint8_t*>(mStart); }
    void reset()
    {
        if (mStart != nullptr) {
            munmap(std::exchange(mStart, nullptr), mSize);
        }
    }

  private:
    void* mStart = nullptr;
    std::size_t mSize = 0; // bytes
};

} // namespace gige::net

#endif
