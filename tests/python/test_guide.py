"""What the guide shows, and the example, do what they say on a camera."""

from __future__ import annotations

import re
import subprocess
import sys
from pathlib import Path

import numpy as np
import pytest
from conftest import CameraProcess

PROJECT = Path(__file__).resolve().parents[2]
PAGES = (PROJECT / "docs/python.md", PROJECT / "python/README.md")
SNIPPET = re.compile(r"^```python\n(.*?)^```", re.S | re.M)
SNIPPETS = [
    pytest.param(code, id=f"{page.name}-{number}")
    for page in PAGES
    for number, code in enumerate(SNIPPET.findall(page.read_text()))
]


def run(*command: str | Path) -> str:
    result = subprocess.run(command, capture_output=True, text=True)
    assert result.returncode == 0, result.stderr
    return result.stdout


def test_the_guide_shows_much() -> None:
    assert len(SNIPPETS) >= 10


@pytest.mark.parametrize("code", SNIPPETS)
def test_a_snippet_runs(code: str, device: CameraProcess) -> None:
    assert "192.168.1.20" in code
    run(sys.executable, "-W", "error", "-c", code.replace("192.168.1.20", device.address))


def test_the_example_plots_a_recording(device: CameraProcess, tmp_path: Path) -> None:
    picture = tmp_path / "brightness.png"
    output = run(sys.executable, PROJECT / "examples/python/brightness.py", device.address, picture)
    assert output.splitlines()[0] == "500 frames of 640x480"
    assert output.splitlines()[1].startswith("0 gaps, 499 ms")

    from matplotlib.image import imread

    pixels = imread(picture)
    blue = (pixels[..., 2] > 0.5) & (pixels[..., 0] < 0.3)
    half = pixels.shape[1] // 2
    assert np.count_nonzero(blue[:, :half]) > 1000  # the bars
    assert np.count_nonzero(blue[:, half:].any(axis=0)) > half / 2  # the curve, from left to right
