#ifndef TELVO_SRC_GRABBER_MODESTATE_H
#define TELVO_SRC_GRABBER_MODESTATE_H

#include "Mode.h"

#include <atomic>

/// The mode machine's state. `current` is read by the worker threads, the rest is the host's thread
/// alone.
struct ModeState {
    std::atomic<Mode> current = Mode::Idle;
    /// The camera's "RecordStandby" as it was when recording started.
    bool recordStandbyLatch = false;
    /// The camera's "FlashCardWriteAfterRecordEnable" as last read or written.
    bool flashAfterRecord = false;
    /// `flashAfterRecord` as it was when recording started.
    bool flashAfterRecordLatch = false;
    /// The host stopped the copy to the flash card since recording started.
    bool flashWriteStopped = false;
};

#endif
