"""The declarations of the C functions, made from the header."""

from __future__ import annotations

import ctypes
import os
import subprocess
import sys
from pathlib import Path

import telvo
from telvo._functions import FUNCTIONS, ConnectionSettings
from telvo._library import library


def check(project: Path, header: Path) -> int:
    declared = project / "python/src/telvo/_functions.py"
    generator = project / "python/generate_functions.py"
    return subprocess.run([sys.executable, generator, header, "--check", declared]).returncode


def test_the_declarations_are_those_of_the_header(project: Path) -> None:
    assert check(project, project / "include/TelvoDll.h") == 0


def test_a_parameter_of_another_type_is_found(project: Path, tmp_path: Path) -> None:
    text = (project / "include/TelvoDll.h").read_text()
    changed = tmp_path / "changed.h"
    changed.write_text(text.replace("SetExposureTime(uint32_t", "SetExposureTime(double"))
    assert changed.read_text() != text
    assert check(project, changed) != 0


def test_there_are_118_functions_and_the_library_has_them_all() -> None:
    assert len(FUNCTIONS) == 118
    assert all(hasattr(library(), name) for name in FUNCTIONS)


def test_the_types_are_those_that_a_call_needs() -> None:
    result, parameters = FUNCTIONS["expGetUsedCameraType"]
    assert result is ctypes.c_int32
    assert list(parameters.items()) == [
        ("cameraCase", ctypes.POINTER(ctypes.c_uint8)),
        ("cameraId", ctypes.c_int32),
        ("maxWidth", ctypes.POINTER(ctypes.c_uint32)),
        ("maxHeight", ctypes.POINTER(ctypes.c_uint32)),
    ]
    assert FUNCTIONS["expGetFramePointer"][0] is ctypes.c_void_p
    assert FUNCTIONS["expSetGainRaw"][1]["value"] is ctypes.c_double


def test_link_settings_lie_where_the_library_reads_them() -> None:
    assert ctypes.sizeof(ConnectionSettings) == 64
    link = telvo.LinkSettings(packet_size=8000, maximum_pending_resends=7, output_data_rate=15)
    c = link._as_c()
    assert bytes(c)[:8] == bytes([1, 0, 0, 0, 0x40, 0x1F, 0, 0])
    assert bytes(c)[44:49] == bytes([7, 0, 0, 0, 1])
    assert bytes(c)[52:60] == bytes([1, 0, 0, 0, 15, 0, 0, 0])


def test_a_library_that_is_not_there_is_named() -> None:
    script = "import telvo; telvo.Camera('127.0.0.1')"
    result = subprocess.run(
        [sys.executable, "-c", script],
        env={**os.environ, "TELVO_LIBRARY": "/nowhere/libTelvoDll.so"},
        capture_output=True,
        text=True,
    )
    assert result.returncode == 1
    assert "LibraryError" in result.stderr
    assert "/nowhere/libTelvoDll.so" in result.stderr
