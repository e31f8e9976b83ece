#ifndef TELVO_SRC_ACQUISITION_RECORDEDBLOCK_H
#define TELVO_SRC_ACQUISITION_RECORDEDBLOCK_H

#include "FrameCounterCheck.h"
#include "HostMemory.h"

#include <cstdint>

/// The block that the host reads, of one block transfer. Whoever collects it shares it, so that a
/// stop from another thread frees nothing that is in use. The collecting thread alone writes it.
struct RecordedBlock {
    std::uint32_t frameSize = 0; ///< bytes per frame, as it was when the transfer started
    HostMemory data{};           ///< the block last collected
    FrameCounterCheck counterCheck{};
};

#endif
