"""The page in the browser, as its user sees and operates it."""

from __future__ import annotations

from selenium.webdriver import ActionChains, Chrome
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.remote.webelement import WebElement

from processes import eventually


class Page:
    def __init__(self, browser: Chrome, url: str) -> None:
        self.browser = browser
        browser.get(url)
        eventually(lambda: "Telvo" in self.find("#program").text, "the page meets the program")

    def find(self, selector: str) -> WebElement:
        return self.browser.find_element(By.CSS_SELECTOR, selector)

    def part(self, name: str) -> WebElement:
        """A named part of the selected camera's card or controls."""
        return self.find(f".card.selected [data-part={name}], "
                         f".controls:not([hidden]) [data-part={name}]")

    def text(self, name: str) -> str:
        return self.part(name).text

    def click(self, name: str) -> None:
        part = self.part(name)
        self.browser.execute_script("arguments[0].scrollIntoView({block: 'nearest'})", part)
        eventually(part.is_enabled, f"{name} can be pressed")
        part.click()

    def tab(self, name: str) -> None:
        self.find(f".controls:not([hidden]) [data-tab={name}]").click()

    @property
    def state(self) -> str:
        return self.part("stateLine").get_attribute("data-state")

    def await_state(self, *states: str) -> None:
        eventually(lambda: self.state in states, f"state {states}")

    def open_camera(self, address: str) -> None:
        """By its button, unless it is open."""
        self.find(f"button[aria-label^='Open'][aria-label$='{address}']").click()
        eventually(lambda: address in self.text("about"), f"{address} is shown")
        self.await_state("idle")

    def select(self, address: str) -> None:
        """One of the cameras that are open."""
        eventually(lambda: self.find(f"button[aria-label^='Select'][aria-label$='{address}']"),
                   f"{address} is open").click()
        eventually(lambda: address in self.text("about"), f"{address} is selected")

    # Pictures

    @property
    def number(self) -> int:
        """Of the picture shown; -1: there is none."""
        return int(self.part("frame").get_attribute("data-number") or -1)

    @property
    def shown(self) -> str:
        """LIVE or RECORDED."""
        return self.part("shownWhat").get_attribute("textContent")

    @property
    def canvas(self) -> WebElement:
        return self.part("frame").find_element(By.TAG_NAME, "canvas")

    def greys(self) -> list[int]:
        """What the picture's canvas shows at the points of a grid."""
        return self.browser.execute_script("""
            const [canvas, across, down] = arguments;
            const {width, height} = canvas;
            const {data} = canvas.getContext('2d').getImageData(0, 0, width, height);
            const at = (part, all, size) => Math.floor((part + 0.5) / all * size);
            return Array.from({length: across * down}, (_, i) => data[4 * (
                at(Math.floor(i / across), down, height) * width + at(i % across, across, width))]);
            """, self.canvas, 40, 25)

    def drawn(self, points: list[tuple[int, int]], width: int, height: int) -> list[int]:
        """What it shows at 1:1 of these pixels of a picture of this size, which fits the canvas."""
        return self.browser.execute_script("""
            const [canvas, points, width, height] = arguments;
            const left = (canvas.width - width) >> 1;
            const top = (canvas.height - height) >> 1;
            const context = canvas.getContext('2d');
            return points.map(([x, y]) => context.getImageData(left + x, top + y, 1, 1).data[0]);
            """, self.canvas, points, width, height)

    def drag_on_picture(self, start: tuple[int, int], by: tuple[int, int]) -> None:
        """From a place relative to the canvas' middle, in CSS pixels."""
        picture = self.part("frame")
        ActionChains(self.browser).move_to_element_with_offset(picture, *start) \
            .click_and_hold().move_by_offset(*by).release().perform()

    # Settings

    def setting(self, name: str) -> WebElement:
        return eventually(lambda: self.find(f".controls:not([hidden]) [data-setting={name}]"),
                          f"the setting {name}")

    def set(self, name: str, value: str) -> None:
        """Types a value and confirms it."""
        control = self.setting(name)
        self.browser.execute_script("arguments[0].closest('details').open = true;"
                                    "arguments[0].scrollIntoView({block: 'center'})", control)
        control.send_keys(Keys.CONTROL + "a")
        control.send_keys(value + Keys.ENTER)

    def switch(self, name: str) -> None:
        """On, or off."""
        control = self.setting(name)
        self.browser.execute_script("arguments[0].closest('details').open = true;"
                                    "arguments[0].scrollIntoView({block: 'center'})", control)
        control.click()

    def outcome(self, name: str) -> tuple[str, str]:
        """What became of a setting: "taken", "differs", "refused" or "", and the words."""
        told = self.browser.execute_script(
            "const told = arguments[0].closest('.setting').querySelector('.outcome');"
            "return [told.dataset.kind ?? '', told.textContent]", self.setting(name))
        return tuple(told)

    def await_outcome(self, name: str) -> tuple[str, str]:
        eventually(lambda: self.outcome(name)[0], f"the camera's answer for {name}")
        return self.outcome(name)

    # Recording

    def choose(self, field: str, value: str) -> None:
        """One of the values that a field of the controls offers."""
        self.find(f".controls:not([hidden]) [name={field}] [value={value}], "
                  f".controls:not([hidden]) [name={field}][value={value}]").click()

    def fill(self, field: str, value: str) -> None:
        """A field of the controls, anew."""
        control = self.find(f".controls:not([hidden]) [name={field}]")
        control.send_keys(Keys.CONTROL + "a")
        control.send_keys(value)

    def record_until_trigger(self, trigger: str = "key") -> None:
        """In a ring, ended by the Trigger button or another trigger."""
        self.tab("recordPanel")
        self.choose("mode", "ring")
        self.choose("trigger", trigger)
        self.click("armToo")
        self.await_state("armed", "recording")

    def go_to_frame(self, frame: int) -> None:
        field = self.part("frameNumber")
        field.send_keys(Keys.CONTROL + "a")
        field.send_keys(str(frame) + Keys.ENTER)
        self.await_frame(frame)

    def await_frame(self, frame: int) -> None:
        eventually(lambda: self.shown == "RECORDED" and self.number == frame,
                   f"frame {frame}")

    def fetched_bytes(self, link: WebElement) -> int:
        """How much a link leads to."""
        return self.browser.execute_async_script("""
            const [link, done] = arguments;
            fetch(link.href).then((answer) => answer.arrayBuffer()).then((all) => done(all.byteLength));
            """, link)

    # Keys

    def press(self, *keys: str) -> None:
        ActionChains(self.browser).send_keys(*keys).perform()

    def type_anew(self, text: str) -> None:
        """In place of what the field with the focus holds."""
        ActionChains(self.browser).key_down(Keys.CONTROL).send_keys("a").key_up(Keys.CONTROL) \
            .send_keys(text).perform()

    def focused(self, script: str) -> object:
        """A property of the element that has the focus."""
        return self.browser.execute_script(f"return document.activeElement.{script}")

    def tab_to(self, selector: str, most: int = 150) -> None:
        """Presses Tab until the element has the focus."""
        for _ in range(most):
            if self.focused(f"matches({selector!r})"):
                return
            self.press(Keys.TAB)
        raise AssertionError(f"Tab does not reach {selector}")

    def problems(self) -> list[str]:
        """What the browser itself complains of."""
        return [entry["message"] for entry in self.browser.get_log("browser")
                if entry["level"] == "SEVERE" and "WebSocket connection" not in entry["message"]]
