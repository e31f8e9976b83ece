#include "BatchReceiver.h"

namespace gige::net
{

ReceiveStatus BatchReceiver::receive(Timeout timeout, const Waker* waker)
{
    mRunCount = 0;
    mMayHaveMore = false;
    ReceiveStatus status = take();
    if (status == ReceiveStatus::TimedOut) {
        status = wait(timeout, waker);
        if (status == ReceiveStatus::Data) {
            status = take();
        }
    }
    return status;
}

} // namespace gige::net
