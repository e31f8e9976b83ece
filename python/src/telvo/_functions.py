"""The library's functions, made from its C header by generate_functions.py; not to be edited."""

from __future__ import annotations

from ctypes import (
    CFUNCTYPE,
    POINTER,
    Structure,
    c_char_p,
    c_double,
    c_int32,
    c_int64,
    c_uint8,
    c_uint32,
    c_uint64,
    c_void_p,
)
from typing import Any

Callback = CFUNCTYPE(None, c_int32)


class ConnectionSettings(Structure):
    """Link settings as the C functions take them."""

    _fields_ = [
        ("useSettings", c_uint8),
        ("reserved1", c_uint8 * 3),
        ("packetSize", c_uint32),
        ("defaultInterPacketDelay", c_uint32),
        ("outputInterPacketDelay", c_uint32),
        ("firstPacketTimeout", c_uint32),
        ("packetTimeout", c_uint32),
        ("requestTimeout", c_uint32),
        ("defaultImageTimeout", c_uint32),
        ("answerTimeout", c_uint32),
        ("heartbeatTimeout", c_uint32),
        ("heartbeatInterval", c_uint32),
        ("maximumPendingResends", c_uint32),
        ("fastReadoutActive", c_uint8),
        ("reserved2", c_uint8 * 3),
        ("requestMode", c_uint32),
        ("outputDataRate", c_uint32),
        ("reserved3", c_uint8 * 4),
    ]


# By name: what comes back, and the parameters' names and types.
FUNCTIONS: dict[str, tuple[Any, dict[str, Any]]] = {
    "expConnectGrabber": (
        c_int32,
        {
            "macAddress": c_char_p,
            "ipAddress": c_char_p,
            "ipConfigurationValid": c_uint8,
            "settings": POINTER(ConnectionSettings),
            "cameraId": c_int32,
        },
    ),
    "expInitializeGrabber": (
        c_int32,
        {
            "settings": POINTER(ConnectionSettings),
            "cameraId": c_int32,
        },
    ),
    "expDisconnectGrabber": (c_int32, {"cameraId": c_int32}),
    "expSetChangedCallback": (c_int32, {"callback": Callback, "cameraId": c_int32}),
    "expSetDataAvailableCallback": (c_int32, {"callback": Callback, "cameraId": c_int32}),
    "expGetParam": (
        c_int32,
        {
            "key": c_char_p,
            "result": c_char_p,
            "resultSize": POINTER(c_uint32),
            "cameraId": c_int32,
        },
    ),
    "expIsMultiSequenceModeAvailable": (
        c_int32,
        {
            "available": POINTER(c_uint8),
            "cameraId": c_int32,
        },
    ),
    "expGetUsedCameraType": (
        c_int32,
        {
            "cameraCase": POINTER(c_uint8),
            "cameraId": c_int32,
            "maxWidth": POINTER(c_uint32),
            "maxHeight": POINTER(c_uint32),
        },
    ),
    "expSetExposureTime": (c_int32, {"value": c_uint32, "cameraId": c_int32}),
    "expGetExposureTime": (
        c_int32,
        {
            "minimum": POINTER(c_uint32),
            "maximum": POINTER(c_uint32),
            "value": POINTER(c_uint32),
            "cameraId": c_int32,
        },
    ),
    "expSetFrameRate": (c_int32, {"value": c_uint32, "cameraId": c_int32}),
    "expGetFrameRate": (
        c_int32,
        {
            "minimum": POINTER(c_uint32),
            "maximum": POINTER(c_uint32),
            "value": POINTER(c_uint32),
            "cameraId": c_int32,
        },
    ),
    "expSetBlacklevel": (c_int32, {"value": c_uint32, "cameraId": c_int32}),
    "expGetBlacklevel": (
        c_int32,
        {
            "minimum": POINTER(c_uint32),
            "maximum": POINTER(c_uint32),
            "value": POINTER(c_uint32),
            "cameraId": c_int32,
        },
    ),
    "expSetGainRaw": (c_int32, {"value": c_double, "cameraId": c_int32}),
    "expGetGainRaw": (
        c_int32,
        {
            "minimum": POINTER(c_double),
            "maximum": POINTER(c_double),
            "value": POINTER(c_double),
            "cameraId": c_int32,
        },
    ),
    "expSetWidth": (c_int32, {"width": POINTER(c_uint32), "cameraId": c_int32}),
    "expSetHeight": (c_int32, {"height": POINTER(c_uint32), "cameraId": c_int32}),
    "expSetOffsetX": (c_int32, {"offsetX": POINTER(c_uint32), "cameraId": c_int32}),
    "expSetOffsetY": (c_int32, {"offsetY": POINTER(c_uint32), "cameraId": c_int32}),
    "expGetWidth": (c_int32, {"width": POINTER(c_uint32), "cameraId": c_int32}),
    "expGetHeight": (c_int32, {"height": POINTER(c_uint32), "cameraId": c_int32}),
    "expGetOffset": (
        c_int32,
        {
            "offsetX": POINTER(c_uint32),
            "offsetY": POINTER(c_uint32),
            "cameraId": c_int32,
        },
    ),
    "expGetTemperature": (c_int32, {"temperature": POINTER(c_uint32), "cameraId": c_int32}),
    "expSetTrailerCounter": (c_int32, {"value": c_uint32, "cameraId": c_int32}),
    "expGetTrailerCounter": (
        c_int32,
        {
            "minimum": POINTER(c_uint32),
            "maximum": POINTER(c_uint32),
            "value": POINTER(c_uint32),
            "cameraId": c_int32,
        },
    ),
    "expEnableExternalTrigger": (c_int32, {"enable": c_uint8, "cameraId": c_int32}),
    "expIsExternalTriggerEnabled": (c_int32, {"enabled": POINTER(c_uint8), "cameraId": c_int32}),
    "expSetExternalTriggerPolarity": (c_int32, {"polarity": c_uint32, "cameraId": c_int32}),
    "expGetExternalTriggerPolarity": (
        c_int32,
        {
            "polarity": POINTER(c_uint32),
            "cameraId": c_int32,
        },
    ),
    "expEnableSyncIn": (c_int32, {"enable": c_uint8, "cameraId": c_int32}),
    "expIsSyncInEnabled": (c_int32, {"enabled": POINTER(c_uint8), "cameraId": c_int32}),
    "expSetSyncInPolarity": (c_int32, {"polarity": c_uint32, "cameraId": c_int32}),
    "expGetSyncInPolarity": (c_int32, {"polarity": POINTER(c_uint32), "cameraId": c_int32}),
    "expSetSyncOut": (c_int32, {"output": c_uint32, "cameraId": c_int32}),
    "expGetSyncOut": (c_int32, {"output": POINTER(c_uint32), "cameraId": c_int32}),
    "expSetSyncARMPolarity": (c_int32, {"polarity": c_uint32, "cameraId": c_int32}),
    "expGetSyncARMPolarity": (c_int32, {"polarity": POINTER(c_uint32), "cameraId": c_int32}),
    "expEnableDecimationMode": (c_int32, {"enable": c_uint8, "cameraId": c_int32}),
    "expIsDecimationModeEnabled": (c_int32, {"enabled": POINTER(c_uint8), "cameraId": c_int32}),
    "expEnableRecordStandby": (c_int32, {"enable": c_uint8, "cameraId": c_int32}),
    "expIsRecordStandbyEnabled": (c_int32, {"enabled": POINTER(c_uint8), "cameraId": c_int32}),
    "expSetMultipleSlopeMode": (c_int32, {"mode": c_uint32, "cameraId": c_int32}),
    "expGetMultipleSlopeMode": (c_int32, {"mode": POINTER(c_uint32), "cameraId": c_int32}),
    "expSetMultipleSlopeDual": (c_int32, {"value": c_uint32, "cameraId": c_int32}),
    "expGetMultipleSlopeDual": (
        c_int32,
        {
            "minimum": POINTER(c_uint32),
            "maximum": POINTER(c_uint32),
            "value": POINTER(c_uint32),
            "cameraId": c_int32,
        },
    ),
    "expSetMultipleSlopeTriple": (c_int32, {"value": c_uint32, "cameraId": c_int32}),
    "expGetMultipleSlopeTriple": (
        c_int32,
        {
            "minimum": POINTER(c_uint32),
            "maximum": POINTER(c_uint32),
            "value": POINTER(c_uint32),
            "cameraId": c_int32,
        },
    ),
    "expSetSingleSettingRecordBurstCnt": (c_int32, {"value": c_uint32, "cameraId": c_int32}),
    "expGetSingleSettingRecordBurstCnt": (
        c_int32,
        {
            "minimum": POINTER(c_uint32),
            "maximum": POINTER(c_uint32),
            "value": POINTER(c_uint32),
            "cameraId": c_int32,
        },
    ),
    "expSetSingleSettingRecordWhileTrigger": (c_int32, {"enable": c_uint8, "cameraId": c_int32}),
    "expGetSingleSettingRecordWhileTrigger": (
        c_int32,
        {
            "enabled": POINTER(c_uint8),
            "cameraId": c_int32,
        },
    ),
    "expUpdateTriggerValues": (
        c_int32,
        {
            "releaseCondition": c_uint32,
            "threshold": c_uint32,
            "cameraId": c_int32,
        },
    ),
    "expEnableFrameTrigger": (c_int32, {"enable": c_uint8, "cameraId": c_int32}),
    "expIsFrameTriggerEnabled": (c_int32, {"enabled": POINTER(c_uint8), "cameraId": c_int32}),
    "expEnableTriggerWindow": (c_int32, {"enable": c_uint8, "cameraId": c_int32}),
    "expSetFrameTrigger": (
        c_int32,
        {
            "top": c_uint32,
            "left": c_uint32,
            "width": c_uint32,
            "height": c_uint32,
            "releaseCondition": c_uint32,
            "threshold": c_uint32,
            "cameraId": c_int32,
        },
    ),
    "expGetFrameTrigger": (
        c_int32,
        {
            "top": POINTER(c_uint32),
            "left": POINTER(c_uint32),
            "width": POINTER(c_uint32),
            "height": POINTER(c_uint32),
            "releaseCondition": POINTER(c_uint32),
            "threshold": POINTER(c_uint32),
            "cameraId": c_int32,
        },
    ),
    "expSetRecordMode": (c_int32, {"mode": c_uint32, "cameraId": c_int32}),
    "expGetRecordMode": (c_int32, {"mode": POINTER(c_uint32), "cameraId": c_int32}),
    "expSetNumberOfRecordSequences": (c_int32, {"count": c_uint32, "cameraId": c_int32}),
    "expGetNumberOfRecordSequences": (c_int32, {"count": POINTER(c_uint32), "cameraId": c_int32}),
    "expGetCurrentNumberOfFramesInSequence": (
        c_int32,
        {
            "count": POINTER(c_uint32),
            "cameraId": c_int32,
        },
    ),
    "expGetLastRecordDimensions": (
        c_int32,
        {
            "width": POINTER(c_uint32),
            "height": POINTER(c_uint32),
            "cameraId": c_int32,
        },
    ),
    "expGetNumberOfAllRecordedFrames": (c_int32, {"count": POINTER(c_uint32), "cameraId": c_int32}),
    "expGetRecordInfo": (
        c_int32,
        {
            "offsetX": POINTER(c_uint32),
            "offsetY": POINTER(c_uint32),
            "width": POINTER(c_uint32),
            "height": POINTER(c_uint32),
            "frameCount": POINTER(c_int64),
            "reserved": POINTER(c_int64),
            "unused": c_void_p,
            "cameraId": c_int32,
        },
    ),
    "expIsFlashCardAvailable": (c_int32, {"available": POINTER(c_uint8), "cameraId": c_int32}),
    "expStartWriteToFlash": (c_int32, {"cameraId": c_int32}),
    "expStopWriteToFlash": (c_int32, {"cameraId": c_int32}),
    "expEnableFlashWriteAfterRecordStop": (c_int32, {"enable": c_uint8, "cameraId": c_int32}),
    "expIsFlashWriteAfterRecordStopEnabled": (
        c_int32,
        {
            "enabled": POINTER(c_uint8),
            "cameraId": c_int32,
        },
    ),
    "expSetRecordAtPowerState": (c_int32, {"enable": c_uint8, "cameraId": c_int32}),
    "expGetRecordAtPowerState": (c_int32, {"enabled": POINTER(c_uint8), "cameraId": c_int32}),
    "expIsRecordAtPowerOnAvailable": (
        c_int32,
        {
            "available": POINTER(c_uint8),
            "cameraId": c_int32,
        },
    ),
    "expSetIRIGBState": (c_int32, {"enable": c_uint8, "cameraId": c_int32}),
    "expGetIRIGBState": (c_int32, {"enabled": POINTER(c_uint8), "cameraId": c_int32}),
    "expIsIRIGBAvailable": (c_int32, {"available": POINTER(c_uint8), "cameraId": c_int32}),
    "expIsImageVantoAvailable": (c_int32, {"available": POINTER(c_uint8), "cameraId": c_int32}),
    "expSaveUserSet": (c_int32, {"cameraId": c_int32}),
    "expSetUserDefinedName": (c_int32, {"name": c_char_p, "cameraId": c_int32}),
    "expSetCustomInformation": (c_int32, {"value": c_uint32, "cameraId": c_int32}),
    "expGetCustomInformation": (c_int32, {"value": POINTER(c_uint32), "cameraId": c_int32}),
    "expSetColorInformation": (
        c_int32,
        {
            "first": c_double,
            "second": c_double,
            "third": c_double,
            "cameraId": c_int32,
        },
    ),
    "expGetColorInformation": (
        c_int32,
        {
            "isColorCamera": POINTER(c_uint8),
            "first": POINTER(c_double),
            "second": POINTER(c_double),
            "third": POINTER(c_double),
            "cameraId": c_int32,
        },
    ),
    "expSetOutputDatarate": (c_int32, {"value": c_uint32, "cameraId": c_int32}),
    "expGetOutputDatarate": (c_int32, {"value": POINTER(c_uint32), "cameraId": c_int32}),
    "expSetStreamParam": (c_int32, {"name": c_char_p, "value": c_uint32, "cameraId": c_int32}),
    "expGetStreamParam": (
        c_int32,
        {
            "name": c_char_p,
            "value": POINTER(c_uint32),
            "cameraId": c_int32,
        },
    ),
    "expSetPackageSize": (c_int32, {"value": c_uint32, "cameraId": c_int32}),
    "expGetPackageSize": (c_int32, {"value": POINTER(c_uint32), "cameraId": c_int32}),
    "expShowStreamParams": (c_int32, {"cameraId": c_int32}),
    "expShowGEVParams": (c_int32, {"cameraId": c_int32}),
    "expStartLiveMode": (c_int32, {"cameraId": c_int32}),
    "expStopLiveMode": (c_int32, {"cameraId": c_int32}),
    "expPauseLiveMode": (c_int32, {"pause": c_uint8, "cameraId": c_int32}),
    "expStartRecordMode": (c_int32, {"cameraId": c_int32}),
    "expStopRecordMode": (c_int32, {"cameraId": c_int32}),
    "expAbortRecording": (c_int32, {"cameraId": c_int32}),
    "expIsStateIdle": (c_int32, {"idle": POINTER(c_uint8), "cameraId": c_int32}),
    "expIsStateFlashWrite": (c_int32, {"flashWrite": POINTER(c_uint8), "cameraId": c_int32}),
    "expIsTrailerRecordingActive": (c_int32, {"active": POINTER(c_uint8), "cameraId": c_int32}),
    "expGetCurrentNumberOfImages": (c_int32, {"cameraId": c_int32}),
    "expGetPreviewImage": (
        c_void_p,
        {
            "status": POINTER(c_uint8),
            "last": POINTER(c_uint8),
            "cameraId": c_int32,
        },
    ),
    "expGetSingleImage": (
        c_void_p,
        {
            "result": POINTER(c_uint32),
            "flag": POINTER(c_uint32),
            "status": POINTER(c_uint8),
            "last": POINTER(c_uint8),
            "cameraId": c_int32,
        },
    ),
    "expGetCurrentRecordingSequence": (
        c_int32,
        {
            "sequence": POINTER(c_uint32),
            "cameraId": c_int32,
        },
    ),
    "expGetMaxFramesPerSequence": (c_int32, {"count": POINTER(c_uint32), "cameraId": c_int32}),
    "expSetCurrentStreamSequence": (c_int32, {"sequence": POINTER(c_uint32), "cameraId": c_int32}),
    "expGetRecordInfoFramePointer": (
        c_void_p,
        {
            "width": POINTER(c_uint32),
            "height": POINTER(c_uint32),
            "recordMode": POINTER(c_uint32),
            "sequences": POINTER(c_uint32),
            "cameraId": c_int32,
        },
    ),
    "expGetFramePointer": (
        c_void_p,
        {
            "frame": c_int64,
            "header": POINTER(c_uint64),
            "flags": POINTER(c_uint8),
            "extra": POINTER(c_uint8),
            "cameraId": c_int32,
        },
    ),
    "expStartFrameBlockTransfer": (c_int32, {"cameraId": c_int32}),
    "expStopFrameBlockTransfer": (c_int32, {"cameraId": c_int32}),
    "expGetFrameBlockSize": (c_int32, {"frames": POINTER(c_uint32), "cameraId": c_int32}),
    "expGetRecordedFrameBlock": (
        c_int32,
        {
            "unused": c_void_p,
            "sequence": c_uint32,
            "firstFrame": c_uint32,
            "frameCount": c_uint32,
            "cameraId": c_int32,
        },
    ),
    "expGetRecordedFrameBlockResult": (
        c_void_p,
        {
            "unused": c_void_p,
            "frames": POINTER(c_int64),
            "status": POINTER(c_uint32),
            "cameraId": c_int32,
        },
    ),
    "expGetRecordedFrameBlockInfo": (
        c_void_p,
        {
            "unused": c_void_p,
            "index": c_uint32,
            "header": POINTER(c_uint64),
            "flags": POINTER(c_uint8),
            "extra": POINTER(c_uint8),
            "cameraId": c_int32,
        },
    ),
    "expAbortCurrentFrameBlockRequest": (c_int32, {"cameraId": c_int32}),
    "expReadData": (
        c_int32,
        {
            "buffer": POINTER(c_uint8),
            "count": POINTER(c_uint32),
            "cameraId": c_int32,
        },
    ),
    "expWriteData": (c_int32, {"data": POINTER(c_uint8), "count": c_uint32, "cameraId": c_int32}),
}
