#ifndef TELVO_SRC_ACQUISITION_HOSTMEMORY_H
#define TELVO_SRC_ACQUISITION_HOSTMEMORY_H

#include <cstddef>
#include <cstdint>
#include <new>
#include <vector>

/// Memory that the host reads as far as the image size tells it, which may have grown meanwhile.
using HostMemory = std::vector<std::uint8_t>;

/// Makes room for so many bytes, the new ones 0. @return false: there is no memory for them
[[nodiscard]] inline bool growTo(HostMemory& memory, std::size_t size)
{
    try {
        if (memory.size() < size) {
            memory.resize(size);
        }
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

#endif
