#include "AnyExport.h"

#include "TelvoDll.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace
{

constexpr std::uint8_t kMark = 0xA5;
using Memory = std::array<std::uint8_t, 64>; // as long as the settings block, for every pointer

template <typename Argument>
constexpr bool kIsDataPointer =
    std::is_pointer_v<Argument> && !std::is_function_v<std::remove_pointer_t<Argument>> &&
    !std::is_void_v<std::remove_pointer_t<Argument>>;

/// An argument made of marked memory, or of the camera id.
template <typename Argument>
Argument makeArgument(Memory& memory, std::int32_t cameraId, bool null)
{
    if constexpr (std::is_same_v<Argument, const char*>) {
        memory = {'k', 'e', 'y', '\0'};
        return null ? nullptr : reinterpret_cast<const char*>(memory.data());
    } else if constexpr (kIsDataPointer<Argument>) {
        return null ? nullptr : reinterpret_cast<Argument>(memory.data());
    } else if constexpr (std::is_pointer_v<Argument>) {
        return nullptr;
    } else {
        return static_cast<Argument>(cameraId);
    }
}

template <typename Result, typename... Arguments, std::size_t... Indices>
Attempt attempt(Result (*function)(Arguments...), std::int32_t cameraId,
                std::optional<std::size_t> nullPointer, std::index_sequence<Indices...> /*all*/)
{
    alignas(std::uint64_t) std::array<Memory, sizeof...(Arguments)> memory;
    for (Memory& part : memory) {
        part.fill(kMark);
    }
    const std::tuple<Arguments...> arguments{makeArgument<Arguments>(
        memory[Indices], cameraId, nullPointer == std::optional<std::size_t>(Indices))...};
    const auto before = memory;
    const Result result = std::apply(function, arguments);
    const bool touched = memory != before;
    if constexpr (std::is_pointer_v<Result>) {
        return {static_cast<std::int64_t>(reinterpret_cast<std::intptr_t>(result)), touched};
    } else {
        return {result, touched};
    }
}

template <typename Result, typename... Arguments>
AnyExport row(const char* name, std::int64_t failure, Result (*function)(Arguments...))
{
    return {.name = name,
            .failure = failure,
            .call =
                [=](std::int32_t cameraId, std::optional<std::size_t> nullPointer) {
                    return attempt(function, cameraId, nullPointer,
                                   std::index_sequence_for<Arguments...>{});
                },
            .isPointer = {kIsDataPointer<Arguments>...}};
}

} // namespace

// NOLINTBEGIN(cppcoreguidelines-macro-usage): the name is needed as text too
#define FAILS_WITH_MINUS_1(function) row(#function, -1, function)
#define FAILS_WITH_0(function) row(#function, 0, function)
// NOLINTEND(cppcoreguidelines-macro-usage)

const std::vector<AnyExport>& exportsWithKnownId()
{
    static const std::vector<AnyExport> kExports{
        FAILS_WITH_MINUS_1(expInitializeGrabber),
        FAILS_WITH_MINUS_1(expDisconnectGrabber),
        FAILS_WITH_MINUS_1(expSetChangedCallback),
        FAILS_WITH_MINUS_1(expSetDataAvailableCallback),
        FAILS_WITH_MINUS_1(expGetParam),
        FAILS_WITH_MINUS_1(expIsMultiSequenceModeAvailable),
        FAILS_WITH_0(expGetUsedCameraType),
        FAILS_WITH_MINUS_1(expSetExposureTime),
        FAILS_WITH_MINUS_1(expGetExposureTime),
        FAILS_WITH_MINUS_1(expSetFrameRate),
        FAILS_WITH_MINUS_1(expGetFrameRate),
        FAILS_WITH_MINUS_1(expSetBlacklevel),
        FAILS_WITH_MINUS_1(expGetBlacklevel),
        FAILS_WITH_MINUS_1(expSetGainRaw),
        FAILS_WITH_MINUS_1(expGetGainRaw),
        FAILS_WITH_MINUS_1(expSetWidth),
        FAILS_WITH_MINUS_1(expSetHeight),
        FAILS_WITH_MINUS_1(expSetOffsetX),
        FAILS_WITH_MINUS_1(expSetOffsetY),
        FAILS_WITH_MINUS_1(expGetWidth),
        FAILS_WITH_MINUS_1(expGetHeight),
        FAILS_WITH_MINUS_1(expGetOffset),
        FAILS_WITH_MINUS_1(expGetTemperature),
        FAILS_WITH_MINUS_1(expSetTrailerCounter),
        FAILS_WITH_MINUS_1(expGetTrailerCounter),
        FAILS_WITH_MINUS_1(expEnableExternalTrigger),
        FAILS_WITH_MINUS_1(expIsExternalTriggerEnabled),
        FAILS_WITH_MINUS_1(expSetExternalTriggerPolarity),
        FAILS_WITH_MINUS_1(expGetExternalTriggerPolarity),
        FAILS_WITH_MINUS_1(expEnableSyncIn),
        FAILS_WITH_MINUS_1(expIsSyncInEnabled),
        FAILS_WITH_MINUS_1(expSetSyncInPolarity),
        FAILS_WITH_MINUS_1(expGetSyncInPolarity),
        FAILS_WITH_MINUS_1(expSetSyncOut),
        FAILS_WITH_MINUS_1(expGetSyncOut),
        FAILS_WITH_MINUS_1(expSetSyncARMPolarity),
        FAILS_WITH_MINUS_1(expGetSyncARMPolarity),
        FAILS_WITH_MINUS_1(expEnableDecimationMode),
        FAILS_WITH_MINUS_1(expIsDecimationModeEnabled),
        FAILS_WITH_MINUS_1(expEnableRecordStandby),
        FAILS_WITH_MINUS_1(expIsRecordStandbyEnabled),
        FAILS_WITH_MINUS_1(expSetMultipleSlopeMode),
        FAILS_WITH_MINUS_1(expGetMultipleSlopeMode),
        FAILS_WITH_MINUS_1(expSetMultipleSlopeDual),
        FAILS_WITH_MINUS_1(expGetMultipleSlopeDual),
        FAILS_WITH_MINUS_1(expSetMultipleSlopeTriple),
        FAILS_WITH_MINUS_1(expGetMultipleSlopeTriple),
        FAILS_WITH_MINUS_1(expSetSingleSettingRecordBurstCnt),
        FAILS_WITH_MINUS_1(expGetSingleSettingRecordBurstCnt),
        FAILS_WITH_MINUS_1(expSetSingleSettingRecordWhileTrigger),
        FAILS_WITH_MINUS_1(expGetSingleSettingRecordWhileTrigger),
        FAILS_WITH_MINUS_1(expUpdateTriggerValues),
        FAILS_WITH_MINUS_1(expEnableFrameTrigger),
        FAILS_WITH_MINUS_1(expIsFrameTriggerEnabled),
        FAILS_WITH_MINUS_1(expEnableTriggerWindow),
        FAILS_WITH_MINUS_1(expSetFrameTrigger),
        FAILS_WITH_MINUS_1(expGetFrameTrigger),
        FAILS_WITH_MINUS_1(expSetRecordMode),
        FAILS_WITH_MINUS_1(expGetRecordMode),
        FAILS_WITH_MINUS_1(expSetNumberOfRecordSequences),
        FAILS_WITH_MINUS_1(expGetNumberOfRecordSequences),
        FAILS_WITH_MINUS_1(expGetCurrentNumberOfFramesInSequence),
        FAILS_WITH_MINUS_1(expGetLastRecordDimensions),
        FAILS_WITH_0(expGetNumberOfAllRecordedFrames),
        FAILS_WITH_0(expGetRecordInfo),
        FAILS_WITH_MINUS_1(expIsFlashCardAvailable),
        FAILS_WITH_MINUS_1(expStartWriteToFlash),
        FAILS_WITH_MINUS_1(expStopWriteToFlash),
        FAILS_WITH_MINUS_1(expEnableFlashWriteAfterRecordStop),
        FAILS_WITH_MINUS_1(expIsFlashWriteAfterRecordStopEnabled),
        FAILS_WITH_MINUS_1(expSetRecordAtPowerState),
        FAILS_WITH_MINUS_1(expGetRecordAtPowerState),
        FAILS_WITH_MINUS_1(expIsRecordAtPowerOnAvailable),
        FAILS_WITH_MINUS_1(expSetIRIGBState),
        FAILS_WITH_MINUS_1(expGetIRIGBState),
        FAILS_WITH_MINUS_1(expIsIRIGBAvailable),
        FAILS_WITH_MINUS_1(expIsImageVantoAvailable),
        FAILS_WITH_MINUS_1(expSaveUserSet),
        FAILS_WITH_MINUS_1(expSetUserDefinedName),
        FAILS_WITH_MINUS_1(expSetCustomInformation),
        FAILS_WITH_MINUS_1(expGetCustomInformation),
        FAILS_WITH_MINUS_1(expSetColorInformation),
        FAILS_WITH_MINUS_1(expGetColorInformation),
        FAILS_WITH_MINUS_1(expSetOutputDatarate),
        FAILS_WITH_MINUS_1(expGetOutputDatarate),
        FAILS_WITH_MINUS_1(expSetStreamParam),
        FAILS_WITH_MINUS_1(expGetStreamParam),
        FAILS_WITH_MINUS_1(expSetPackageSize),
        FAILS_WITH_MINUS_1(expGetPackageSize),
        FAILS_WITH_MINUS_1(expShowStreamParams),
        FAILS_WITH_MINUS_1(expShowGEVParams),
        FAILS_WITH_MINUS_1(expStartLiveMode),
        FAILS_WITH_MINUS_1(expStopLiveMode),
        FAILS_WITH_MINUS_1(expPauseLiveMode),
        FAILS_WITH_MINUS_1(expStartRecordMode),
        FAILS_WITH_MINUS_1(expStopRecordMode),
        FAILS_WITH_MINUS_1(expAbortRecording),
        FAILS_WITH_MINUS_1(expIsStateIdle),
        FAILS_WITH_MINUS_1(expIsStateFlashWrite),
        FAILS_WITH_MINUS_1(expIsTrailerRecordingActive),
        FAILS_WITH_0(expGetCurrentNumberOfImages),
        FAILS_WITH_0(expGetPreviewImage),
        FAILS_WITH_0(expGetSingleImage),
        FAILS_WITH_MINUS_1(expGetCurrentRecordingSequence),
        FAILS_WITH_MINUS_1(expGetMaxFramesPerSequence),
        FAILS_WITH_MINUS_1(expSetCurrentStreamSequence),
        FAILS_WITH_0(expGetRecordInfoFramePointer),
        FAILS_WITH_0(expGetFramePointer),
        FAILS_WITH_MINUS_1(expStartFrameBlockTransfer),
        FAILS_WITH_MINUS_1(expStopFrameBlockTransfer),
        FAILS_WITH_MINUS_1(expGetFrameBlockSize),
        FAILS_WITH_MINUS_1(expGetRecordedFrameBlock),
        FAILS_WITH_0(expGetRecordedFrameBlockResult),
        FAILS_WITH_0(expGetRecordedFrameBlockInfo),
        FAILS_WITH_MINUS_1(expAbortCurrentFrameBlockRequest),
        FAILS_WITH_MINUS_1(expReadData),
        FAILS_WITH_MINUS_1(expWriteData),
    };
    return kExports;
}

bool returnsPointer(const std::string& name)
{
    return name == "expGetRecordInfoFramePointer" || name == "expGetFramePointer" ||
           name == "expGetRecordedFrameBlockInfo" || name == "expGetRecordedFrameBlockResult" ||
           name == "expGetPreviewImage" || name == "expGetSingleImage";
}
