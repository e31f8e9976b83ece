/// POSIX only.
#ifndef TELVO_GIGE_NET_POSIXWAIT_H
#define TELVO_GIGE_NET_POSIXWAIT_H

#include "UdpSocket.h"

namespace gige::net
{

/// Waits until one of the two sockets has something (ReceiveStatus::Data). The waker comes first.
/// @param second  kInvalidSocket: none
ReceiveStatus waitReadable(NativeSocket first, NativeSocket second, Timeout timeout,
                           const Waker* waker);

} // namespace gige::net

#endif
