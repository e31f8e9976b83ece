"""Recording, looking through a recording, and getting it."""

from __future__ import annotations

import re
from pathlib import Path

import numpy
from selenium.webdriver import ActionChains
from selenium.webdriver.common.keys import Keys

from page import Page
from processes import HEIGHT, WIDTH, eventually

BACKGROUND = 8  # grey value around a picture
JPEG_ERROR = 8  # grey values by which a compressed preview is off on average, at most


def await_recorded(page: Page, frames: int) -> None:
    """Until the camera has recorded so many, and goes on."""

    def recorded() -> int:
        progress = re.search(r"([\d\s,]+)(of .*)? frame", page.text("progress"))
        return int(re.sub(r"\D", "", progress.group(1))) if progress else 0

    eventually(lambda: recorded() >= frames, f"{frames} frames before the trigger")


def record(page: Page) -> int:
    """In a ring until the button; the number of frames."""
    page.record_until_trigger()
    await_recorded(page, 20)
    page.click("trigger")
    page.await_state("idle")
    eventually(lambda: page.part("review").is_displayed(), "the timeline")
    eventually(lambda: page.shown == "RECORDED", "the frame at the trigger")
    return int(page.part("timeline").get_attribute("aria-valuemax")) + 1


def frames_of(file: Path) -> numpy.ndarray:
    return numpy.fromfile(file, dtype=numpy.uint8).reshape(-1, HEIGHT, WIDTH)


def exact_values(page: Page, points: list[tuple[int, int]]) -> dict[tuple[int, int], int]:
    """Read where the crosshair is moved to, with the picture enlarged until values are exact."""
    page.click("crosshair")
    frame = page.part("frame")
    x, y = WIDTH // 2, HEIGHT // 2
    frame.send_keys("+" * 16)
    values = {}
    for to_x, to_y in points:
        frame.send_keys((Keys.ARROW_RIGHT if to_x > x else Keys.ARROW_LEFT) * abs(to_x - x)
                        + (Keys.ARROW_DOWN if to_y > y else Keys.ARROW_UP) * abs(to_y - y))
        x, y = to_x, to_y
        reading = eventually(lambda: re.fullmatch(
            rf"x {to_x}\s+y {to_y}\s+= (\d+)", page.text("reading")), f"the value at {x}, {y}")
        values[x, y] = int(reading.group(1))
    page.click("crosshair")
    page.click("fit")
    return values


def drawn_values(page: Page, points: list[tuple[int, int]]) -> list[int]:
    """What the canvas shows of these pixels at 1:1."""
    page.click("oneToOne")
    eventually(lambda: page.text("zoomText") == "100 %", "1:1")

    def whole() -> list[int] | None:
        values = page.drawn(points, WIDTH, HEIGHT)
        return values if values.count(BACKGROUND) < len(values) / 10 else None

    values = eventually(whole, "more than the part that was enlarged before")
    page.click("fit")
    return values


def test_what_is_recorded_is_seen_and_downloaded_to_the_last_pixel(
        start_camera, start_panel, open_page, tmp_path: Path) -> None:
    camera = start_camera("--memory", "20MB", "--set", "AcquisitionFrameRateRaw=200",
                          "--save-recordings", str(tmp_path))
    panel = start_panel("--camera", camera.address)
    page = open_page(panel.url)
    page.await_state("idle")
    count = record(page)

    frame = count // 3
    page.go_to_frame(frame)
    near_middle = [(160, 120), (163, 118), (158, 125)]
    exact = exact_values(page, near_middle)
    assert page.number == frame
    spread = [(x, y) for x in range(10, WIDTH, 23) for y in range(10, HEIGHT, 17)]
    drawn = drawn_values(page, spread)

    page.part("timeline").send_keys(Keys.HOME + Keys.PAGE_UP)
    page.await_frame(10)
    page.press("i")
    page.part("timeline").send_keys(Keys.ARROW_RIGHT * 4)
    page.await_frame(14)
    page.press("o")
    assert page.text("marked") == "5 frames marked, 10 to 14"
    page.tab("downloadPanel")
    page.click("downloadStart")
    eventually(lambda: "verified" in page.text("jobs"), "the verdict")
    assert "✓ verified: 5 of 5 frames, none missing" in page.text("jobs")
    eventually(lambda: "recording.raw" in page.text("files"), "the file is listed")
    assert page.fetched_bytes(page.find(".files a")) == 5 * WIDTH * HEIGHT

    assert panel.end() == 0
    camera.end()
    truth = frames_of(tmp_path / f"{camera.address}-0.raw")
    assert len(truth) == count
    assert exact == {(x, y): int(truth[frame, y, x]) for x, y in near_middle}
    off = [abs(int(truth[frame, y, x]) - value) for (x, y), value in zip(spread, drawn)]
    assert sum(off) / len(off) < JPEG_ERROR
    assert (frames_of(tmp_path / "files" / "recording.raw") == truth[10:15]).all()


def test_the_frame_at_the_trigger_is_marked(page: Page) -> None:
    page.record_until_trigger("external")
    await_recorded(page, 5)
    page.camera.tell("trigger")
    page.await_state("idle")
    eventually(lambda: page.shown == "RECORDED", "the frame at the trigger")
    page.part("timeline").send_keys(Keys.HOME)
    page.await_frame(0)
    assert "\u2212" in page.text("frameFacts")  # before the trigger
    page.click("toTrigger")
    eventually(lambda: "+0.000 ms from the trigger" in page.text("frameFacts"), "the trigger")


def test_the_keys_step_and_the_mouse_scrubs(page: Page) -> None:
    count = record(page)
    page.go_to_frame(count // 2)
    timeline = page.part("timeline")
    timeline.send_keys(Keys.ARROW_RIGHT)
    page.await_frame(count // 2 + 1)
    timeline.send_keys(Keys.ARROW_LEFT * 3)
    page.await_frame(count // 2 - 2)
    timeline.send_keys(Keys.END)
    page.await_frame(count - 1)
    ActionChains(page.browser).move_to_element_with_offset(
        timeline, -timeline.rect["width"] // 4, 0).click().perform()
    eventually(lambda: abs(page.number - count / 4) <= 1 + count / timeline.rect["width"],
               "the frame a quarter along")
    assert "counter" in page.text("frameFacts") and "mean" in page.text("frameFacts")
    assert re.fullmatch(r"\d+ ms", page.text("frameTook"))


def test_keys_that_are_faster_than_the_pictures_lose_no_step(page: Page) -> None:
    record(page)
    page.part("timeline").send_keys(Keys.HOME)
    page.await_frame(0)
    page.browser.execute_async_script("""
        const [timeline, presses, done] = arguments;
        let left = presses;
        const timer = setInterval(() => {
            timeline.dispatchEvent(new KeyboardEvent('keydown', {key: 'ArrowRight'}));
            left -= 1;
            if (left === 0) {
                clearInterval(timer);
                done();
            }
        }, 5); // ms, less than a picture takes
        """, page.part("timeline"), 40)
    page.await_frame(40)


def test_thumbnails_and_brightness_come_by_themselves(page: Page) -> None:
    record(page)
    timeline = "document.querySelector('.card.selected [data-part=timelineCanvas]')"

    def colours(first: float, last: float) -> int:
        """How many different greys a band of the timeline has."""
        return page.browser.execute_script(f"""
            const canvas = {timeline};
            const top = Math.floor({first} * canvas.height);
            const rows = Math.floor({last - first} * canvas.height);
            const {{data}} = canvas.getContext('2d').getImageData(0, top, canvas.width, rows);
            return new Set(new Uint32Array(data.buffer)).size;""")

    eventually(lambda: colours(0.05, 0.45) > 100, "thumbnails")
    eventually(lambda: page.browser.execute_script(f"""
        const canvas = {timeline};
        const style = getComputedStyle(canvas).getPropertyValue('--accent').trim();
        const [, r, g, b] = /#(..)(..)(..)/.exec(style).map((part) => parseInt(part, 16));
        const half = canvas.height / 2;
        const {{data}} = canvas.getContext('2d').getImageData(0, half, canvas.width, half);
        let found = 0;
        for (let i = 0; i < data.length; i += 4) {{
            found += Math.hypot(data[i] - r, data[i + 1] - g, data[i + 2] - b) < 60;
        }}
        return found > canvas.width / 4;"""), "the curve of brightness")


def test_playing_goes_through_the_marked_range(page: Page) -> None:
    record(page)
    page.go_to_frame(20)
    page.click("markIn")
    page.go_to_frame(29)
    page.click("markOut")
    page.click("play")
    seen: set[int] = set()
    eventually(lambda: seen.add(page.number) or len(seen) >= 5, "frames play")
    page.click("play")
    assert page.part("play").get_attribute("aria-pressed") == "false"
    assert all(20 <= frame <= 29 for frame in seen)


def test_live_pictures_come_back_after_looking_at_frames(page: Page) -> None:
    record(page)
    page.click("live")
    eventually(lambda: page.shown == "LIVE", "live pictures")
    page.part("timeline").send_keys(Keys.END)
    eventually(lambda: page.shown == "RECORDED", "a frame again")
    page.await_state("idle")


def test_what_the_operator_has_chosen_stays_when_settings_change(page: Page) -> None:
    page.tab("recordPanel")
    page.choose("mode", "ring")
    page.choose("trigger", "key")
    page.tab("settingsPanel")
    for exposure in ("250", "260"):  # with the second answer, what is told of the first has come
        page.set("exposure", exposure)
        eventually(lambda e=exposure: e in page.outcome("exposure")[1], f"{exposure} is taken")
    page.tab("recordPanel")
    assert page.find(".controls:not([hidden]) [name=mode][value=ring]").is_selected()
    assert page.part("recordForm").find_element("name", "trigger").get_attribute("value") == "key"


def test_stop_ends_a_recording_without_a_trigger(page: Page) -> None:
    page.record_until_trigger()
    page.click("stop")
    page.await_state("idle")


def test_a_flash_copy_is_shown_and_stopped(start_camera, start_panel, open_page) -> None:
    with_card = start_camera("--record-at-power-on", "--memory", "4MB", "--flash-rate", "100KB")
    without = start_camera("--no-flash-card")
    page = open_page(start_panel("--camera", with_card.address, "--camera", without.address).url)
    page.select(without.address)
    page.await_state("idle")
    assert not page.part("flash").is_displayed()

    page.select(with_card.address)
    page.await_state("idle")
    page.click("flash")
    page.await_state("flash")
    assert page.text("stateWord") == "Copying to the flash card"
    assert page.part("flash").get_attribute("aria-pressed") == "true"
    assert not page.part("arm").is_enabled()
    eventually(lambda: re.match(r"\d+\.\d s", page.text("progress")), "its time")
    page.click("flash")
    page.await_state("idle")
    eventually(lambda: page.part("flash").get_attribute("aria-pressed") == "false", "the end")
    assert "the copy to the flash card has ended" in page.text("stateText")


def test_each_of_several_sequences_is_looked_at_and_downloaded(
        start_camera, start_panel, open_page, tmp_path: Path) -> None:
    camera = start_camera("--memory", "8MB", "--set", "AcquisitionFrameRateRaw=200",
                          "--save-recordings", str(tmp_path))
    panel = start_panel("--camera", camera.address)
    page = open_page(panel.url)
    page.await_state("idle")
    page.tab("recordPanel")
    page.choose("mode", "ring")
    page.choose("trigger", "external")
    page.part("recordForm").find_element("name", "sequences").send_keys("2")
    page.click("armToo")
    page.await_state("armed")
    eventually(lambda: camera.tell("trigger") or page.state == "idle", "a trigger for each")

    first, second = page.part("sequences").find_elements("tag name", "button")
    assert first.text.startswith("Sequence 0") and second.text.startswith("Sequence 1")
    assert first.get_attribute("aria-pressed") == "true"
    second.click()
    eventually(lambda: "of sequence 1" in page.canvas.get_attribute("aria-label"), "its frame")
    page.click("toTrigger")
    eventually(lambda: "+0.000 ms from the trigger" in page.text("frameFacts"), "its trigger")
    page.tab("downloadPanel")
    assert page.text("rangeText").endswith("of sequence 1")
    page.click("downloadStart")
    eventually(lambda: "verified" in page.text("jobs"), "the verdict")

    assert panel.end() == 0
    camera.end()
    truth = frames_of(tmp_path / f"{camera.address}-1.raw")
    assert (frames_of(tmp_path / "files" / "recording.raw") == truth).all()
