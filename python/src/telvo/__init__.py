"""High-speed GigE Vision cameras with recording memory, as NumPy arrays.

A Camera connects, shows live pictures, records and reads recordings back. Its pictures are arrays
of the program's own, or views of the library's memory that cannot change unnoticed.
"""

from .camera import Camera, LinkSettings
from .errors import (
    CallError,
    ConnectError,
    LibraryError,
    LinkLostError,
    NoImageError,
    SettingError,
    TelvoError,
    ViewExpiredError,
    ViewInUseError,
)
from .frames import HEADER, Block, Frame, headers
from .recording import Recording
from .settings import Limits
from .stream import Stream

__version__ = "0.1.0"

__all__ = [
    "HEADER",
    "Block",
    "CallError",
    "Camera",
    "ConnectError",
    "Frame",
    "LibraryError",
    "Limits",
    "LinkLostError",
    "LinkSettings",
    "NoImageError",
    "Recording",
    "SettingError",
    "Stream",
    "TelvoError",
    "ViewExpiredError",
    "ViewInUseError",
    "headers",
]
