"""Getting a recording: formats, what is missing, cancelling."""

from __future__ import annotations

import json
import re
import subprocess
from collections.abc import Callable
from pathlib import Path

import pytest

from page import Page
from processes import HEIGHT, WIDTH, eventually


@pytest.fixture
def open_recorded(start_camera, start_panel, open_page) -> Callable[..., Page]:
    """The page with a camera that has recorded before, and the controls for a download."""

    def open_with(*options: str, frames: int = 50) -> Page:
        camera = start_camera("--record-at-power-on", "--memory", str(frames * WIDTH * HEIGHT),
                              "--set", "AcquisitionFrameRateRaw=500", *options)
        page = open_page(start_panel("--camera", camera.address).url)
        page.await_state("idle")
        eventually(lambda: page.part("review").is_displayed(), "the recording")
        page.tab("downloadPanel")
        return page

    return open_with


def video_facts(file: Path) -> dict:
    shown = subprocess.run(["ffprobe", "-v", "error", "-count_frames", "-show_entries",
                            "stream=r_frame_rate,nb_read_frames,width,height", "-of", "json",
                            file], check=True, capture_output=True, text=True, timeout=60).stdout
    return json.loads(shown)["streams"][0]


def test_videos_play_at_the_speed_that_was_asked_for(open_recorded, tmp_path: Path) -> None:
    page = open_recorded()
    options = page.part("videoOptions")
    assert not options.is_displayed()
    for name, rate in (("mkv", 10), ("mp4", 30)):
        page.choose("format", name)
        assert options.is_displayed()
        page.fill("playbackFps", str(rate))
        page.click("downloadStart")
        eventually(lambda: f".{name}" in page.text("files"), f"the {name} is listed")
    assert page.text("jobs").count("✓ verified: 50 of 50 frames, none missing") == 2
    page.choose("format", "tiff")
    assert not options.is_displayed()

    for file, rate in (("recording.mkv", 10), ("recording-2.mp4", 30)):
        assert video_facts(tmp_path / "files" / file) == {
            "width": WIDTH, "height": HEIGHT, "r_frame_rate": f"{rate}/1", "nb_read_frames": "50"}


def test_frames_that_are_missing_are_listed(open_recorded) -> None:
    page = open_recorded("--fault-frame", "jump:20:5")
    page.click("downloadStart")
    job = eventually(lambda: page.find(".job[data-state=incomplete]"), "the verdict")
    assert "missing" in job.find_element("css selector", ".job-text").text
    gaps = [gap.text for gap in job.find_elements("css selector", ".gaps li")]
    assert gaps[0] == "after frame 20: counter 19 to 25, 5 frames missing"
    eventually(lambda: "incomplete" in page.text("files"), "the file is listed as incomplete")


def test_a_download_that_is_cancelled_keeps_what_came_by_then(open_recorded,
                                                              tmp_path: Path) -> None:
    page = open_recorded("--link-rate", "12M", frames=200)  # 10 seconds for all of them
    page.click("downloadStart")
    eventually(lambda: page.find(".job button:not([hidden])"), "the button").click()
    end = eventually(lambda: re.search(r"cancelled after (\d+) frame", page.text("jobs")), "its end")
    frames = int(end.group(1))
    assert frames < 200
    page.await_state("idle")
    files = (tmp_path / "files").glob("*.raw")
    assert sum(file.stat().st_size for file in files) == frames * WIDTH * HEIGHT
