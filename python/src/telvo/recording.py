"""Recorded sequences, read out of a camera's memory."""

from __future__ import annotations

import ctypes
import math
import threading
import time
from collections.abc import Callable, Iterator

import numpy as np
from numpy.typing import NDArray

from ._loan import Loan
from ._session import Session
from .errors import NoImageError, TelvoError
from .frames import Block

_BLOCK_TIME = 60.0  # seconds; a camera that never sends all of a block has its limit here
_WATCH_INTERVAL = 0.1  # seconds


class Recording:
    """A sequence in a camera's memory: recording[100:200] reads its frames.

    Reading begins a block transfer, which goes on until the camera is asked for something else, so
    that one read after the other is fast.
    """

    def __init__(self, session: Session, sequence: int = 0) -> None:
        """As camera.recording and camera.sequence() give it."""
        session.make_way()
        self.width, self.height, self.sequences = _describe(session)
        if not 0 <= sequence < self.sequences:
            raise IndexError(f"sequence {sequence} of {self.sequences}, counted from 0")
        self.sequence = sequence
        self._session = session
        self._frames = _count(session, sequence, self.sequences)

    def __len__(self) -> int:
        return self._frames

    def __getitem__(self, index: int | slice) -> NDArray[np.uint8]:
        """One frame, (height, width), or several, (frames, height, width), as a copy."""
        numbers = range(self._frames)[index]
        if isinstance(numbers, int):
            frame: NDArray[np.uint8] = self._read(range(numbers, numbers + 1))[0]
            return frame
        if numbers.step < 0:
            return self._read(numbers[::-1])[::-1]
        return self._read(numbers)

    def __iter__(self) -> Iterator[NDArray[np.uint8]]:
        """The frames one by one, each a copy; read in blocks."""
        for block in self.blocks():
            yield from block.array

    def read_into(self, out: NDArray[np.uint8], start: int = 0) -> None:
        """Reads len(out) frames from start on into an array of (frames, height, width)."""
        for block in self.blocks(start, start + len(out)):
            at = block.first - start
            np.copyto(out[at : at + len(block)], block.view)

    def blocks(self, start: int = 0, stop: int | None = None) -> Iterator[Block]:
        """The frames from start to before stop, in blocks as large as the library takes.

        A block's view shows the library's memory, until the next block is asked for. The camera
        sends that one meanwhile.
        """
        numbers = range(self._frames)[start:stop]
        transfer = self._transfer()
        size = transfer.block_frames
        pieces = [numbers[i : i + size] for i in range(0, len(numbers), size)]
        with TimeLimit(transfer.abort) as limit:
            for piece in pieces[:1]:
                transfer.request(piece)
            for piece, following in zip(pieces, [*pieces[1:], range(0)]):
                loan = limit.hold(_BLOCK_TIME, transfer.collect, piece, following)
                yield Block(loan, piece.start)

    def _transfer(self) -> Transfer:
        """The one under way, if it is this recording's and nobody waits for a block of it."""
        present = self._session.activity
        if isinstance(present, Transfer) and present.recording is self and present.is_at_rest:
            return present
        return Transfer(self._session, self)

    def _read(self, numbers: range) -> NDArray[np.uint8]:
        result = np.empty((len(numbers), self.height, self.width), np.uint8)
        stop = numbers[-1] + 1 if numbers else numbers.start
        done = 0
        for block in self.blocks(numbers.start, stop):
            skipped = (numbers.start - block.first) % numbers.step
            count = len(range(skipped, len(block), numbers.step))
            np.copyto(result[done : done + count], block.view[skipped :: numbers.step])
            done += count
        return result


def _describe(session: Session) -> tuple[int, int, int]:
    """Width, height and number of sequences."""
    values = [ctypes.c_uint32() for _ in range(4)]
    if session.call("expGetRecordInfoFramePointer", *values) is None:
        reason = "the camera does not describe its recording ('telvo log' shows why)"
        session.fail(TelvoError(reason))
    width, height, _, sequences = (value.value for value in values)
    return width, height, sequences


def _count(session: Session, sequence: int, sequences: int) -> int:
    session.write("expSetCurrentStreamSequence", sequence)
    of_one = "expGetCurrentNumberOfFramesInSequence"
    of_all = "expGetNumberOfAllRecordedFrames"
    return int(session.read(of_one if sequences > 1 else of_all)[0])


def _use_size(session: Session, width: int, height: int) -> None:
    """The library takes recorded frames to have the size that the camera has now."""
    session.write("expSetWidth", width)
    session.write("expSetHeight", height)
    if (session.read("expGetWidth")[0], session.read("expGetHeight")[0]) != (width, height):
        reason = f"the camera does not take the recording's size, {width}x{height}"
        session.fail(TelvoError(reason))


class Transfer:
    """A block transfer, as long as the camera does nothing else."""

    def __init__(self, session: Session, recording: Recording) -> None:
        session.make_way()
        _use_size(session, recording.width, recording.height)
        session.begin(self, "expStartFrameBlockTransfer")
        self.block_frames = int(session.read("expGetFrameBlockSize")[0])
        self.recording = recording
        self.is_at_rest = True  # nothing is asked for that was not collected
        self._session = session

    def request(self, numbers: range) -> None:
        """Asks the camera for these frames; to be followed by collect()."""
        self._session.require(self)
        self.is_at_rest = False
        self._session.call(
            "expGetRecordedFrameBlock", None, self.recording.sequence, numbers.start, len(numbers)
        )

    def collect(self, numbers: range, following: range) -> Loan:
        """Waits for the frames asked for, and asks for those that follow, if any."""
        shape = (len(numbers), self.recording.height, self.recording.width)
        loan = self._session.lend(self, shape, self._fetch, numbers, following)
        if loan is None:
            reason = f"frames {numbers.start} to {numbers[-1]} did not come whole"
            self._session.fail(NoImageError(reason))
        return loan

    def _fetch(self, numbers: range, following: range) -> int | None:
        """The address of the frames; None: they did not come whole."""
        frames = ctypes.c_int64()
        address: int | None = self._session.call(
            "expGetRecordedFrameBlockResult", None, frames, ctypes.c_uint32()
        )
        if address is None or frames.value != len(numbers):
            return None
        self.is_at_rest = True
        if following:
            self.request(following)  # before all else: the camera sends nothing until then
        return address

    def abort(self) -> None:
        """Ends another thread's collect()."""
        self._session.interrupt("expAbortCurrentFrameBlockRequest")


class TimeLimit:
    """Ends waits in the library, which have no limit of their own and hear no Ctrl-C."""

    def __init__(self, abort: Callable[[], None]) -> None:
        self._abort = abort
        self._due = math.inf
        self._ended = threading.Event()

    def __enter__(self) -> TimeLimit:
        threading.Thread(target=self._watch, name="telvo time limit", daemon=True).start()
        return self

    def __exit__(self, *_: object) -> None:
        self._ended.set()

    def hold(self, seconds: float, wait: Callable[..., Loan], *arguments: range) -> Loan:
        """What the wait gives, which may take so long."""
        self._due = time.monotonic() + seconds
        try:
            return wait(*arguments)
        finally:
            self._due = math.inf

    def _watch(self) -> None:
        # The abort is repeated: it may come before the wait begins.
        while not self._ended.wait(_WATCH_INTERVAL):
            if time.monotonic() > self._due:
                self._abort()
