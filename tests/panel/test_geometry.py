"""What the page computes without a camera: regions in the camera's steps, the part of a picture seen."""

from __future__ import annotations

import pytest

from page import Page

LIMITS = """{
    x: {minimum: 0, maximum: 1216, step: 16}, y: {minimum: 0, maximum: 1022, step: 2},
    width: {minimum: 64, maximum: 1280, step: 16}, height: {minimum: 2, maximum: 1024, step: 2}}"""


@pytest.fixture(scope="module")
def geometry(browser, tmp_path_factory):
    """Evaluates an expression over the page's modules."""
    from processes import PanelProcess
    panel = PanelProcess(tmp_path_factory.mktemp("files"))
    page = Page(browser, panel.url)

    def evaluate(expression: str):
        return page.browser.execute_async_script(f"""
            const done = arguments[arguments.length - 1];
            Promise.all([import('/region.js'), import('/viewport.js')]).then(
                ([{{RegionEditor, snap}}, {{Viewport}}]) => done({expression}));""")

    yield evaluate
    panel.end()


def edited(steps: str) -> str:
    return f"""(() => {{
        const editor = new RegionEditor({{x: 0, y: 0, width: 1280, height: 1024}}, {LIMITS}, 1280, 1024);
        {steps}
        const {{x, y, width, height}} = editor.region;
        return [x, y, width, height];
    }})()"""


def drawn(first: tuple[int, int], last: tuple[int, int]) -> str:
    return edited(f"""
        editor.begin({{x: {first[0]}, y: {first[1]}}});
        editor.drawTo({{x: {last[0]}, y: {last[1]}}});
        editor.end();""")


@pytest.mark.parametrize("value, taken", [(0, 64), (71, 64), (73, 80), (1279, 1280), (5000, 1280)])
def test_a_size_becomes_the_nearest_that_the_camera_takes(geometry, value, taken) -> None:
    assert geometry(f"snap({value}, {{minimum: 64, step: 16}}, 1280)") == taken


def test_a_largest_value_between_two_steps_is_not_taken(geometry) -> None:
    assert geometry("snap(100, {minimum: 0, step: 16}, 90)") == 80


@pytest.mark.parametrize("first, last, region", [
    ((100, 50), (420, 251), [96, 50, 320, 202]),
    ((420, 251), (100, 50), [96, 50, 320, 202]),  # drawn to the left and up
    ((1270, 1020), (1275, 1021), [1216, 1020, 64, 2]),  # at the edge, as small as can be
    ((-50, -50), (2000, 2000), [0, 0, 1280, 1024]),
])
def test_a_drawn_region_is_in_the_cameras_steps_and_on_the_sensor(geometry, first, last, region):
    assert geometry(drawn(first, last)) == region


def test_keys_move_and_resize_by_steps_and_stop_at_the_edge(geometry) -> None:
    assert geometry(edited("editor.grow(-2, -3); editor.move(1, 2);")) == [16, 4, 1248, 1018]
    assert geometry(edited("editor.grow(-1, 0); editor.move(9, 9);")) == [16, 0, 1264, 1024]


def view(steps: str, result: str) -> str:
    return f"""(() => {{
        const view = new Viewport();
        view.resize(640, 640);
        view.setPicture(1280, 1024);
        {steps}
        return {result};
    }})()"""


def test_a_fitted_picture_is_asked_for_whole_at_the_screens_size(geometry) -> None:
    assert geometry(view("", "view.wanted()")) == {"width": 640, "raw": False}


def test_one_to_one_only_what_is_seen_is_asked_for(geometry) -> None:
    assert geometry(view("view.setScale(1);", "view.wanted()")) == {
        "width": 640, "raw": False, "region": {"x": 320, "y": 192, "width": 640, "height": 640}}


def test_pixels_large_enough_for_their_values_are_asked_for_as_they_are(geometry) -> None:
    wanted = geometry(view("view.setScale(32);", "view.wanted()"))
    assert wanted == {"width": 20, "raw": True,
                      "region": {"x": 630, "y": 502, "width": 20, "height": 20}}


def test_zooming_keeps_the_pixel_under_the_pointer(geometry) -> None:
    before, after = geometry(view("""
        view.setScale(2);
        const before = view.toPicture(100, 200);
        view.setScale(4, 100, 200);""", "[before, view.toPicture(100, 200)]"))
    assert after == pytest.approx(before)


def test_panning_stops_at_the_pictures_edge(geometry) -> None:
    assert geometry(view("view.setScale(1); view.pan(5000, 5000);", "view.visible()")) == {
        "x": 0, "y": 0, "width": 640, "height": 640}
