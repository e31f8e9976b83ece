#ifndef TELVO_SRC_ACQUISITION_PIPELINEDRAIN_H
#define TELVO_SRC_ACQUISITION_PIPELINEDRAIN_H

#include "LogText.h"
#include "StoppablePipeline.h"

#include <cstdint>
#include <functional>

struct Drained {
    std::int32_t passes;  ///< retrievals made
    std::int32_t buffers; ///< of them successful
};

/**
 * Takes the frames of a failed request that are still on their way out of the pipeline, before the
 * request is repeated: until eleven short waits in a row bring nothing, or five times as many
 * passes as frames are missing (at least 50) have been made.
 * @param ordered   frames of the request
 * @param acquired  frames that have come before the error
 * @param pausing   logged with the milliseconds before each longer pause
 * @param isStopRequested  ends it early
 */
Drained drainPipeline(StoppablePipeline& pipeline, std::int32_t ordered, std::int32_t acquired,
                      const LogText<std::int32_t>& pausing,
                      const std::function<bool()>& isStopRequested);

#endif
