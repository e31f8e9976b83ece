"""What screen readers, keyboards and eyes need, on every part of the page."""

from __future__ import annotations

from collections.abc import Iterator

import pytest
from selenium.webdriver.common.keys import Keys

from page import Page
from processes import eventually

TABS = ("look", "settingsPanel", "recordPanel", "downloadPanel", "featurePanel")
OPERATED = {"button", "textbox", "searchbox", "combobox", "checkbox", "switch", "radio", "slider",
            "spinbutton", "tab", "link"}

# Text that is less distinct than it has to be, as "ratio: text". The ground is the nearest opaque one;
# text over the picture has its own.
CONTRAST = """
    const channel = (value) => value <= 0.03928 ? value / 12.92 : ((value + 0.055) / 1.055) ** 2.4;
    const paint = new OffscreenCanvas(1, 1).getContext('2d', {willReadFrequently: true});
    const rgba = (colour) => {
        paint.clearRect(0, 0, 1, 1);
        paint.fillStyle = colour;
        paint.fillRect(0, 0, 1, 1);
        return [...paint.getImageData(0, 0, 1, 1).data];
    };
    const luminance = (colour) => {
        const [r, g, b] = rgba(colour).map((value) => channel(value / 255));
        return 0.2126 * r + 0.7152 * g + 0.0722 * b;
    };
    const groundOf = (element) => {
        for (let at = element; at; at = at.parentElement) {
            const ground = getComputedStyle(at).backgroundColor;
            if (rgba(ground)[3] === 255) return ground;
        }
        return 'white';
    };
    const ratio = (element) => {
        const one = luminance(getComputedStyle(element).color) + 0.05;
        const other = luminance(groundOf(element)) + 0.05;
        return Math.max(one, other) / Math.min(one, other);
    };
    const hasText = (element) => [...element.childNodes].some(
        (node) => node.nodeType === Node.TEXT_NODE && node.data.trim() !== '');
    return [...document.body.querySelectorAll('*')]
        .filter((element) => hasText(element) && element.checkVisibility() && !element.closest(
            ':disabled, .unseen, .skip, .shown-what, .veil, .no-picture, option'))
        .filter((element) => ratio(element) < 4.5)
        .map((element) => `${ratio(element).toFixed(2)}: ${element.textContent.trim()}`);
"""

# Whether nothing shows the focus; notes where it is.
FOCUS_IS_UNSEEN = """
    if (document.activeElement === document.body) return false;
    window.visited.push(document.activeElement);
    const style = getComputedStyle(document.activeElement);
    return style.outlineStyle === 'none' || parseFloat(style.outlineWidth) < 2;
"""


def show_all(page: Page, tab: str) -> None:
    page.tab(tab)
    page.browser.execute_script("document.querySelectorAll('details').forEach((d) => d.open = true)")


def look_like(page: Page, scheme: str, width: int = 1440) -> None:
    page.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {
        "features": [{"name": "prefers-color-scheme", "value": scheme}]})
    page.browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", {
        "width": width, "height": 900, "deviceScaleFactor": 1, "mobile": False})


@pytest.fixture(scope="module")
def everything(shared_page: Page) -> Page:
    """With a recording and the features, so that every control is there."""
    page = shared_page
    page.record_until_trigger()
    page.click("trigger")
    page.await_state("idle")
    eventually(lambda: page.part("review").is_displayed(), "the timeline")
    page.tab("featurePanel")
    page.click("readFeatures")
    eventually(lambda: "features" in page.text("featuresFound"), "the features")
    return page


@pytest.fixture
def reviewed(everything: Page) -> Iterator[Page]:
    """At the usual size."""
    yield everything
    everything.browser.execute_cdp_cmd("Emulation.clearDeviceMetricsOverride", {})


def test_every_control_has_a_name_and_is_reached_by_tab(reviewed: Page) -> None:
    page = reviewed
    for tab in TABS:
        show_all(page, tab)
        nodes = page.browser.execute_cdp_cmd("Accessibility.getFullAXTree", {})["nodes"]
        controls = [node for node in nodes
                    if not node["ignored"] and node["role"]["value"] in OPERATED]
        assert len(controls) > 30
        assert [node for node in controls if not node.get("name", {}).get("value")] == []


def test_the_tab_key_visits_every_control_once_and_shows_where_it_is(reviewed: Page) -> None:
    page = reviewed
    show_all(page, "downloadPanel")
    expected = page.browser.execute_script("""
        const operated = 'a[href], button, input, select, summary, [tabindex="0"]';
        window.expected = [...document.querySelectorAll(operated)].filter((element) =>
            element.checkVisibility() && !element.disabled && element.tabIndex === 0);
        window.visited = [];
        document.activeElement.blur();
        return window.expected.length;""")
    assert expected > 30
    unseen = []
    for _ in range(expected + 1):  # once the browser's own controls are in between
        page.press(Keys.TAB)
        if page.browser.execute_script(FOCUS_IS_UNSEEN):
            unseen.append(page.focused("outerHTML")[:80])
    assert unseen == []
    assert page.browser.execute_script("""
        return window.expected.filter((element) => !window.visited.includes(element))
            .map((element) => element.outerHTML);""") == []


@pytest.mark.parametrize("scheme", ["light", "dark"])
def test_text_is_distinct_from_its_ground(reviewed: Page, scheme: str) -> None:
    page = reviewed
    look_like(page, scheme)
    for tab in TABS:
        show_all(page, tab)
        assert page.browser.execute_script(CONTRAST) == []


@pytest.mark.parametrize("width", [360, 800])
def test_a_narrow_screen_needs_no_sideways_scrolling(reviewed: Page, width: int) -> None:
    page = reviewed
    look_like(page, "light", width)
    for tab in TABS:
        show_all(page, tab)
        assert page.browser.execute_script(
            "return document.documentElement.scrollWidth") <= width
        beyond = page.browser.execute_script("""
            return [...document.querySelectorAll('button, input, select')].filter((element) =>
                element.checkVisibility() && !element.closest('.tabs, .sequences')
                && element.getBoundingClientRect().right > innerWidth).map((e) => e.outerHTML);""")
        assert beyond == []


def test_the_state_is_announced(reviewed: Page) -> None:
    page = reviewed
    announced = page.part("announced")
    assert announced.get_attribute("role") == "status"
    page.click("live")
    page.await_state("live")
    assert announced.get_attribute("textContent").endswith(": Live")
