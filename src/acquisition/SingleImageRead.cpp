#include "SingleImageRead.h"

SingleImageRead readSingleImage(PvStream& stream, PvBuffer& buffer,
                                const std::function<void()>& request)
{
    using End = SingleImageRead::End;
    if (!stream.QueueBuffer(&buffer).IsPending()) {
        return {.end = End::NotQueued, .error = {}};
    }
    request();
    PvBuffer* retrieved = nullptr;
    PvResult operation;
    const PvResult retrieval = stream.RetrieveBuffer(&retrieved, &operation);
    if (!retrieval.IsOK()) {
        return {.end = End::ExternalError, .error = retrieval};
    }
    if (!operation.IsOK()) {
        return {.end = End::InternalError, .error = operation};
    }
    return {.end = End::Complete, .error = {}};
}

void takeBack(PvStream& stream)
{
    (void)stream.AbortQueuedBuffers();
    PvBuffer* retrieved = nullptr;
    PvResult operation;
    (void)stream.RetrieveBuffer(&retrieved, &operation);
}
