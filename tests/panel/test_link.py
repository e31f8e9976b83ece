"""A lost link, a program that ends, and several tabs."""

from __future__ import annotations

from processes import eventually


def test_a_lost_link_is_shown_until_it_is_back(page) -> None:
    page.click("live")
    page.await_state("live")
    eventually(lambda: page.number >= 0, "a picture")
    page.camera.tell("silent")
    page.await_state("lost")
    assert page.part("veil").is_displayed()
    assert "Link lost since" in page.text("veilText")
    page.click("crosshair")  # the page goes on
    assert page.part("crosshair").get_attribute("aria-pressed") == "true"
    page.camera.tell("talk")
    page.await_state("idle", "live")
    eventually(lambda: not page.part("veil").is_displayed(), "the veil is gone")


def test_a_program_that_ends_and_starts_again_is_met_again(page, start_panel) -> None:
    port = page.panel.port
    assert page.panel.end() == 0
    eventually(lambda: page.find("#offline").is_displayed(), "the page says so")
    assert "Cameras and recordings stay as they are" in page.find("#offline").text
    start_panel("--camera", page.camera.address, port=port)
    eventually(lambda: not page.find("#offline").is_displayed(), "the page goes on")
    page.await_state("idle")
    page.click("live")
    eventually(lambda: page.state == "live" and page.number > 3, "live pictures")


def test_two_tabs_see_the_same(page) -> None:
    first = page.browser.current_window_handle
    page.browser.switch_to.new_window("tab")
    second = page.browser.current_window_handle
    page.browser.get(page.panel.url)
    eventually(lambda: page.browser.find_elements("css selector", ".card.selected"), "the camera")
    page.click("live")
    page.await_state("live")
    page.tab("settingsPanel")
    page.set("exposure", "321")
    page.await_outcome("exposure")
    page.browser.switch_to.window(first)
    page.await_state("live")
    eventually(lambda: page.number > 0, "pictures in the first tab")
    page.tab("settingsPanel")
    eventually(lambda: page.setting("exposure").get_attribute("value") == "321", "the new exposure")
    page.click("live")
    page.await_state("idle")
    page.browser.switch_to.window(second)
    page.await_state("idle")


def test_closing_the_page_leaves_a_recording_as_it_is(page, open_page) -> None:
    page.record_until_trigger()
    page.browser.get("about:blank")
    again = open_page(page.panel.url)
    again.await_state("armed", "recording")
    again.click("stop")
    again.await_state("idle")
