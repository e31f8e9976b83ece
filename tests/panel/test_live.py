"""Live pictures and settings."""

from __future__ import annotations

import re

from selenium.webdriver import ActionChains
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys

from page import Page
from processes import HEIGHT, WIDTH, eventually, telvo


def go_live(page: Page) -> None:
    page.click("live")
    page.await_state("live")
    eventually(lambda: page.shown == "LIVE" and page.number >= 0, "a live picture")


def test_live_pictures_change_and_tell_their_latency(page: Page) -> None:
    go_live(page)
    first = page.number
    before = page.greys()
    assert len(set(before)) > 50  # a picture, not a blank
    eventually(lambda: page.number > first + 5, "more live pictures")
    assert page.greys() != before
    eventually(lambda: re.fullmatch(r"\d+ ms", page.text("latency")), "a latency")
    eventually(lambda: re.match(r"\d.* /s", page.text("fps")), "a frame rate")
    page.tab("look")
    assert re.match(r"mean \d+\.\d · black \d+\.\d % · white \d+\.\d %", page.text("histogramWords"))
    assert "% of the best" in page.text("focusWords")


def test_the_last_picture_stays_when_live_ends(page: Page) -> None:
    go_live(page)
    page.click("live")
    page.await_state("idle")
    last = page.number
    page.click("crosshair")
    assert page.number == last
    assert len(set(page.greys())) > 50


def test_a_setting_reaches_the_camera(page: Page) -> None:
    page.tab("settingsPanel")
    page.set("exposure", "250")
    kind, words = page.await_outcome("exposure")
    assert (kind, "250" in words) == ("taken", True)
    page.click("close")
    eventually(lambda: page.find("#welcome").is_displayed(), "the camera is let go")
    assert telvo("get", "--camera", page.camera.address, "exposure").startswith("exposure=250")


def test_a_setting_that_the_camera_took_otherwise_says_so(page: Page) -> None:
    page.tab("settingsPanel")
    page.set("width", "100000")
    kind, words = page.await_outcome("width")
    assert kind == "differs"
    taken = page.setting("width").get_attribute("value")
    assert int(taken) < 100000
    assert words.startswith(f"camera took {taken} instead of 100000")


def test_a_refused_setting_keeps_the_cameras_value(page: Page) -> None:
    page.tab("settingsPanel")
    before = page.setting("exposure").get_attribute("value")
    page.set("exposure", "99999999")
    assert page.await_outcome("exposure")[0] == "refused"
    assert page.setting("exposure").get_attribute("value") == before


def test_a_picture_area_drawn_with_the_mouse_is_in_the_cameras_steps(page: Page) -> None:
    go_live(page)
    page.click("drawRoi")
    page.drag_on_picture((-101, -67), (211, 143))
    drawn = re.search(r"(\d+) × (\d+) at (\d+), (\d+)", page.text("regionText"))
    width, height, left, top = (int(number) for number in drawn.groups())
    assert 0 < width < WIDTH and 0 < height < HEIGHT
    page.click("regionApply")
    eventually(lambda: f"{width} by {height} pixels" in page.canvas.get_attribute(
        "aria-label"), "live pictures of the drawn size")
    page.tab("settingsPanel")
    for name, value in (("width", width), ("height", height), ("offset-x", left),
                        ("offset-y", top)):
        eventually(lambda n=name, v=value: page.setting(n).get_attribute("value") == str(v),
                   f"{name} {value}")


def outlined(page: Page) -> dict | None:
    """Where the canvas is pink, as nothing but a trigger window is over a grey picture."""
    return page.browser.execute_script("""
        const canvas = arguments[0];
        const {width, height} = canvas;
        const {data} = canvas.getContext('2d').getImageData(0, 0, width, height);
        const found = [];
        for (let i = 0; i < data.length; i += 4) {
            if (data[i] > data[i + 1] + 30 && data[i + 2] > data[i + 1] + 15) {
                found.push([i / 4 % width, Math.floor(i / 4 / width)]);
            }
        }
        const across = found.map(([x]) => x);
        const down = found.map(([, y]) => y);
        return found.length === 0 ? null : {left: Math.min(...across), right: Math.max(...across),
            top: Math.min(...down), bottom: Math.max(...down)};
        """, page.canvas)


def test_a_trigger_window_is_drawn_set_and_shown(page: Page) -> None:
    go_live(page)
    page.click("oneToOne")
    assert outlined(page) is None
    page.click("drawWindow")
    page.drag_on_picture((-90, -60), (150, 100))
    drawn = re.search(r"Trigger window: (\d+) × (\d+) at (\d+), (\d+)", page.text("regionText"))
    width, height, left, top = (int(number) for number in drawn.groups())
    assert abs(width - 150) <= 8 and abs(height - 100) <= 8
    assert abs(left - (WIDTH // 2 - 90)) <= 8 and abs(top - (HEIGHT // 2 - 60)) <= 8
    page.click("regionApply")
    page.tab("settingsPanel")
    for name, value in (("width", width), ("height", height), ("left", left), ("top", top)):
        eventually(lambda n=f"window-{name}", v=value:
                   page.setting(n).get_attribute("value") == str(v), f"window-{name} {value}")

    page.switch("window-trigger")
    where = eventually(lambda: outlined(page), "the window over the picture")
    assert abs(where["right"] - where["left"] - width) <= 4  # a line is up to two pixels wide
    label = 20  # above it is its name
    assert 0 <= where["bottom"] - where["top"] - height <= label + 4
    page.switch("window-trigger")
    eventually(lambda: outlined(page) is None, "none where nothing triggers")


def test_zoomed_in_far_enough_the_value_of_a_pixel_is_exact(page: Page) -> None:
    go_live(page)
    page.click("crosshair")
    eventually(lambda: page.text("reading"), "the value at the crosshair")
    assert "≈" in page.text("reading") or "=" in page.text("reading")
    page.part("frame").send_keys("+" * 14)
    eventually(lambda: re.search(r"= \d+$", page.text("reading")), "an exact value")
    page.part("frame").send_keys(Keys.ARROW_RIGHT)
    eventually(lambda: page.text("reading").startswith(f"x {WIDTH // 2 + 1} "), "the next pixel")


def test_the_wheel_zooms_and_a_double_click_fits(page: Page) -> None:
    go_live(page)
    page.click("oneToOne")
    eventually(lambda: page.text("zoomText") == "100 %", "1:1")
    frame = page.part("frame")
    page.browser.execute_script(
        "arguments[0].dispatchEvent(new WheelEvent('wheel', {deltaY: -1, cancelable: true}))", frame)
    eventually(lambda: page.text("zoomText") == "125 %", "zoomed in by a step")
    ActionChains(page.browser).double_click(frame).perform()
    eventually(lambda: page.part("fit").get_attribute("aria-pressed") == "true", "fitted")


def test_settings_saved_are_loaded_again(page: Page, tmp_path) -> None:
    page.browser.execute_cdp_cmd("Browser.setDownloadBehavior", {
        "behavior": "allow", "downloadPath": str(tmp_path)})
    page.tab("settingsPanel")
    page.set("exposure", "300")
    page.await_outcome("exposure")
    page.click("saveSettings")
    (file,) = eventually(lambda: list(tmp_path.glob("settings-*.json")), "a settings file")
    page.set("exposure", "400")
    eventually(lambda: "400" in page.outcome("exposure")[1], "400 is taken")
    page.part("settingsFile").send_keys(str(file))
    eventually(lambda: page.setting("exposure").get_attribute("value") == "300", "300 again")


def test_features_are_found_by_a_search(page: Page) -> None:
    page.tab("featurePanel")
    page.click("readFeatures")
    eventually(lambda: re.match(r"\d+ features", page.text("featuresFound")), "the features")
    page.part("featureSearch").send_keys("exposuretime")
    found = page.browser.find_elements(By.CSS_SELECTOR, ".feature:not([hidden]) [data-feature]")
    assert "ExposureTimeRaw" in [one.get_attribute("data-feature") for one in found]
    assert len(found) < 10


def test_cameras_are_found_and_opened_side_by_side(start_camera, start_panel, open_page) -> None:
    cameras = [start_camera(), start_camera()]
    page = open_page(start_panel().url)
    page.find("#search").click()
    eventually(lambda: len(page.browser.find_elements(By.CSS_SELECTOR, ".chip")) == 2, "two cameras")
    for camera in cameras:
        page.open_camera(camera.address)
    cards = page.browser.find_elements(By.CSS_SELECTOR, ".card")
    left, right = (card.rect for card in cards)
    assert left["y"] == right["y"] and right["x"] >= left["x"] + left["width"]
    for card in cards:
        card.find_element(By.CSS_SELECTOR, "[data-part=live]").click()
    for card in cards:
        eventually(lambda c=card: int(c.find_element(By.CSS_SELECTOR, ".frame").get_attribute(
            "data-number") or 0) > 2, "live pictures of both")


def test_a_colour_cameras_pictures_have_colours_unless_they_are_not_wanted(
        start_camera, start_panel, open_page) -> None:
    camera = start_camera("--colour")
    page = open_page(start_panel("--camera", camera.address).url)
    page.await_state("idle")
    go_live(page)

    def has_colours() -> bool:
        return page.browser.execute_script("""
            const canvas = arguments[0];
            const {data} = canvas.getContext('2d').getImageData(0, 0, canvas.width, canvas.height);
            let coloured = 0;
            for (let i = 0; i < data.length; i += 4) {
                coloured += Math.abs(data[i] - data[i + 1]) + Math.abs(data[i + 1] - data[i + 2]) > 30;
            }
            return coloured > 100;
            """, page.canvas)

    eventually(has_colours, "colours")
    page.tab("look")
    page.part("filter").find_element(By.CSS_SELECTOR, "[value='']").click()
    eventually(lambda: not has_colours(), "the sensor's own pixels")
