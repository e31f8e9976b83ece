#include "SingleImageRead.h"

SingleImageRead readSingleImage(PvStream& stream, PvBuffer& buffer,
                                const std::function<void()>& request)
{
    using Outcome = SingleImageRead::Outcome;
    if (!stream.QueueBuffer(&buffer).IsPending()) {
        return {.outcome = Outcome::NotQueued, .error = {}};
    }
    request();
    PvBuffer* retrieved = nullptr;
    PvResult operation;
    const PvResult retrieval = stream.RetrieveBuffer(&retrieved, &operation);
    if (!retrieval.IsOK()) {
        return {.outcome = Outcome::ExternalError, .error = retrieval};
    }
    if (!operation.IsOK()) {
        return {.outcome = Outcome::InternalError, .error = operation};
    }
    return {.outcome = Outcome::Complete, .error = {}};
}

void takeBack(PvStream& stream)
{
    stream.AbortQueuedBuffers();
    PvBuffer* retrieved = nullptr;
    PvResult operation;
    stream.RetrieveBuffer(&retrieved, &operation);
}
