#ifndef TELVO_SRC_ACQUISITION_SHAREDSLOT_H
#define TELVO_SRC_ACQUISITION_SHAREDSLOT_H

#include <memory>
#include <mutex>
#include <utility>

/// Owner of an object that another thread may look at while it is exchanged: whoever got it keeps
/// it alive. Any thread may call anything; mLock guards the pointer.
template <typename T>
class SharedSlot
{
  public:
    std::shared_ptr<T> get() const
    {
        const std::lock_guard lock(mLock);
        return mObject;
    }

    /// The earlier object is released outside the lock.
    void set(std::shared_ptr<T> object)
    {
        const std::lock_guard lock(mLock);
        mObject.swap(object);
    }

  private:
    mutable std::mutex mLock;
    std::shared_ptr<T> mObject;
};

#endif
