#ifndef TELVO_SRC_GRABBER_RECORDEDBLOCK_H
#define TELVO_SRC_GRABBER_RECORDEDBLOCK_H

#include "FrameCounterCheck.h"

#include <cstdint>
#include <vector>

/// The block transfer as the host's thread sees it.
struct RecordedBlock {
    std::vector<std::uint8_t> data; ///< the block last collected; empty outside a transfer
    std::uint32_t frameSize = 0;    ///< bytes per frame, as it was when the transfer started
    std::int32_t currentSequence = 0;
    FrameCounterCheck counterCheck;
};

#endif
