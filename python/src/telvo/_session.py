"""One camera's connection: calls, what the camera is doing, and the memory that it has lent."""

from __future__ import annotations

import ctypes
import functools
import itertools
import threading
import time
import weakref
from collections.abc import Callable
from typing import Any, NoReturn

from ._functions import FUNCTIONS, Callback, ConnectionSettings
from ._library import library
from ._loan import Loan
from .errors import CallError, ConnectError, LinkLostError, TelvoError

_ids = itertools.count(1_000_000)  # far from those that other parts of the process may choose

_CONNECTED_WHILE_FLASH_WRITE = 1
_ATTACHED_TO_RECORDING = 1
_USER_SETS_PREPARED = -2
_STOPPED_TO_FLASH = 2
_FLASH_POLL = 0.5  # seconds
_VERDICT_POLL = 0.02  # seconds
# A camera that answers for so long is there. Right after the link is lost, and before that is told,
# the library says of a camera that it is not idle, as of one that is busy.
_STEADY = 0.3  # seconds
_LINK_LOSS_TIME = 0.5  # seconds from the heartbeat's end to the message of the loss

# Functions that the library may still be returning into after it has forgotten the camera.
_kept_callbacks: list[Any] = []


# A camera that sends a recording waits from one block to the request for the next.
@functools.lru_cache(maxsize=None)
def _found(function: str) -> tuple[Any, int, bool]:
    """A function of the library, where the camera's id is, and whether it fails below zero."""
    result, parameters = FUNCTIONS[function]
    id_at = list(parameters).index("cameraId")
    return getattr(library(), function), id_at, result is ctypes.c_int32


class EndedError(TelvoError):
    """What the camera was doing has been ended by something else that it was asked for."""


class Session:
    """A camera that is connected and initialised.

    Any thread may use it; the library is called by one at a time, except to end another's wait.
    """

    def __init__(
        self,
        mac: str,
        ip: str,
        settings: ConnectionSettings,
        assign_address: bool,
    ) -> None:
        self.activity: object | None = None
        self._must_be_stopped = False
        self._id = next(_ids)
        self._lock = threading.RLock()
        self._lost = threading.Event()
        # Nobody yet: a camera that is lost while it is connected is not initialised.
        self.on_link_lost: Callable[[], None] | None = None
        self._is_closed = False
        silence = settings.heartbeatTimeout + settings.heartbeatInterval  # milliseconds
        self._verdict_time = silence / 1000 + _LINK_LOSS_TIME
        self._loan = Loan(self, 0, (0,))
        self._loan.end()
        self._callback = _link_callback(weakref.ref(self))

        where = (mac.encode(), ip.encode(), 0 if assign_address else 1, settings)
        result = self._connect(*where)
        if result == _USER_SETS_PREPARED:
            # The camera did not start with the user set that it needs, and does from now on.
            self._disconnect()
            result = self._connect(*where)
        if result < 0:
            self._disconnect()
            raise ConnectError(f"cannot initialise the camera at {ip} ('telvo log' shows why)")
        if result == _ATTACHED_TO_RECORDING:
            self.activity, self._must_be_stopped = "a recording begun before", True

    def _connect(self, mac: bytes, ip: bytes, configured: int, settings: ConnectionSettings) -> int:
        """The result of initialising."""
        result = library().expConnectGrabber(mac, ip, configured, settings, self._id)
        if result < 0:
            raise ConnectError(
                f"cannot connect to the camera at {ip.decode()}; is another program using it? "
                "('telvo log' shows why)"
            )
        self._disconnect = weakref.finalize(self, library().expDisconnectGrabber, self._id)
        library().expSetChangedCallback(self._callback, self._id)
        if result == _CONNECTED_WHILE_FLASH_WRITE:
            self._disconnect()
            raise ConnectError("the camera is writing to its flash card; try again when it is done")
        return int(library().expInitializeGrabber(settings, self._id))

    def link_lost(self) -> None:
        """What the library tells, on a thread of its own."""
        self._lost.set()
        if self.on_link_lost is not None:
            self.on_link_lost()

    def require_link(self) -> None:
        if self._is_closed:
            raise TelvoError("the camera is closed")
        if self._lost.is_set():
            raise LinkLostError("the link to the camera is lost")

    def fail(self, error: TelvoError) -> NoReturn:
        """Raises the error, or LinkLostError if that is why.

        Of a camera that does not answer it may not be known yet: this waits until it is.
        """
        end = time.monotonic() + self._verdict_time
        steady = time.monotonic() + _STEADY
        while not self._is_closed and time.monotonic() < min(steady, end):
            idle = self._is_idle()
            if idle or self._lost.wait(_VERDICT_POLL):
                break
            if idle is None:
                steady = time.monotonic() + _STEADY
        self.require_link()
        raise error

    def _is_idle(self) -> bool | None:
        """None: the camera did not answer."""
        idle = ctypes.c_uint8()
        with self._lock:
            answered = not self._is_closed and self._invoke("expIsStateIdle", idle) == 0
        return bool(idle.value) if answered else None

    def call(self, function: str, *arguments: Any) -> Any:
        """Calls a function of the library; arguments: without the camera's id.

        Raises CallError for a negative result. An address is None where the library gives NULL.
        """
        invoke, id_at, can_fail = _found(function)
        with self._lock:
            self.require_link()
            result = invoke(*arguments[:id_at], self._id, *arguments[id_at:])
        if can_fail and result < 0:
            self.fail(CallError(function, result))
        return result

    def _invoke(self, function: str, *arguments: Any) -> Any:
        invoke, id_at, _ = _found(function)
        return invoke(*arguments[:id_at], self._id, *arguments[id_at:])

    def read(self, function: str) -> tuple[Any, ...]:
        """Calls a function that has nothing but out parameters, and gives what it wrote."""
        parameters = FUNCTIONS[function][1]
        # All bits set: where the library writes nothing, it does not look like a value.
        out = [kind._type_(-1) for name, kind in parameters.items() if name != "cameraId"]
        self.call(function, *out)
        return tuple(value.value for value in out)

    def write(self, function: str, value: Any) -> None:
        """Calls a function that takes one value, which it may be given a pointer to.

        Raises ValueError for a value that does not fit the type.
        """
        kind = next(iter(FUNCTIONS[function][1].values()))
        argument = (kind if isinstance(kind._type_, str) else kind._type_)(value)
        if argument.value != value:
            raise ValueError(f"{value!r} does not fit the parameter of {function}")
        self.call(function, argument)

    def interrupt(self, function: str) -> None:
        """Calls a function that ends another thread's wait in the library."""
        getattr(library(), function)(self._id)

    def begin(self, activity: object, start: str, *, must_be_stopped: bool = False) -> None:
        """Starts a mode. must_be_stopped: nothing else that is begun ends it."""
        with self._lock:
            self.make_way()
            self._loan.take_back()
            self.call(start)
            self.activity, self._must_be_stopped = activity, must_be_stopped

    def make_way(self) -> None:
        """Ends what the camera is doing, but not a recording, which somebody may rely on."""
        with self._lock:
            if self.activity is not None and self._must_be_stopped:
                raise TelvoError("the camera is recording; stop() that first")
            self.stop()

    def stop(self) -> None:
        """Ends whatever the camera is doing, with a lost link, too. Raises ViewInUseError."""
        with self._lock:
            if self.activity is None or self._is_closed:
                return
            self._loan.take_back()
            # Whichever the mode is, each of the functions that stop one stops it.
            while self._invoke("expStopRecordMode") == _STOPPED_TO_FLASH:
                self._wait_for_flash()
            self.activity = None

    def _wait_for_flash(self) -> None:
        while not self._lost.wait(_FLASH_POLL) and self.read("expIsStateFlashWrite")[0]:
            pass

    def require(self, activity: object) -> None:
        if self.activity is not activity:
            raise EndedError("this has ended: the camera was asked for something else")

    def lend(
        self,
        activity: object,
        shape: tuple[int, ...],
        fetch: Callable[..., int | None],
        *arguments: Any,
    ) -> Loan | None:
        """Memory whose address is fetched from the library; None where there is none.

        What was lent before is taken back first.
        """
        with self._lock:
            self.require(activity)
            self._loan.take_back()
            address = fetch(*arguments)
            if address is None:
                return None
            self._loan = Loan(self, address, shape)
            return self._loan

    def close(self) -> None:
        """Disconnects; when an array still shows the library's memory, as soon as it is gone."""
        with self._lock:
            if self._is_closed:
                return
            self._is_closed = True
            memory = self._loan.end()
            if memory is None:
                self._disconnect()
            else:
                weakref.finalize(memory, self._disconnect)


def _link_callback(session: weakref.ref[Session]) -> Any:
    def changed(reason: int) -> None:
        lost = session()
        if lost is not None and reason == 0:
            lost.link_lost()

    callback = Callback(changed)
    _kept_callbacks.append(callback)
    return callback
