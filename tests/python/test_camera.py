"""Connecting, settings, and what a program sees of a camera that is not there any more."""

from __future__ import annotations

import ctypes
import threading
import time

import numpy as np
import pytest
import telvo
from conftest import PATIENT, CameraProcess, eventually, start_camera


def test_a_camera_that_nobody_prepared_is_connected_a_second_time() -> None:
    unprepared = CameraProcess()
    with unprepared.connect() as camera:
        assert camera.width == 1280
    unprepared.end()


def test_a_camera_that_another_program_has_is_not_connected(camera: telvo.Camera) -> None:
    address = camera.identity["ipAddress"]
    with pytest.raises(telvo.ConnectError, match=address):
        telvo.Camera(address, link=PATIENT)


def test_a_camera_says_who_it_is(camera: telvo.Camera) -> None:
    assert camera.identity["model"] == "TOVI1"
    assert camera.identity["cameraName"] == "virtual camera"


def test_settings_are_the_cameras(camera: telvo.Camera) -> None:
    camera.frame_rate = 500
    camera.exposure = np.uint16(200)
    camera.gain = 2.9
    camera.record_mode = "continuous"
    camera.external_trigger = True
    camera.custom_data = 0x7FFFFFFF
    assert (camera.frame_rate, camera.exposure, camera.gain) == (500, 200, 2.0)
    assert camera.read("expGetFrameRate")[2] == 500
    assert camera.read("expGetRecordMode") == (1,)
    assert (camera.record_mode, camera.external_trigger) == ("continuous", True)
    assert camera.custom_data == 0x7FFFFFFF
    camera.record_mode = "single"
    camera.external_trigger = False
    assert (camera.record_mode, camera.external_trigger) == ("single", False)


def test_offsets_are_told_apart(camera: telvo.Camera) -> None:
    camera.offset_x, camera.offset_y = 64, 32
    assert (camera.offset_x, camera.offset_y) == (64, 32)
    camera.offset_x, camera.offset_y = 0, 0


def test_a_refused_value_is_named_with_the_limits(camera: telvo.Camera) -> None:
    camera.frame_rate = 1000
    assert camera.limits("exposure") == (1, 999)
    with pytest.raises(telvo.SettingError, match="refuses exposure = 1000; it takes 1 to 999"):
        camera.exposure = 1000


@pytest.mark.parametrize("value", [-1, 2**32 + 100])
def test_a_number_beyond_32_bits_is_not_cut(camera: telvo.Camera, value: int) -> None:
    camera.exposure = 50
    with pytest.raises(telvo.SettingError, match=f"exposure = {value}"):
        camera.exposure = value
    assert camera.exposure == 50


def test_a_word_that_is_none_of_the_choice_is_refused(camera: telvo.Camera) -> None:
    with pytest.raises(telvo.SettingError, match="record_mode = 'twice'"):
        camera.record_mode = "twice"


def test_what_the_camera_only_tells_cannot_be_set(camera: telvo.Camera) -> None:
    with pytest.raises(AttributeError, match="temperature"):
        camera.temperature = 5
    assert camera.temperature > 0


def test_a_setting_that_there_is_not_cannot_be_set(camera: telvo.Camera) -> None:
    with pytest.raises(AttributeError, match="exposur"):
        camera.exposur = 5


def test_every_setting_says_what_it_is() -> None:
    assert telvo.Camera.exposure.__doc__ == "Exposure time, in the camera's unit."


def test_a_setting_that_the_camera_lacks_is_an_error() -> None:
    device = start_camera("--missing", "GainRaw", "--missing", "Temperature")
    with device.connect() as camera:
        with pytest.raises(telvo.SettingError, match="gain"):
            camera.gain
        with pytest.raises(telvo.SettingError, match="temperature"):
            camera.temperature
    device.end()


def test_any_c_function_can_be_called_by_its_name(camera: telvo.Camera) -> None:
    case = ctypes.c_uint8(9)
    width, height = ctypes.c_uint32(), ctypes.c_uint32()
    camera.call("expGetUsedCameraType", case, width, height)  # its id is the second parameter
    assert case.value in (0, 1)
    assert (width.value, height.value) == (1280, 1024)
    function = "expSetNumberOfRecordSequences"
    with pytest.raises(telvo.CallError, match=f"{function} failed with -1") as info:
        camera.call(function, 3)
    assert (info.value.function, info.value.result) == (function, -1)


def test_other_threads_run_while_the_library_waits(camera: telvo.Camera) -> None:
    buffer = (ctypes.c_uint8 * 4)()
    waiting = threading.Thread(target=camera.call, args=("expReadData", buffer, ctypes.c_uint32(4)))
    waiting.start()  # for two seconds: the camera says nothing
    turns = 0
    while waiting.is_alive():
        time.sleep(0.01)
        turns += 1
    assert turns > 20


def test_a_closed_camera_is_free_for_others_and_of_no_use(device: CameraProcess) -> None:
    camera = device.connect()
    camera.close()
    camera.close()
    with pytest.raises(telvo.TelvoError, match="closed"):
        camera.exposure
    device.connect().close()


def test_a_camera_that_is_dropped_is_disconnected(device: CameraProcess) -> None:
    camera = device.connect()
    del camera
    device.connect().close()


def test_a_lost_link_is_told_and_ends_live_pictures(device: CameraProcess) -> None:
    link = telvo.LinkSettings(heartbeat_timeout=1500, heartbeat_interval=100, answer_timeout=200)
    told: list[telvo.Camera] = []

    def close(lost: telvo.Camera) -> None:
        lost.close()
        told.append(lost)

    camera = telvo.Camera(device.address, link=link, on_link_lost=close)
    other = start_camera()
    with other.connect() as unharmed:
        with pytest.raises(telvo.TelvoError, match="lost|closed"):
            for frame in camera.live(timeout=60):
                device.tell("silent")
        assert eventually(lambda: told == [camera])
        assert unharmed.width == 320
    other.end()


def test_a_lost_link_is_an_exception_without_a_callback(device: CameraProcess) -> None:
    link = telvo.LinkSettings(heartbeat_timeout=1500, heartbeat_interval=100, answer_timeout=200)
    with telvo.Camera(device.address, link=link) as camera:
        with pytest.raises(telvo.LinkLostError):
            for frame in camera.live(timeout=60):
                device.tell("silent")
        with pytest.raises(telvo.LinkLostError):
            camera.exposure


def test_what_fails_before_a_lost_link_is_told_fails_for_that(device: CameraProcess) -> None:
    link = telvo.LinkSettings(heartbeat_timeout=3000, heartbeat_interval=100, answer_timeout=100)
    with telvo.Camera(device.address, link=link) as camera:
        device.tell("silent")
        with pytest.raises(telvo.LinkLostError):
            while True:
                camera.read("expIsStateFlashWrite")


def test_a_camera_that_answers_again_is_not_lost(device: CameraProcess) -> None:
    link = telvo.LinkSettings(heartbeat_timeout=60_000, heartbeat_interval=100, answer_timeout=100)
    with telvo.Camera(device.address, link=link) as camera:
        device.tell("silent")
        answers_again = threading.Timer(3, device.tell, ["talk"])
        answers_again.start()
        with pytest.raises(telvo.CallError):
            while answers_again.is_alive():
                camera.read("expIsStateFlashWrite")
        answers_again.join()
        assert camera.width == 320


def test_cameras_work_side_by_side_in_threads_of_their_own() -> None:
    devices = [start_camera(), start_camera()]
    counters: dict[str, list[int]] = {}

    def read(device: CameraProcess) -> None:
        with device.connect() as camera:
            camera.frame_rate = 1000
            images = camera.record(200)[:200]
            counters[device.address] = telvo.headers(images)["counter"].tolist()

    threads = [threading.Thread(target=read, args=(device,)) for device in devices]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert counters == {device.address: list(range(200)) for device in devices}
    for device in devices:
        device.end()
