#ifndef TELVO_GIGE_NET_WAKER_H
#define TELVO_GIGE_NET_WAKER_H

#include "SocketHandle.h"

namespace gige::net
{

/// Ends a wait for datagrams from another thread. wake() may be called from any thread; every wait
/// that is given this waker then ends at once, until clear() is called.
class Waker
{
  public:
    /// Not valid when the system has no descriptors left.
    Waker();
    bool isValid() const { return static_cast<bool>(mHandle); }

    void wake();
    void clear();

    /// For the waits.
    NativeSocket handle() const { return mHandle.get(); }

  private:
    SocketHandle mHandle; // an event counter, or a loopback socket connected to itself
};

} // namespace gige::net

#endif
