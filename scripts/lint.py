#!/usr/bin/python3
"""Checks every C and C++ source of the project: its format, and with clang-tidy as it is compiled,
which is as the release build does, or the Windows build where that alone compiles it. Sources are
read as joined as they are built: most of the time goes into headers that neighbours share. Any
finding, and a source that no build compiles, is a failure.

usage: lint.py [FILE...]     without files: all of them; a source is checked with those it is joined to
"""
import concurrent.futures
import json
import os
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
WORK = ROOT / "build/lint"
CROSS = "x86_64-w64-mingw32"
FOLDERS = "src|gige|camera|platform|tools|tests|bench|include|examples"
# What joined sources add: includes of sources, and names of the neighbours'.
JOINED = f"""\
InheritParentConfig: true
Checks: -bugprone-suspicious-include
HeaderFilterRegex: '{ROOT}/({FOLDERS})/.*\\.(h|c|cpp)$'
ExtraArgs: [-Wno-unknown-warning-option, -Wno-shadow]
"""
# What scripts compile when they need it, and a benchmark in Python.
COMPILED_LATER = re.compile(r"scripts/|bench/python_")


def output(*command: str) -> str:
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def cross_headers() -> list[str]:
    """The cross-compiler's own C++ headers, as options for clang."""
    told = subprocess.run([f"{CROSS}-g++-posix", "-E", "-x", "c++", "-v", "-"], check=True,
                          capture_output=True, text=True, stdin=subprocess.DEVNULL).stderr
    return [word for line in told.splitlines() if re.match(r" .*/c\+\+", line)
            for word in ("-isystem", line.strip())]


def as_clang(command: str, headers: str) -> str:
    """A command as clang understands it: without GCC's precompiled headers and what GCC alone knows."""
    command = re.sub(r" -Winvalid-pch -include \S*/cmake_pch\.hxx", "", command)
    command = re.sub(r" -fno-keep-inline-dllexport| -fpch-preprocess", "", command)
    command = re.sub(rf"\S*{CROSS}-g\+\+-posix",
                     f"clang++ --target={CROSS} -nostdinc++ {headers}", command)
    return re.sub(rf"\S*{CROSS}-gcc-posix", f"clang --target={CROSS}", command)


class Build:
    """What a preset compiles: units, each of one source or of several that are joined."""

    def __init__(self, preset: str):
        self.folder = ROOT / "build" / preset
        print(f"configuring {preset}", flush=True)
        output("cmake", "--preset", preset)
        headers = " ".join(cross_headers())
        commands = [entry | {"command": as_clang(entry["command"], headers)}
                    for entry in json.loads((self.folder / "compile_commands.json").read_text())]
        self.commands = WORK / f"{preset}.commands"
        self.commands.mkdir(parents=True, exist_ok=True)
        (self.commands / "compile_commands.json").write_text(json.dumps(commands))
        self.units = {entry["file"]: sources_of(entry["file"]) for entry in commands}
        self.configure_joined()

    def configure_joined(self) -> None:
        """The units of joined sources lie in the build's folder; those of tests are tests there, too."""
        (self.folder / ".clang-tidy").write_text(JOINED)
        tests = self.folder / "tests"
        tests.mkdir(exist_ok=True)
        (tests / ".clang-tidy").write_text((ROOT / "tests/.clang-tidy").read_text())

    def units_with(self, wanted: set[str]) -> list[tuple[pathlib.Path, str]]:
        return [(self.commands, unit) for unit, sources in self.units.items() if wanted & sources]

    def sources(self) -> set[str]:
        return set().union(*self.units.values())


def sources_of(unit: str) -> set[str]:
    """The project's sources in a unit; none in one of others' sources."""
    files = [unit]
    if "/Unity/" in unit:
        files = re.findall(r'^#include "(.*)"$', pathlib.Path(unit).read_text(), re.MULTILINE)
    return {os.path.relpath(file, ROOT) for file in files}


def tidy(unit: tuple[pathlib.Path, str]) -> bool:
    commands, file = unit
    done = subprocess.run(["clang-tidy", "-quiet", "-p", commands, file], capture_output=True,
                          text=True, check=False)
    print(f"{os.path.relpath(file, ROOT)}: {'clean' if done.returncode == 0 else 'FINDINGS'}")
    if done.returncode != 0:
        print(done.stdout, done.stderr, sep="\n")
    sys.stdout.flush()
    return done.returncode == 0


def main() -> int:
    os.chdir(ROOT)
    files = sys.argv[1:] or output("git", "ls-files", "*.c", "*.cpp", "*.h").split()
    failed = subprocess.run(["clang-format", "--dry-run", "--Werror", *files],
                            check=False).returncode != 0
    sources = {file for file in files if not file.endswith(".h")}
    linux, windows = Build("lint"), Build("windows")
    units = linux.units_with(sources) + windows.units_with(sources - linux.sources())
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as workers:
        failed |= not all(list(workers.map(tidy, units)))
    for source in sorted(sources - linux.sources() - windows.sources()):
        if COMPILED_LATER.match(source):
            failed |= subprocess.run(["clang-tidy", "-quiet", source, "--", "-Iinclude"],
                                     check=False).returncode != 0
        else:
            print(f"{source}: compiled by no build")
            failed = True
    return int(failed)


if __name__ == "__main__":
    sys.exit(main())
