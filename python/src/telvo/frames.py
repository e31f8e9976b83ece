"""Pictures in the library's memory, and the headers that the camera writes into them."""

from __future__ import annotations

from typing import Any

import numpy as np
from numpy.typing import NDArray

from ._loan import Loan

HEADER_SIZE = 16  # bytes, the first of every picture

# What a picture's header says. counter: counts the pictures, wraps after 65535; flags: inverted
# already, so a bit is 0 where the camera set it; value: 56 bits, usually the picture's time; extra:
# the last byte.
HEADER = np.dtype([("counter", "<u2"), ("flags", "u1"), ("value", "<u8"), ("extra", "u1")])

# As the camera writes it, little-endian; the value's eighth byte is the extra one.
_WRITTEN = np.dtype(
    {
        "names": ["counter", "flags", "value", "extra"],
        "formats": ["<u2", "u1", "<u8", "u1"],
        "offsets": [4, 7, 8, 15],
        "itemsize": HEADER_SIZE,
    }
)
_VALUE_BITS = (1 << 56) - 1


def headers(images: NDArray[np.uint8]) -> NDArray[Any]:
    """The headers of whole pictures, as an array of HEADER.

    images: (..., height, width), as recordings and frames give them; the result has the shape of
    what is left of the dots.
    """
    return _decoded(_first_bytes(images))


def _first_bytes(images: NDArray[np.uint8]) -> NDArray[np.uint8]:
    """A copy of those that the headers are in."""
    *several, height, width = images.shape
    return images.reshape(*several, height * width)[..., :HEADER_SIZE].copy()


def _decoded(first_bytes: NDArray[np.uint8]) -> NDArray[Any]:
    written = first_bytes.view(_WRITTEN)[..., 0]
    result = np.empty(written.shape, HEADER)
    result["counter"] = written["counter"]
    result["flags"] = ~written["flags"]
    result["value"] = written["value"] & np.uint64(_VALUE_BITS)
    result["extra"] = written["extra"]
    return result


class _Pictures:
    """What the library has just delivered."""

    def __init__(self, loan: Loan) -> None:
        self._loan = loan
        self._array: NDArray[np.uint8] | None = None
        self._first_bytes = loan.first_bytes(HEADER_SIZE)

    @property
    def view(self) -> NDArray[np.uint8]:
        """The pixels where they lie in the library's memory: read-only, nothing is copied.

        For use at once. While it or anything made of it without a copy exists, the camera gives no
        further picture (ViewInUseError); afterwards there is no view any more (ViewExpiredError).
        """
        return self._loan.array()

    @property
    def array(self) -> NDArray[np.uint8]:
        """The pixels as an array of the program's own, copied at the first access.

        Raises ViewExpiredError if the first access comes after the next picture.
        """
        if self._array is None:
            self._array = self._loan.array().copy()
        return self._array

    def __array__(self, dtype: Any = None, copy: bool | None = None) -> NDArray[Any]:
        return np.array(self.array, dtype=dtype, copy=bool(copy))


class Frame(_Pictures):
    """One picture, (height, width), one byte per pixel."""

    @property
    def header(self) -> Any:
        """What the camera says of it, one HEADER; stays valid."""
        return _decoded(np.frombuffer(self._first_bytes, np.uint8))[()]


class Block(_Pictures):
    """Successive frames of a recording, (frames, height, width)."""

    def __init__(self, loan: Loan, first: int) -> None:
        """first: number of the first one in the recording."""
        super().__init__(loan)
        self.first = first

    @property
    def headers(self) -> NDArray[Any]:
        """What the camera says of each, an array of HEADER; stays valid."""
        return _decoded(np.frombuffer(self._first_bytes, np.uint8).reshape(-1, HEADER_SIZE))

    def __len__(self) -> int:
        return len(self._first_bytes) // HEADER_SIZE
