"""Virtual cameras for the tests; the whole run has a network of its own."""

from __future__ import annotations

import itertools
import os
import subprocess
import time
from collections.abc import Callable, Iterator
from pathlib import Path
from typing import Any

import pytest
import telvo

PATIENT = telvo.LinkSettings(packet_size=8000, request_timeout=5000, default_image_timeout=5000)

_addresses = (f"127.0.0.{last}" for last in itertools.count(11))


class CameraProcess:
    """A telvo-camera of the build, ended by end()."""

    def __init__(self, *options: str) -> None:
        self.address = next(_addresses)
        self._process = subprocess.Popen(
            [os.environ["TELVO_CAMERA"], "--commands", "--address", self.address, *options],
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            text=True,
        )
        assert self._process.stdout is not None
        assert "listens on" in self._process.stdout.readline()

    def tell(self, command: str) -> None:
        """One of the commands that the camera reads, such as "silent"."""
        assert self._process.stdin is not None
        self._process.stdin.write(command + "\n")
        self._process.stdin.flush()

    def end(self) -> None:
        self._process.terminate()
        self._process.wait()

    def connect(self, **options: Any) -> telvo.Camera:
        return telvo.Camera(self.address, link=PATIENT, **options)


def start_camera(*options: str) -> CameraProcess:
    """One that any program has prepared before, with small pictures."""
    return CameraProcess(
        "--user-sets-prepared", "--set", "Width=320", "--set", "Height=240", *options
    )


@pytest.fixture
def device() -> Iterator[CameraProcess]:
    """A virtual camera of the test's own."""
    process = start_camera()
    yield process
    process.end()


@pytest.fixture(scope="module")
def camera() -> Iterator[telvo.Camera]:
    """A connected camera that the tests of a file share; each leaves it as it likes."""
    process = start_camera()
    with process.connect() as connected:
        yield connected
    process.end()


def eventually(condition: Callable[[], bool], seconds: float = 30) -> bool:
    """Whether it comes true in time."""
    due = time.monotonic() + seconds
    while time.monotonic() < due:
        if condition():
            return True
        time.sleep(0.01)
    return False


@pytest.fixture
def project() -> Path:
    return Path(__file__).resolve().parents[2]
