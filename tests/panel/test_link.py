"""A lost link, a program that ends, several tabs, and who is let in."""

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


def test_a_camera_that_is_used_for_the_first_time_is_remarked(start_camera, start_panel,
                                                              open_page) -> None:
    camera = start_camera(prepared=False)
    page = open_page(start_panel("--camera", camera.address).url)
    eventually(lambda: page.find("#notices").text, "a notice")
    assert (f"the camera at {camera.address} is used for the first time: its user set 1"
            in page.find("#notices").text)


def test_the_address_with_the_token_lets_in_and_no_other(start_camera, start_panel,
                                                         open_page) -> None:
    camera = start_camera()
    panel = start_panel("--listen", "127.0.0.1", "--camera", camera.address)
    page = open_page(panel.url)
    assert "?token=" in panel.url
    assert "token" not in page.browser.current_url  # nor is it in what is shown or passed on
    page.await_state("idle")
    page.click("live")
    eventually(lambda: page.state == "live" and page.number > 0, "live pictures")

    page.browser.delete_all_cookies()
    page.browser.refresh()
    eventually(lambda: "token" in page.find("body").text, "a stranger is refused")
    assert not page.browser.find_elements("css selector", ".card")
    assert [problem for problem in page.problems() if "403" not in problem] == []
