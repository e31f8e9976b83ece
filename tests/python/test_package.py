"""The wheels and the sources, as they are installed.

The interpreter that runs these tests has the wheel for every system; TELVO_CARRYING_PYTHON has the
one that carries the library.
"""

from __future__ import annotations

import os
import re
import subprocess
import sys
import tarfile
import zipfile
from pathlib import Path

import telvo
from conftest import CameraProcess
from telvo._library import INTERFACE

SESSION = """
import sys, telvo
from telvo._library import library
with telvo.Camera(sys.argv[1]) as camera:
    frame = camera.snapshot()
    print(frame.array.shape, len(camera.record(20)) >= 20)
print(library()._name)
"""


def run_session(python: str, address: str, **environment: str) -> list[str]:
    inherited = {name: value for name, value in os.environ.items() if name != "TELVO_LIBRARY"}
    result = subprocess.run(
        [python, "-c", SESSION, address],
        env={**inherited, **environment},
        capture_output=True,
        text=True,
    )
    assert result.returncode == 0, result.stderr
    return result.stdout.splitlines()


def packages() -> Path:
    return Path(os.environ["TELVO_PYTHON_PACKAGES"])


def test_the_package_under_test_is_the_installed_one() -> None:
    assert Path(telvo.__file__).is_relative_to(sys.prefix)


def test_there_is_a_wheel_for_every_system_one_for_this_and_the_sources() -> None:
    names = sorted(path.name for path in packages().iterdir() if path.is_file())
    version = telvo.__version__
    assert names[0] == f"telvo-{version}-py3-none-any.whl"
    assert names[1].startswith(f"telvo-{version}-py3-none-linux_")
    assert names[2:] == [f"telvo-{version}.tar.gz"]


def test_sources_and_wheel_have_the_whole_package(project: Path) -> None:
    files = {path.name for path in (project / "python/src/telvo").iterdir() if path.is_file()}
    with zipfile.ZipFile(next(packages().glob("*-any.whl"))) as wheel:
        names = wheel.namelist()
    assert {Path(name).name for name in names if name.startswith("telvo/")} == files
    assert any(name.endswith("/LICENSE") for name in names)
    with tarfile.open(next(packages().glob("*.tar.gz"))) as sources:
        names = sources.getnames()
    assert {Path(name).name for name in names if "/src/telvo/" in name} == files


def test_there_is_one_version(project: Path) -> None:
    text = (project / "CMakeLists.txt").read_text()
    version = re.search(r"project\(Telvo VERSION (\S+)", text)
    assert version is not None
    assert version[1] == telvo.__version__
    assert f'version = "{version[1]}"' in (project / "python/pyproject.toml").read_text()
    assert version[1].startswith(INTERFACE + ".")


def test_the_library_in_the_wheel_is_used(device: CameraProcess) -> None:
    shape, name = run_session(os.environ["TELVO_CARRYING_PYTHON"], device.address)
    assert shape == "(240, 320) True"
    assert name.endswith("/telvo/library/libTelvoDll.so")


def test_the_installed_library_is_found_by_its_name(device: CameraProcess) -> None:
    folder = str(Path(os.environ["TELVO_LIBRARY"]).parent)
    shape, name = run_session(sys.executable, device.address, LD_LIBRARY_PATH=folder)
    assert shape == "(240, 320) True"
    assert "/" not in name and name.startswith("libTelvoDll.so")
