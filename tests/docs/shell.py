#!/usr/bin/python3
"""Runs the shell and CMake snippets of Markdown pages, each page in a folder that looks like a checkout with
an installed library beside it, in reach of a camera with a recording that a trigger ended.

usage: shell.py SOURCE BUILD PAGE...

To be run in a network of its own, as root there. What would build, measure or change the machine is
only asked whether it could: make has the target, the system has the setting, the benchmark exists. A
virtual camera that a page starts has a network of its own, and is ended once it listens. The tool does not
wait for further cameras.
"""

from __future__ import annotations

import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

SNIPPET = re.compile(r"^```(sh|cmake|c)\n(.*?)^```$", re.S | re.M)

STAND_INS = {
    "make": 'exec /usr/bin/make --dry-run -C "$SOURCE" "$@" >/dev/null',
    "pip": 'shift; exec /usr/bin/python3 -m pip -q install --target site --no-index --no-deps "$@"',
    "telvo": 'command=$1; shift; exec "$BUILD/bin/telvo" "$command" --timeout 200 "$@"',
    "sysctl": 'name=${2%%=*}; test "$1" = -w && exec /usr/sbin/sysctl -n "$name" >/dev/null',
}
CAMERA = 'echo quit | "$SOURCE/scripts/in-own-network.sh" "$BUILD/bin/telvo-camera" --commands "$@"'
RECORDING = [
    "--address=127.0.0.11",
    "--user-sets-prepared",
    "--memory=4MB",
    "--record-at-power-on",
    "--trigger-every=200",
    *(
        f"--set={name}={value}"
        for name, value in {
            "Width": 128,
            "Height": 96,
            "AcquisitionFrameRateRaw": 2000,
            "RecordMode": 1,  # a ring
            "RecordTrailer": 120,
            "ExtTriggerEnable": 1,
        }.items()
    ),
]
HOST = """cmake_minimum_required(VERSION 3.16)
project(Host LANGUAGES C)
add_executable(host host.c)
"""


class Checkout:
    """A folder to run the snippets of a page in."""

    def __init__(self, folder: Path, source: Path, build: Path) -> None:
        self.folder = folder
        self.environment = {
            **os.environ,
            "SOURCE": str(source),
            "BUILD": str(build),
            "PATH": f"{folder}/stand-ins:{build}/bin:{os.environ['PATH']}:/usr/sbin:/sbin",
            "PKG_CONFIG_PATH": str(folder / "prefix/lib/pkgconfig"),
        }
        for part in ("scripts", "python", "include"):
            shutil.copytree(source / part, folder / part)
        shutil.copy(source / "LICENSE", folder)
        shutil.copy("/bin/true", folder / "HOST-PROGRAM")
        self._link_programs(source, build)
        for name, text in STAND_INS.items():
            self._write_program(folder / "stand-ins" / name, text)
        self.run(f"cmake --install '{build}' --prefix prefix >install.log")
        self.run("ip link add eth1 type veth peer name other; ip link set other up")
        self.run("nft add table inet filter; nft add chain inet filter input")

    def _link_programs(self, source: Path, build: Path) -> None:
        programs = self.folder / "build/release/bin"
        programs.mkdir(parents=True)
        (self.folder / "build/release/lib").symlink_to(build / "lib")
        text = (source / "bench/CMakeLists.txt").read_text(encoding="utf-8")
        for benchmark in re.findall(r"add_executable\((\w+)", text):
            self._write_program(programs / benchmark, "exit 0")
        self._write_program(programs / "telvo-camera", CAMERA)

    def _write_program(self, path: Path, text: str) -> None:
        path.parent.mkdir(exist_ok=True)
        path.write_text(f"#!/bin/sh\n{text}\n", encoding="utf-8")
        path.chmod(0o755)

    def run(self, command: str) -> None:
        """Raises CalledProcessError where one step of it fails."""
        subprocess.run(
            ["sh", "-eu", "-c", command],
            cwd=self.folder,
            env=self.environment,
            check=True,
            stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT,
            text=True,
        )

    def use(self, language: str, code: str) -> None:
        if language == "c":  # the host that the snippets below it build
            (self.folder / "host.c").write_text(code + "int main(void) { return 0; }\n")
        elif language == "cmake":
            (self.folder / "CMakeLists.txt").write_text(HOST + code)
            self.run("cmake -S . -B host-build -DCMAKE_PREFIX_PATH=$PWD/prefix")
            self.run("cmake --build host-build")
        else:
            self.run(code)


def check(page: Path, source: Path, build: Path) -> int:
    """How many snippets fail."""
    snippets = SNIPPET.findall(page.read_text(encoding="utf-8"))
    failures = 0
    if not any(language in ("sh", "cmake") for language, _ in snippets):
        return 0
    with tempfile.TemporaryDirectory() as folder:
        checkout = Checkout(Path(folder), source, build)
        for language, code in sorted(snippets, key=lambda snippet: snippet[0] != "c"):
            try:
                checkout.use(language, code)
            except subprocess.CalledProcessError as error:
                failures += 1
                print(f"{page}:\n{code}{error.output}")
    subprocess.run(["ip", "link", "delete", "eth1"], check=False)
    subprocess.run(["nft", "delete", "table", "inet", "filter"], check=False)
    print(f"{page}: {len(snippets)} snippets, {failures} fail")
    return failures


def await_recording(build: Path) -> None:
    command = [build / "bin/telvo", "state", "--camera", "127.0.0.11", "--timeout", "200", "--json"]
    for _ in range(50):
        state = subprocess.run(command, capture_output=True, check=False)
        if state.returncode == 0 and json.loads(state.stdout)[0]["state"] == "idle":
            return
    raise TimeoutError("the camera does not end its recording")


def main() -> int:
    source, build, *pages = (Path(argument).resolve() for argument in sys.argv[1:])
    camera = subprocess.Popen([build / "bin/telvo-camera", *RECORDING])
    try:
        await_recording(build)
        return 1 if sum(check(page, source, build) for page in pages) else 0
    finally:
        camera.terminate()


if __name__ == "__main__":
    sys.exit(main())
