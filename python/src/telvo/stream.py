"""Pictures of a camera that is live or recording."""

from __future__ import annotations

import contextlib
import ctypes
import time

from ._session import EndedError, Session
from .errors import NoImageError, ViewInUseError
from .frames import Frame

_POLL = 0.0002  # seconds; thousands of pictures per second


class Stream:
    """An iterator over the newest pictures, from the start of a mode to its end; `with` ends it."""

    def __init__(
        self, session: Session, start: str, timeout: float, *, must_be_stopped: bool = False
    ) -> None:
        """As camera.live() and camera.start_recording() give it.

        timeout: seconds to wait for a picture.
        """
        session.make_way()
        self._shape = (session.read("expGetHeight")[0], session.read("expGetWidth")[0])
        self._session = session
        self._timeout = timeout
        session.begin(self, start, must_be_stopped=must_be_stopped)

    def __enter__(self) -> Stream:
        return self

    def __exit__(self, *_: object) -> None:
        # With a view still in use the mode ends when something else is begun, or with the camera.
        with contextlib.suppress(ViewInUseError):
            if self._session.activity is self:
                self._session.stop()

    def __iter__(self) -> Stream:
        return self

    def __next__(self) -> Frame:
        """The next picture.

        Raises NoImageError, LinkLostError and, while the view before is in use, ViewInUseError.
        """
        due = time.monotonic() + self._timeout
        while True:
            frame = self._fetch()
            if frame is not None:
                return frame
            if time.monotonic() > due:
                raise NoImageError(f"the camera sent no picture for {self._timeout} seconds")
            time.sleep(_POLL)

    def _fetch(self) -> Frame | None:
        status, last = ctypes.c_uint8(), ctypes.c_uint8()
        try:
            call = self._session.call
            loan = self._session.lend(self, self._shape, call, "expGetPreviewImage", status, last)
        except EndedError:
            raise StopIteration from None
        return Frame(loan) if loan is not None else None
