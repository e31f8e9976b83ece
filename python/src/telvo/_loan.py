"""Memory of the library that arrays may show."""

from __future__ import annotations

import ctypes
import math
import threading
import weakref
from typing import Any

import numpy as np
from numpy.typing import NDArray

from .errors import ViewExpiredError, ViewInUseError


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
        self._type = ctypes.c_uint8 * math.prod(shape)
        self._memory: weakref.ref[Any] | None = None
        self._lock = threading.Lock()

    def array(self) -> NDArray[np.uint8]:
        """The memory as a read-only array. Raises ViewExpiredError."""
        with self._lock:
            owner = self._owner()
            if self._address is None or owner is None:
                raise ViewExpiredError("the picture has been overwritten; take its array earlier")
            memory: Any = self._in_use()
            if memory is None:
                memory = self._type.from_address(self._address)
                memory.owner = owner
                self._memory = weakref.ref(memory)
            return np.frombuffer(memoryview(memory).toreadonly(), np.uint8).reshape(self._shape)

    def take_back(self) -> None:
        """Gives out no array any more. Raises ViewInUseError, and stays, while there is one."""
        with self._lock:
            if self._in_use() is not None:
                raise ViewInUseError(
                    "an array still shows the library's memory: let go of it, or take a copy"
                )
            self._address = None

    def end(self) -> Any | None:
        """Gives out no array any more; returns what lives as long as those that there are."""
        with self._lock:
            self._address = None
            return self._in_use()

    def _in_use(self) -> Any | None:
        return self._memory() if self._memory is not None else None
