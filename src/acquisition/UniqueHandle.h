#ifndef TELVO_SRC_ACQUISITION_UNIQUEHANDLE_H
#define TELVO_SRC_ACQUISITION_UNIQUEHANDLE_H

#include "Kernel.h"

#include <utility>

/// Owns a kernel handle and closes it.
class UniqueHandle
{
  public:
    /// @param handle  what CreateThread or CreateEventA returned: null, their failure, is empty
    explicit UniqueHandle(HANDLE handle = nullptr) : mHandle(handle) {}
    ~UniqueHandle() { reset(); }
    UniqueHandle(UniqueHandle&& other) noexcept : mHandle(other.release()) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept
    {
        reset();
        mHandle = other.release();
        return *this;
    }
    UniqueHandle(const UniqueHandle&) = delete;
    UniqueHandle& operator=(const UniqueHandle&) = delete;

    HANDLE get() const { return mHandle; }
    explicit operator bool() const { return mHandle != nullptr; }
    HANDLE release() { return std::exchange(mHandle, nullptr); }
    void reset()
    {
        if (*this) {
            CloseHandle(release());
        }
    }

  private:
    HANDLE mHandle;
};

#endif
