"""A camera: its settings, live pictures and recordings."""

from __future__ import annotations

import ctypes
import dataclasses
import time
import weakref
from collections.abc import Callable, Generator
from typing import Any

from ._functions import ConnectionSettings
from ._session import Session
from .errors import TelvoError
from .frames import Frame
from .recording import Recording
from .settings import Limits, choice, number, real, switch
from .stream import Stream

_RECORD_POLL = 0.02  # seconds
_TEXT_SIZE = 50  # bytes of an identity text

_IDENTITY_KEYS = (
    "ipAddress",
    "macAddress",
    "ipAddressNIC",
    "macAddressNIC",
    "cameraName",
    "manufacturer",
    "model",
    "serialNumber",
    "gigeVersion",
    "cameraVersion",
    "memory",
)


@dataclasses.dataclass(frozen=True)
class LinkSettings:
    """How a camera is reached. Times are in milliseconds."""

    packet_size: int = 0
    """Bytes of a stream packet; 0: the largest that comes through."""
    default_inter_packet_delay: int = 2000
    """Between packets of live pictures, in the camera's ticks."""
    output_inter_packet_delay: int = 0
    """The same while a recording is read."""
    first_packet_timeout: int = 0
    """Wait for a picture's first packet; 0: no limit."""
    packet_timeout: int = 1000
    """Longest gap between two packets of a picture."""
    request_timeout: int = 1100
    """Wait for any picture."""
    default_image_timeout: int = 1100
    """From a picture's first packet to its last."""
    answer_timeout: int = 1000
    """Wait for the camera's answer to a command."""
    heartbeat_timeout: int = 3000
    """Silence after which the link is lost."""
    heartbeat_interval: int = 1000
    """Between two signs of life."""
    maximum_pending_resends: int = 0
    """Lost packets that may be asked for again at once; 0: none."""
    request_mode: int = 1
    """1: recorded frames are requested over the serial line, which is faster; 0: by features."""
    output_data_rate: int = 3
    """0, the fastest, to 15."""

    def _as_c(self) -> ConnectionSettings:
        result = ConnectionSettings(useSettings=1, fastReadoutActive=1)
        for name, value in dataclasses.asdict(self).items():
            first, *others = name.split("_")
            setattr(result, first + "".join(map(str.capitalize, others)), value)
        return result


class Camera:
    """A camera, connected and initialised until it is closed; `with` closes it.

    The camera does one thing at a time: live pictures and reading a recording end when something
    else is begun that they stand against. A recording ends when it is told to, by stop().

    Each camera may be used by a thread of its own; waiting lets the other threads run.
    """

    __slots__ = ("__weakref__", "_session")  # a setting with a wrong name is an error

    def __init__(
        self,
        ip_address: str,
        mac_address: str | None = None,
        *,
        assign_address: bool = False,
        link: LinkSettings = LinkSettings(),
        on_link_lost: Callable[[Camera], None] | None = None,
    ) -> None:
        """Connects the camera; twice, where its user sets have to be prepared first.

        mac_address: where it is given it decides which camera is meant, and is looked for on every
        network. assign_address: the camera is first given the IP address.

        on_link_lost: called once when the link is lost, on a thread of the library, with this
        camera, which it may close.

        Raises ConnectError.
        """
        camera = weakref.ref(self)

        def link_lost() -> None:
            lost = camera()
            if lost is not None and on_link_lost is not None:
                on_link_lost(lost)

        self._session = Session(
            mac_address or ip_address, ip_address, link._as_c(), assign_address
        )
        self._session.on_link_lost = link_lost

    def __enter__(self) -> Camera:
        return self

    def __exit__(self, *_: object) -> None:
        self.close()

    def close(self) -> None:
        """Disconnects the camera, and so ends what it does.

        While a view of its memory exists the camera stays connected; it is disconnected when the
        view is gone.
        """
        self._session.close()

    width = number("expGetWidth", "expSetWidth", "Picture width, pixels.", needs_idle=True)
    height = number("expGetHeight", "expSetHeight", "Picture height, pixels.", needs_idle=True)
    offset_x = number(
        "expGetOffset",
        "expSetOffsetX",
        "Left edge of the picture on the sensor, pixels.",
        position=0,
        needs_idle=True,
    )
    offset_y = number(
        "expGetOffset",
        "expSetOffsetY",
        "Upper edge of the picture on the sensor, pixels.",
        position=1,
        needs_idle=True,
    )
    frame_rate = number("expGetFrameRate", "expSetFrameRate", "Frames per second.")
    exposure = number(
        "expGetExposureTime", "expSetExposureTime", "Exposure time, in the camera's unit."
    )
    gain = real("expGetGainRaw", "expSetGainRaw", "Digital gain.")
    black_level = number("expGetBlacklevel", "expSetBlacklevel", "Black level.")
    temperature = number("expGetTemperature", None, "Temperature, in the camera's unit.")
    trailer = number(
        "expGetTrailerCounter", "expSetTrailerCounter", "Frames recorded after the trigger."
    )
    record_mode = choice(
        "expGetRecordMode",
        "expSetRecordMode",
        ("single", "continuous"),
        "What a recording does at the memory's end",
    )
    record_sequences = number(
        "expGetNumberOfRecordSequences",
        "expSetNumberOfRecordSequences",
        "Sequences that the memory is divided into: 1, 2, 4, 8 or 16.",
    )
    record_standby = switch(
        "expIsRecordStandbyEnabled",
        "expEnableRecordStandby",
        "Whether the camera starts the next recording by itself.",
    )
    external_trigger = switch(
        "expIsExternalTriggerEnabled",
        "expEnableExternalTrigger",
        "Whether the trigger input is on.",
    )
    external_trigger_edge = choice(
        "expGetExternalTriggerPolarity",
        "expSetExternalTriggerPolarity",
        ("falling", "raising"),
        "The edge that triggers",
    )
    sync_in = switch("expIsSyncInEnabled", "expEnableSyncIn", "Whether the sync input is on.")
    sync_in_edge = choice(
        "expGetSyncInPolarity",
        "expSetSyncInPolarity",
        ("falling", "raising"),
        "The sync input's edge",
    )
    sync_out = choice(
        "expGetSyncOut", "expSetSyncOut", ("arm", "sync-out"), "The sync output's signal"
    )
    sync_arm_polarity = choice(
        "expGetSyncARMPolarity",
        "expSetSyncARMPolarity",
        ("negative", "positive"),
        "The arming signal's polarity",
    )
    decimation = switch(
        "expIsDecimationModeEnabled",
        "expEnableDecimationMode",
        "Whether fewer columns and rows of the same view are taken.",
    )
    slopes = choice(
        "expGetMultipleSlopeMode",
        "expSetMultipleSlopeMode",
        ("normal", "dual", "triple"),
        "The shutter's mode",
    )
    flash_after_record = switch(
        "expIsFlashWriteAfterRecordStopEnabled",
        "expEnableFlashWriteAfterRecordStop",
        "Whether a recording is copied to the flash card.",
    )
    record_at_power_on = switch(
        "expGetRecordAtPowerState",
        "expSetRecordAtPowerState",
        "Whether the camera records as soon as it is switched on.",
    )
    irig_b = switch(
        "expGetIRIGBState", "expSetIRIGBState", "Whether headers carry the time of IRIG-B."
    )
    custom_data = number(
        "expGetCustomInformation",
        "expSetCustomInformation",
        "A number that the camera keeps for its user.",
    )
    data_rate = number(
        "expGetOutputDatarate",
        "expSetOutputDatarate",
        "Output data rate, 0 (fastest) to 15.",
    )
    max_frames = number(
        "expGetMaxFramesPerSequence", None, "Frames of the present size that a sequence takes."
    )

    is_idle = switch("expIsStateIdle", None, "Whether the camera does nothing, or has recorded.")
    is_writing_flash = switch(
        "expIsStateFlashWrite", None, "Whether the camera copies to its flash card."
    )

    def limits(self, setting: str) -> Limits:
        """What a setting, such as "exposure", takes now. Raises SettingError."""
        limits: Limits = getattr(type(self), setting).limits(self)
        return limits

    @property
    def identity(self) -> dict[str, str]:
        """Addresses, name, maker, model, versions and memory, as of connecting."""
        return {key: self._text(key) for key in _IDENTITY_KEYS}

    def _text(self, key: str) -> str:
        text = ctypes.create_string_buffer(_TEXT_SIZE)
        self.call("expGetParam", key.encode(), text, ctypes.c_uint32(_TEXT_SIZE))
        return text.value.decode("cp1252", "replace")

    def call(self, function: str, *arguments: Any) -> Any:
        """Calls one of the library's C functions by its name, for what has no name of its own here.

        arguments: those of the function without the camera's id; texts are bytes, out parameters
        ctypes objects. Gives what it returns; raises CallError for a negative number.

        No function that starts or ends a mode, or returns pictures: that is for live(), record(),
        recording and stop().
        """
        return self._session.call(function, *arguments)

    def read(self, function: str) -> tuple[Any, ...]:
        """Calls a C function that has nothing but out parameters, and gives what it wrote."""
        return self._session.read(function)

    def write(self, function: str, value: Any) -> None:
        """Calls a C function that takes one value. Raises ValueError for one beyond its type."""
        self._session.write(function, value)

    def stop(self) -> None:
        """Ends what the camera is doing; waits for a copy to the flash card that follows.

        Raises ViewInUseError, and ends nothing, while a view of the library's memory exists.
        """
        self._session.stop()

    def live(self, timeout: float = 5) -> Generator[Frame, None, None]:
        """Live pictures, always the newest, until the loop is left or the camera stopped.

        Raises NoImageError when none comes for timeout seconds, LinkLostError, and ViewInUseError
        while a view of the picture before exists.
        """
        with Stream(self._session, "expStartLiveMode", timeout) as stream:
            yield from stream

    def snapshot(self, timeout: float = 5) -> Frame:
        """One live picture, whose array is there already."""
        for frame in self.live(timeout):
            _ = frame.array  # its view ends with the live pictures
            break
        return frame

    def start_recording(self, timeout: float = 5) -> Stream:
        """Starts to record into the camera's memory; `with` stops it, or stop().

        The result gives previews, as live() gives pictures; nobody has to look at them.
        """
        return Stream(self._session, "expStartRecordMode", timeout, must_be_stopped=True)

    def record(self, frames: int) -> Recording:
        """Records at least so many frames, or as many as the camera does by itself."""
        if frames > self.max_frames:
            raise TelvoError(f"the camera's memory takes only {self.max_frames} frames")
        with self.start_recording():
            while self.recorded_frames < frames and not self.is_idle:
                time.sleep(_RECORD_POLL)
        return self.recording

    @property
    def recorded_frames(self) -> int:
        """Frames recorded so far, as the camera counts, or its preview if that is ahead."""
        counted = self.read("expGetNumberOfAllRecordedFrames")[0]
        return max(int(counted), int(self.call("expGetCurrentNumberOfImages")))

    @property
    def recording(self) -> Recording:
        """What the camera has recorded; its first sequence, if the memory is divided."""
        return self.sequence(0)

    def sequence(self, number: int) -> Recording:
        """One of the recorded sequences, from 0. Raises IndexError."""
        return Recording(self._session, number)
