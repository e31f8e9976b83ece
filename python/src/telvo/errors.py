"""What can fail. Every exception of this package is a TelvoError."""

from __future__ import annotations


class TelvoError(Exception):
    """The camera or the library did not do what it was asked; the text says what."""


class LibraryError(TelvoError):
    """The library TelvoDll cannot be loaded."""


class ConnectError(TelvoError):
    """The camera cannot be connected or initialised."""


class LinkLostError(TelvoError):
    """The camera fell silent. Close it, and connect again when it is back."""


class CallError(TelvoError):
    """A function of the library failed.

    function: its name; result: what it returned, which its documentation explains.
    """

    def __init__(self, function: str, result: int) -> None:
        super().__init__(f"{function} failed with {result} ('telvo log' shows why)")
        self.function = function
        self.result = result


class SettingError(TelvoError):
    """The camera lacks a setting or refuses a value."""


class NoImageError(TelvoError, TimeoutError):
    """The camera sent no picture, or not all of a block of frames, in the time given."""


class ViewInUseError(TelvoError, BufferError):
    """An array still shows memory of the library that the operation would overwrite or free.

    Nothing was done. Let go of the array, or work with a copy.
    """


class ViewExpiredError(TelvoError):
    """The picture has been overwritten since; its array had to be taken earlier."""
