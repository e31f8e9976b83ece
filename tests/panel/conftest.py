"""A browser for the tests of a file; each test has cameras and a panel of its own."""

from __future__ import annotations

import itertools
import shutil
from collections.abc import Callable, Iterator
from pathlib import Path

import pytest

BROWSER, DRIVER = (shutil.which(name) for name in ("chromium", "chromedriver"))
if BROWSER is None or DRIVER is None:
    pytest.exit("These tests need a browser: install the packages chromium and chromium-driver "
                "(scripts/setup.sh test).", returncode=1)

from selenium import webdriver  # noqa: E402 the driver is looked for first
from selenium.webdriver.chrome.service import Service  # noqa: E402

from page import Page  # noqa: E402
from processes import CameraProcess, PanelProcess  # noqa: E402

FLAGS = ("--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
         "--disable-background-networking", "--disable-component-update", "--disable-sync",
         "--disable-dev-shm-usage", "--force-device-scale-factor=1", "--window-size=1280,900")

# Its memory is full within seconds.
RECORDING_CAMERA = ("--memory", "20MB", "--set", "AcquisitionFrameRateRaw=200")

_addresses = (f"127.0.0.{last}" for last in itertools.count(11))


@pytest.fixture(scope="module")
def browser(tmp_path_factory: pytest.TempPathFactory) -> Iterator[webdriver.Chrome]:
    options = webdriver.ChromeOptions()
    options.binary_location = BROWSER
    for flag in (*FLAGS, f"--user-data-dir={tmp_path_factory.mktemp('profile')}"):
        options.add_argument(flag)
    options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
    driver = webdriver.Chrome(options=options, service=Service(DRIVER))
    yield driver
    driver.quit()


@pytest.fixture
def start_camera() -> Iterator[Callable[..., CameraProcess]]:
    """Starts a camera that ends with the test."""
    cameras = []

    def start(*options: str, prepared: bool = True) -> CameraProcess:
        cameras.append(CameraProcess(next(_addresses), *options, prepared=prepared))
        return cameras[-1]

    yield start
    for camera in cameras:
        camera.end()


@pytest.fixture
def start_panel(tmp_path: Path) -> Iterator[Callable[..., PanelProcess]]:
    """Starts a panel that ends with the test; downloads go to the folder "files"."""
    panels = []
    folder = tmp_path / "files"
    folder.mkdir()

    def start(*options: str, port: int = 0) -> PanelProcess:
        panels.append(PanelProcess(folder, *options, port=port))
        return panels[-1]

    yield start
    assert [panel.end() for panel in panels] == [0] * len(panels)


@pytest.fixture
def open_page(browser: webdriver.Chrome) -> Iterator[Callable[[str], Page]]:
    """Opens a page; the browser must have found nothing wrong with it."""
    pages = []

    def open_at(url: str) -> Page:
        pages.append(Page(browser, url))
        return pages[-1]

    yield open_at
    problems = pages[-1].problems() if pages else []
    while len(browser.window_handles) > 1:
        browser.close()
        browser.switch_to.window(browser.window_handles[0])
    browser.get("about:blank")
    assert problems == []


@pytest.fixture
def page(start_camera: Callable[..., CameraProcess], start_panel: Callable[..., PanelProcess],
         open_page: Callable[[str], Page]) -> Page:
    """The page with one open camera."""
    camera = start_camera(*RECORDING_CAMERA)
    panel = start_panel("--camera", camera.address)
    page = open_page(panel.url)
    page.camera = camera
    page.panel = panel
    page.await_state("idle")
    return page


@pytest.fixture(scope="module")
def shared_page(browser: webdriver.Chrome,
                tmp_path_factory: pytest.TempPathFactory) -> Iterator[Page]:
    """The same for tests that only look."""
    camera = CameraProcess(next(_addresses), *RECORDING_CAMERA)
    panel = PanelProcess(tmp_path_factory.mktemp("files"), "--camera", camera.address)
    page = Page(browser, panel.url)
    page.await_state("idle")
    yield page
    ended = panel.end()
    camera.end()
    assert ended == 0
