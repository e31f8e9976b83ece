#ifndef TELVO_SRC_GRABBER_RECORDEDBLOCK_H
#define TELVO_SRC_GRABBER_RECORDEDBLOCK_H

#include "FrameCounterCheck.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>
#include <vector>

/// The block that the host reads, of one block transfer. Whoever collects it shares it, so that a
/// stop from another thread frees nothing that is in use. The collecting thread alone writes it.
struct RecordedBlock {
    std::uint32_t frameSize = 0;      ///< bytes per frame, as it was when the transfer started
    std::vector<std::uint8_t> data{}; ///< the block last collected
    FrameCounterCheck counterCheck{};

    /// Makes room for so many bytes. @return false: there is no memory for them
    [[nodiscard]] bool reserve(std::size_t size)
    {
        try {
            data.resize(std::max(size, data.size()));
            return true;
        } catch (const std::bad_alloc&) {
            return false;
        }
    }
};

#endif
