"""The programs that the page's tests start: virtual cameras, the panel, and the tool."""

from __future__ import annotations

import contextlib
import os
import signal
import subprocess
import time
from collections.abc import Callable
from pathlib import Path

from selenium.common.exceptions import NoSuchElementException, StaleElementReferenceException

WIDTH, HEIGHT = 320, 240


def eventually(condition: Callable[[], object], what: str, seconds: float = 30) -> object:
    """The first true result of the condition; fails when there is none in time.

    An element that is not there, or not there any more, is as good as a false result."""
    due = time.monotonic() + seconds
    while time.monotonic() < due:
        with contextlib.suppress(NoSuchElementException, StaleElementReferenceException):
            if result := condition():
                return result
        time.sleep(0.02)
    raise AssertionError(f"not in {seconds} s: {what}")


class CameraProcess:
    """A telvo-camera with small pictures; prepared: the library has seen it before."""

    def __init__(self, address: str, *options: str, prepared: bool = True) -> None:
        self.address = address
        self._process = subprocess.Popen(
            [os.environ["TELVO_CAMERA"], "--commands", "--address", address,
             *(["--user-sets-prepared"] if prepared else []),
             "--set", f"Width={WIDTH}", "--set", f"Height={HEIGHT}", *options],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        assert "listens on" in self._process.stdout.readline()

    def tell(self, command: str) -> None:
        """One of the commands that the camera reads, such as "silent"."""
        self._process.stdin.write(command + "\n")
        self._process.stdin.flush()

    def end(self) -> None:
        """What it has recorded is written then."""
        self._process.terminate()
        self._process.wait(timeout=30)


class PanelProcess:
    """A "telvo panel" whose downloads go to a folder."""

    def __init__(self, folder: Path, *options: str, port: int = 0) -> None:
        self._process = subprocess.Popen(
            [os.environ["TELVO_TOOL"], "panel", "--port", str(port), "--folder", str(folder),
             *options],
            stdout=subprocess.PIPE, text=True)
        line = self._process.stdout.readline()
        assert "http://" in line, f"the panel does not start: {line}"
        self.url = line[line.index("http://"):].strip()

    @property
    def port(self) -> int:
        return int(self.url.rstrip("/").rsplit(":", 1)[1])

    def end(self) -> int:
        """As Ctrl-C does."""
        if self._process.poll() is None:
            self._process.send_signal(signal.SIGINT)
        return self._process.wait(timeout=30)


def telvo(*arguments: str) -> str:
    """What the tool prints, run by itself."""
    return subprocess.run([os.environ["TELVO_TOOL"], *arguments], check=True, capture_output=True,
                          text=True, timeout=60).stdout
