"""Live pictures: views that nobody changes unnoticed, and copies."""

from __future__ import annotations

import itertools

import numpy as np
import pytest
import telvo
from conftest import CameraProcess


def counter_in(image: np.ndarray) -> int:
    return int(image[0, 4]) | int(image[0, 5]) << 8


def test_live_pictures_come_in_order_and_with_their_headers(camera: telvo.Camera) -> None:
    counters = []
    times = []
    for frame in itertools.islice(camera.live(), 20):
        assert frame.view.shape == (240, 320)
        assert counter_in(frame.view) == frame.header["counter"]
        counters.append(int(frame.header["counter"]))
        times.append(int(frame.header["value"]))
    assert counters == sorted(set(counters))
    assert times == sorted(set(times))


def test_a_view_is_the_librarys_memory_and_the_array_is_not(camera: telvo.Camera) -> None:
    for frame in itertools.islice(camera.live(), 3):
        assert np.shares_memory(frame.view, frame.view)
        assert not np.shares_memory(frame.view, frame.array)
        assert not frame.view.flags.writeable
        assert np.array_equal(frame.view, frame.array)
        assert np.array_equal(np.asarray(frame), frame.array)


def test_a_snapshot_is_one_picture_to_keep(camera: telvo.Camera) -> None:
    frame = camera.snapshot()
    assert camera.is_idle
    assert counter_in(frame.array) == frame.header["counter"]


def test_kept_arrays_stay_as_they_were(camera: telvo.Camera) -> None:
    kept = [(frame.header, frame.array) for frame in itertools.islice(camera.live(), 8)]
    assert [counter_in(array) for _, array in kept] == [header["counter"] for header, _ in kept]
    assert len({counter_in(array) for _, array in kept}) == 8


def test_the_next_picture_does_not_come_over_a_view(camera: telvo.Camera) -> None:
    with camera.start_recording() as pictures:  # an iterator that goes on after an exception
        frame = next(pictures)
        corner = frame.view[:4, :6]
        before = corner.copy()
        with pytest.raises(telvo.ViewInUseError):
            next(pictures)
        with pytest.raises(telvo.ViewInUseError):
            camera.stop()
        assert np.array_equal(corner, before)
        del corner
        assert next(pictures).header["counter"] != frame.header["counter"]


def test_live_mode_does_not_end_under_a_view(camera: telvo.Camera) -> None:
    for frame in camera.live():
        view = frame.view
        before = view.copy()
        break
    with pytest.raises(telvo.ViewInUseError):
        camera.width = 320
    with pytest.raises(telvo.ViewInUseError):
        next(camera.live())
    assert np.array_equal(view, before)
    del view
    camera.width = 320
    assert camera.is_idle


def test_an_overwritten_picture_gives_no_view_and_no_array(camera: telvo.Camera) -> None:
    first, second = itertools.islice(camera.live(), 2)
    for use in (lambda: first.view, lambda: first.array, lambda: np.asarray(first)):
        with pytest.raises(telvo.ViewExpiredError):
            use()
    assert first.header["counter"] < second.header["counter"]


def test_leaving_the_loop_ends_live_mode(camera: telvo.Camera) -> None:
    for frame in camera.live():
        assert not camera.is_idle
        break
    assert camera.is_idle


def test_the_loop_ends_when_the_camera_is_stopped(camera: telvo.Camera) -> None:
    frames = 0
    for frame in camera.live():
        frames += 1
        if frames == 3:
            camera.stop()
    assert frames == 3


def test_what_is_begun_ends_the_live_pictures_before(camera: telvo.Camera) -> None:
    before = camera.live()
    next(before)
    assert next(camera.live()).view.shape == (240, 320)
    assert list(before) == []


def test_a_camera_that_pauses_is_waited_for_so_long_and_no_longer(camera: telvo.Camera) -> None:
    with pytest.raises(telvo.NoImageError, match="0.5 seconds"):
        for frame in camera.live(timeout=0.5):
            camera.call("expPauseLiveMode", 1)


def test_a_view_outlives_the_loop_and_the_camera(device: CameraProcess) -> None:
    with device.connect() as camera:
        for frame in camera.live():
            view = frame.view
            break
        before = view.copy()
    assert np.array_equal(view, before)
    with pytest.raises(telvo.ConnectError):
        device.connect()
    del view  # and only now the camera is let go
    device.connect().close()


def test_an_exception_in_the_loop_ends_it_with_the_camera(device: CameraProcess) -> None:
    with pytest.raises(ZeroDivisionError):
        with device.connect() as camera:
            for frame in camera.live():
                view = frame.view
                1 // 0
    del view
    device.connect().close()
