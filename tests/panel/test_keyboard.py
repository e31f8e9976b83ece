"""The whole job without a mouse."""

from __future__ import annotations

from pathlib import Path

from selenium.webdriver.common.keys import Keys

from processes import eventually


def test_an_operators_whole_job_by_keyboard_alone(start_camera, start_panel, open_page,
                                                  tmp_path: Path) -> None:
    camera = start_camera("--memory", "20MB", "--set", "AcquisitionFrameRateRaw=200")
    page = open_page(start_panel().url)

    page.tab_to("#search")
    page.press(Keys.ENTER)
    eventually(lambda: page.browser.find_elements("css selector", ".chip button"), "the camera")
    page.tab_to(".chip button")
    page.press(Keys.ENTER)
    eventually(lambda: page.browser.find_elements("css selector", ".card.selected"), "its card")
    page.await_state("idle")

    page.tab_to("[data-part=live]")
    page.press(Keys.SPACE)
    eventually(lambda: page.shown == "LIVE", "live pictures")
    page.press(Keys.SPACE)
    page.await_state("idle")

    page.tab_to("[role=tab]")
    page.press(Keys.ARROW_RIGHT)
    page.tab_to("[data-setting=exposure]")
    page.type_anew("345" + Keys.ENTER)
    assert page.await_outcome("exposure")[0] == "taken"

    page.tab_to("[role=tab]")
    page.press(Keys.ARROW_RIGHT)
    page.tab_to("[name=mode]")
    page.press(Keys.ARROW_DOWN)
    assert page.focused("value") == "ring"
    page.tab_to("[name=trigger]")
    page.press("the T")
    assert page.focused("value") == "key"
    page.tab_to("[data-part=armToo]")
    page.press(Keys.ENTER)
    page.await_state("armed", "recording")
    page.tab_to("[data-part=trigger]")
    page.press(Keys.ENTER)
    page.await_state("idle")
    eventually(lambda: page.shown == "RECORDED", "a recorded frame")

    page.tab_to("[data-part=timeline]")
    page.press(Keys.HOME)
    page.await_frame(0)
    page.press(Keys.ARROW_RIGHT, Keys.ARROW_RIGHT)
    page.await_frame(2)
    page.press("i", Keys.ARROW_RIGHT)
    page.await_frame(3)
    page.press("o")
    assert page.text("marked") == "2 frames marked, 2 to 3"

    page.tab_to("[role=tab]")
    page.press(Keys.ARROW_RIGHT)
    page.tab_to("[name=name]")
    page.type_anew("by-keyboard" + Keys.ENTER)
    eventually(lambda: "verified: 2 of 2 frames" in page.text("jobs"), "the verdict")
    assert (tmp_path / "files" / "by-keyboard.raw").stat().st_size == 2 * 320 * 240
    assert camera.address in page.text("about")
