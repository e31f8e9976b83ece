"""Memory of the library that arrays may show."""

from __future__ import annotations

import ctypes
import math
import threading
import weakref

import numpy as np
from numpy.typing import NDArray

from .errors import ViewExpiredError, ViewInUseError


class _Memory:
    """What NumPy makes an array of, and then keeps alive with it."""

    __slots__ = ("__array_interface__", "__weakref__", "owner")

    def __init__(self, owner: object, address: int, shape: tuple[int, ...]) -> None:
        self.owner = owner
        self.__array_interface__ = {
            "version": 3,
            "typestr": "|u1",
            "shape": shape,
            "data": (address, True),  # read-only
        }


class Loan:
    """Memory of the library, lent until it is taken back.

    An array cannot be taken away from who holds it. So each one given out, and whatever NumPy or
    others derive from it, holds on to one object, and the memory counts as in use while that
    object lives.
    """

    def __init__(self, owner: object, address: int, shape: tuple[int, ...]) -> None:
        """owner: kept alive by every array, because the memory is gone with it."""
        self._owner = weakref.ref(owner)
        self._address: int | None = address
        self._shape = shape
        self._memory: weakref.ref[_Memory] | None = None
        self._lock = threading.Lock()

    def array(self) -> NDArray[np.uint8]:
        """The memory as a read-only array. Raises ViewExpiredError."""
        with self._lock:
            owner, address = self._require()
            memory = self._in_use()
            if memory is None:
                memory = _Memory(owner, address, self._shape)
                self._memory = weakref.ref(memory)
            return np.asarray(memory)

    def first_bytes(self, count: int) -> bytes:
        """A copy of so many of each picture; cheaper than by way of an array."""
        *several, height, width = self._shape
        step = height * width
        with self._lock:
            _owner, address = self._require()  # it lives while its memory is read
            places = range(address, address + math.prod(several) * step, step)
            return b"".join([ctypes.string_at(place, count) for place in places])

    def _require(self) -> tuple[object, int]:
        """The owner and the address of the memory. Raises ViewExpiredError."""
        owner = self._owner()
        if self._address is None or owner is None:
            raise ViewExpiredError("the picture has been overwritten; take its array earlier")
        return owner, self._address

    def take_back(self) -> None:
        """Gives out no array any more. Raises ViewInUseError, and stays, while there is one."""
        with self._lock:
            if self._in_use() is not None:
                raise ViewInUseError(
                    "an array still shows the library's memory: let go of it, or take a copy"
                )
            self._address = None

    def end(self) -> object | None:
        """Gives out no array any more; returns what lives as long as those that there are."""
        with self._lock:
            self._address = None
            return self._in_use()

    def _in_use(self) -> _Memory | None:
        return self._memory() if self._memory is not None else None
