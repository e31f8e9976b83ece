#include "FeatureHandles.h"

#include "CameraFeatures.h"

#include <variant>

namespace
{

using HandleSlot = std::variant<PvGenCommand * FeatureHandles::*, PvGenInteger * FeatureHandles::*,
                                PvGenEnum * FeatureHandles::*, PvGenBoolean * FeatureHandles::*>;

struct Binding {
    const char* name;
    HandleSlot slot;
};

constexpr Binding kBindings[] = {
    {"StreamGetInfoFrame", &FeatureHandles::streamGetInfoFrame},
    {"StreamSingleFrame", &FeatureHandles::streamSingleFrame},
    {"AcquisitionStart", &FeatureHandles::acquisitionStart},
    {"AcquisitionStop", &FeatureHandles::acquisitionStop},
    {"RecordStart", &FeatureHandles::recordStart},
    {"RecordStop", &FeatureHandles::recordStop},
    {"CameraState", &FeatureHandles::cameraState},
    {"ExposureTimeRaw", &FeatureHandles::exposureTimeRaw},
    {"AcquisitionFrameRateRaw", &FeatureHandles::acquisitionFrameRateRaw},
    {"RecordCurrentSequenceNumber", &FeatureHandles::recordCurrentSequenceNumber},
    {"RecordTrailer", &FeatureHandles::recordTrailer},
    {"RecordMaxFramesPerSequence", &FeatureHandles::recordMaxFramesPerSequence},
    {"RecordNumberOfFrames", &FeatureHandles::recordNumberOfFrames},
    {"RecordNumberOfFramesPerSequence", &FeatureHandles::recordNumberOfFramesPerSequence},
    {"BlackLevelRaw", &FeatureHandles::blackLevelRaw},
    {"GainRaw", &FeatureHandles::gainRaw},
    {"AcquisitionSource", &FeatureHandles::acquisitionSource},
    {"MultipleSlopeMode", &FeatureHandles::multipleSlopeMode},
    {"MultipleSlopeDualRaw", &FeatureHandles::multipleSlopeDualRaw},
    {"MultipleSlopeTripleRaw", &FeatureHandles::multipleSlopeTripleRaw},
    {"Temperature", &FeatureHandles::temperature},
    {"ExtTriggerPolarity", &FeatureHandles::extTriggerPolarity},
    {"ExtTriggerEnable", &FeatureHandles::extTriggerEnable},
    {"SyncInEnable", &FeatureHandles::syncInEnable},
    {"SyncInPolarity", &FeatureHandles::syncInPolarity},
    {"SyncOutSelect", &FeatureHandles::syncOutSelect},
    {"SyncARMPolarity", &FeatureHandles::syncARMPolarity},
    {"RecordBurstCnt", &FeatureHandles::recordBurstCnt},
    {"DecimationXY", &FeatureHandles::decimationXY},
    {"RecordStandby", &FeatureHandles::recordStandby},
    {"RecordTrailerRecordingActive", &FeatureHandles::recordTrailerRecordingActive},
    {"UserSetSelector", &FeatureHandles::userSetSelector},
    {"UserSetDefaultSelector", &FeatureHandles::userSetDefaultSelector},
    {"UserSetSave", &FeatureHandles::userSetSave},
};

} // namespace

FeatureHandles bindFeatureHandles(PvGenParameterArray* parameters)
{
    FeatureHandles handles;
    for (const Binding& binding : kBindings) {
        std::visit(
            [&]<typename T>(T* FeatureHandles::*slot) {
                handles.*slot = findParameter<T>(parameters, binding.name);
            },
            binding.slot);
    }
    return handles;
}
