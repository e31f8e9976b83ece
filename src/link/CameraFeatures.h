#ifndef TELVO_SRC_LINK_CAMERAFEATURES_H
#define TELVO_SRC_LINK_CAMERAFEATURES_H

#include "FeatureHandles.h"
#include "PvDevice.h"

#include <cstddef>

/// @return the parameter of that name and type; null when the array has no such one
template <typename T>
T* findParameter(PvGenParameterArray* parameters, const char* name)
{
    return parameters == nullptr ? nullptr : dynamic_cast<T*>(parameters->Get(PvString(name)));
}

/// Starts a camera command, if the camera has it. Its outcome shows in the camera's state only.
inline void execute(PvGenCommand* command)
{
    if (command != nullptr) {
        (void)command->Execute();
    }
}

/// Names a feature for an accessor: a handle bound at initialisation, or one looked up by name on
/// every call.
template <typename T>
class Feature
{
  public:
    constexpr Feature(T* FeatureHandles::*handle) : mHandle(handle) {}
    template <std::size_t Size>
    constexpr Feature(const char (&name)[Size]) : mName(name)
    {
    }

  private:
    friend class CameraFeatures;
    T* FeatureHandles::*mHandle = nullptr;
    const char* mName = nullptr;
};

/// The features of one camera.
class CameraFeatures
{
  public:
    /// @param device  borrowed for this object's life
    explicit CameraFeatures(PvDevice& device) : mDevice(device) {}

    /// A camera's features stay the same objects while it is connected, so binding once more writes
    /// nothing: a worker thread may be reading the handles.
    void bind()
    {
        const FeatureHandles found = bindFeatureHandles(mDevice.GetGenParameters());
        if (found != mBound) {
            mBound = found;
        }
    }

    /// Handles as of the last bind; `features->acquisitionStart`.
    const FeatureHandles* operator->() const { return &mBound; }

    /// Looks a feature up by name. @return null when the camera has none of that name and type
    template <typename T>
    T* find(const char* name) const
    {
        return findParameter<T>(mDevice.GetGenParameters(), name);
    }

    /// @return null when the handle is unbound or the camera has no such feature
    template <typename T>
    T* get(const Feature<T>& feature) const
    {
        return feature.mName == nullptr ? mBound.*feature.mHandle : find<T>(feature.mName);
    }

  private:
    PvDevice& mDevice;
    FeatureHandles mBound;
};

#endif
