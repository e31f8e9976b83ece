#ifndef TELVO_SRC_ACQUISITION_SINGLEIMAGEREAD_H
#define TELVO_SRC_ACQUISITION_SINGLEIMAGEREAD_H

#include "PvStream.h"

#include <functional>

/// One attempt to read one image out of the camera's memory.
struct SingleImageRead {
    enum class End {
        Complete,
        NotQueued,     ///< the stream did not take the buffer
        InternalError, ///< the buffer came back, its image damaged
        ExternalError, ///< the buffer did not come back: see takeBack()
    };
    End end;
    PvResult error; ///< of an internal or external error
};

/// Queues the buffer, calls `request`, which asks the camera for the image, and waits for it.
SingleImageRead readSingleImage(PvStream& stream, PvBuffer& buffer,
                                const std::function<void()>& request);

/// Gets a buffer that did not come back out of the stream.
void takeBack(PvStream& stream);

#endif
