"""Recordings, compared with what the camera itself says that it recorded."""

from __future__ import annotations

import itertools
from collections.abc import Iterator
from pathlib import Path

import numpy as np
import pytest
import telvo
from conftest import CameraProcess, eventually, start_camera

WIDTH, HEIGHT = 320, 240


@pytest.fixture(scope="module")
def recorded() -> Iterator[telvo.Recording]:
    """At least 150 frames: three blocks."""
    device = start_camera()
    with device.connect() as camera:
        camera.frame_rate = 1000
        yield camera.record(150)
    device.end()


def counters(images: np.ndarray) -> list[int]:
    return telvo.headers(images)["counter"].tolist()


def test_a_recording_has_at_least_the_frames_asked_for(recorded: telvo.Recording) -> None:
    assert 150 <= len(recorded) < 1000
    assert (recorded.width, recorded.height, recorded.sequences) == (WIDTH, HEIGHT, 1)


@pytest.mark.parametrize(
    "index",
    [
        slice(100, 140),
        slice(0, 5),
        slice(7, None),
        slice(-3, None),
        slice(5, 130, 50),
        slice(60, 140, 77),
        slice(None, None, 74),
        slice(140, 100, -3),
        slice(5, 5),
        slice(100_000, None),
    ],
    ids=str,
)
def test_slices_are_those_of_a_sequence(recorded: telvo.Recording, index: slice) -> None:
    images = recorded[index]
    expected = list(range(len(recorded)))[index]
    assert images.shape == (len(expected), HEIGHT, WIDTH)
    assert counters(images) == expected


def test_one_frame_is_one_picture(recorded: telvo.Recording) -> None:
    assert recorded[3].shape == (HEIGHT, WIDTH)
    assert counters(recorded[3]) == 3
    assert counters(recorded[-1]) == len(recorded) - 1
    for index in (len(recorded), -len(recorded) - 1):
        with pytest.raises(IndexError):
            recorded[index]


def test_a_recording_can_be_walked_through(recorded: telvo.Recording) -> None:
    assert [counters(image) for image in recorded] == list(range(len(recorded)))


def test_blocks_are_views_of_many_frames(recorded: telvo.Recording) -> None:
    seen = []
    for block in recorded.blocks(10, 149):
        assert block.view.shape == (len(block), HEIGHT, WIDTH)
        assert not block.view.flags.owndata
        assert block.first == block.headers["counter"][0] == counters(block.view)[0]
        seen += block.headers["counter"].tolist()
    assert seen == list(range(10, 149))


def test_the_next_block_does_not_come_over_a_view(recorded: telvo.Recording) -> None:
    blocks = recorded.blocks()
    view = next(blocks).view
    before = view.copy()
    with pytest.raises(telvo.ViewInUseError):
        next(blocks)
    assert np.array_equal(view, before)
    with pytest.raises(telvo.ViewInUseError):
        recorded[0]
    del view
    assert counters(recorded[0]) == 0


def test_reads_that_are_mixed_do_not_disturb_each_other(recorded: telvo.Recording) -> None:
    blocks = recorded.blocks()
    next(blocks)  # the next is under way
    assert counters(recorded[20:22]) == [20, 21]
    with pytest.raises(telvo.TelvoError, match="ended"):
        next(blocks)


def test_frames_are_read_into_memory_of_the_program(recorded: telvo.Recording) -> None:
    memory = np.zeros((120, HEIGHT, WIDTH), np.uint8)
    recorded.read_into(memory[10:], start=5)
    assert counters(memory[10:]) == list(range(5, 115))
    assert not memory[:10].any()


def test_every_byte_is_as_the_camera_recorded_it(tmp_path: Path) -> None:
    device = start_camera("--save-recordings", str(tmp_path))
    with device.connect() as camera:
        camera.frame_rate = 500
        camera.width = 640  # read with the size that was recorded, whatever the camera has then
        recording = camera.record(30)
        camera.width = 320
        images = recording[:]
        assert camera.width == 640
    device.end()
    saved = np.fromfile(tmp_path / f"{device.address}-0.raw", np.uint8)
    assert np.array_equal(images.ravel(), saved)


def recording_sequence(camera: telvo.Camera) -> int:
    return int(camera.read("expGetCurrentRecordingSequence")[0])


def test_sequences_are_recordings_of_their_own(device: CameraProcess) -> None:
    with device.connect() as camera:
        camera.record_mode = "continuous"
        camera.frame_rate = 1000
        camera.record_sequences = 4
        camera.external_trigger = True
        camera.trailer = 40
        with camera.start_recording():
            for sequence in range(3):
                device.tell("trigger")
                assert eventually(lambda: recording_sequence(camera) > sequence)
        first, second = camera.sequence(0), camera.sequence(1)
        assert camera.recording.sequences == 4
        stamps = [telvo.headers(each[-5:])["value"] for each in (first, second, first)]
        assert stamps[0].max() < stamps[1].min()
        assert np.array_equal(stamps[0], stamps[2])
        with pytest.raises(IndexError):
            camera.sequence(4)


def test_a_recording_shows_previews_and_ends_only_when_told_to(camera: telvo.Camera) -> None:
    camera.frame_rate = 100
    with camera.start_recording() as preview:
        for frame in itertools.islice(preview, 5):
            assert frame.view.shape == (HEIGHT, WIDTH)
        with pytest.raises(telvo.TelvoError, match="stop"):
            next(camera.live())
        with pytest.raises(telvo.TelvoError, match="stop"):
            camera.recording
        with pytest.raises(telvo.TelvoError, match="stop"):
            camera.width = 640
        assert not camera.is_idle
    assert len(camera.recording) >= 5


def test_a_recording_that_does_not_fit_is_refused(camera: telvo.Camera) -> None:
    with pytest.raises(telvo.TelvoError, match=f"only {camera.max_frames} frames"):
        camera.record(camera.max_frames + 1)


def test_a_recording_that_runs_is_found_at_connecting(device: CameraProcess) -> None:
    with device.connect() as camera:
        camera.frame_rate = 100
        camera.start_recording()
        assert camera.recorded_frames >= 0
    with device.connect() as camera:
        with pytest.raises(telvo.TelvoError, match="recording"):
            next(camera.live())
        camera.stop()
        assert len(camera.recording) > 0


def test_a_lost_link_ends_the_wait_for_a_block(device: CameraProcess) -> None:
    link = telvo.LinkSettings(heartbeat_timeout=1500, heartbeat_interval=100, answer_timeout=200)
    with telvo.Camera(device.address, link=link) as camera:
        camera.frame_rate = 1000
        recording = camera.record(150)
        blocks = recording.blocks()
        next(blocks)
        device.tell("silent")
        with pytest.raises(telvo.LinkLostError):
            for block in itertools.chain(blocks, itertools.repeat(None)):
                recording[:1]
