#include "UserSetLoad.h"

#include "CameraSession.h"
#include "ToolError.h"

#include "PvDevice.h"

namespace telvo
{

namespace
{

void requireRest(const CameraAddress& camera)
{
    const CameraLook look = lookAt(camera);
    if (const auto host = look.controllingHost()) {
        throw Failure(heldByOther(camera, *host));
    }
    if (look.text("CameraState").value_or("Idle") != "Idle") {
        throw Failure("the camera is busy; 'telvo state' shows with what, 'telvo stop' and 'telvo "
                      "flash stop' end it");
    }
}

template <typename Feature>
Feature& requireFeature(PvGenParameterArray& features, const char* name)
{
    auto* const feature = dynamic_cast<Feature*>(features.Get(name));
    if (feature == nullptr) {
        throw Failure("the camera lacks the feature \"" + std::string(name) +
                      "\", so that it cannot load a user set; 'telvo settings load' sets it from a "
                      "file");
    }
    return *feature;
}

/// Another set is selected while this lives.
class SelectedSet
{
  public:
    SelectedSet(PvGenEnum& selector, const std::string& set) : mSelector(selector)
    {
        if (!mSelector.GetValue(mBefore).IsOK() || !mSelector.SetValue(PvString(set)).IsOK()) {
            throw Failure("the camera has no user set '" + set +
                          "'; 'telvo browse' shows which it has, under UserSetSelector");
        }
    }
    ~SelectedSet() { (void)mSelector.SetValue(mBefore); }
    SelectedSet(const SelectedSet&) = delete;
    SelectedSet& operator=(const SelectedSet&) = delete;

  private:
    PvGenEnum& mSelector;
    PvString mBefore;
};

} // namespace

void loadUserSet(const CameraAddress& camera, const std::string& set)
{
    requireRest(camera);
    PvDevice device;
    if (!device.Connect(PvString(camera.ip), PvAccessType::Exclusive).IsOK()) {
        throw Failure("cannot connect to the camera at " + camera.ip +
                      "; 'telvo doctor' looks for the reason");
    }
    PvGenParameterArray& features = *device.GetGenParameters();
    auto& load = requireFeature<PvGenCommand>(features, "UserSetLoad");
    const SelectedSet selected(requireFeature<PvGenEnum>(features, "UserSetSelector"), set);
    if (!load.Execute().IsOK()) {
        throw Failure("the camera does not load " + set + "; 'telvo state' shows what it is doing");
    }
}

} // namespace telvo
