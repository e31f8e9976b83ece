"""The library: found, loaded and declared."""

from __future__ import annotations

import ctypes
import functools
import os
import sys
from collections.abc import Iterator
from pathlib import Path

from ._functions import FUNCTIONS
from .errors import LibraryError

INTERFACE = "0.1"  # of the library that this package is for

if sys.platform == "win32":
    _NAMES = ["TelvoDll.dll"]
else:
    # Programs have the one with the version; the other is for those who build some.
    _NAMES = [f"libTelvoDll.so.{INTERFACE}", "libTelvoDll.so"]


def _candidates() -> Iterator[str]:
    named = os.environ.get("TELVO_LIBRARY")
    if named:
        yield named
        return
    carried = Path(__file__).with_name("library")
    yield from (str(carried / name) for name in _NAMES if (carried / name).exists())
    yield from _NAMES


def _load() -> ctypes.CDLL:
    failures = []
    for name in _candidates():
        try:
            # CDLL lets other threads of the interpreter run during every call.
            return ctypes.CDLL(name)
        except OSError as error:
            failures.append(str(error))
    raise LibraryError(
        "cannot load TelvoDll; install it or name it in TELVO_LIBRARY: " + "; ".join(failures)
    )


@functools.lru_cache(maxsize=None)
def library() -> ctypes.CDLL:
    """The library, loaded at the first call. Raises LibraryError."""
    loaded = _load()
    for name, (result, parameters) in FUNCTIONS.items():
        function = getattr(loaded, name)
        function.restype = result
        function.argtypes = list(parameters.values())
    return loaded
