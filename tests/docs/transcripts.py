#!/usr/bin/python3
"""Runs what the console blocks of Markdown pages show, and compares what comes out with what they show.

usage: transcripts.py [--update] PROGRAMS PAGE...

The blocks of a page are one session of a shell, in an empty folder, with PROGRAMS in the path; to be
run in a network of its own. A line "$ ..." is a command, the lines below it are what it prints, and a
line "…" stands for any that were left out. Beside blocks a page may have comments of these kinds:

    <!-- run: COMMAND -->      what the reader need not see, such as starting a camera
    <!-- varies: PATTERN -->   a regular expression for what is different in every run

With --update, blocks that show something else are written anew.
"""

from __future__ import annotations

import difflib
import os
import re
import subprocess
import sys
import tempfile
from collections.abc import Iterator
from dataclasses import dataclass
from pathlib import Path

STEP = re.compile(
    r"^<!-- run: (?P<hidden>.*?) -->$|^(?P<indent> *)```console\n(?P<block>.*?)^ *```$", re.S | re.M
)
VARIES = re.compile(r"<!-- varies: (.*?) -->")
END = "--end-of-output--"


class Shell:
    """A session in which one command runs after the other."""

    def __init__(self, folder: str, programs: str) -> None:
        path = f"{programs}:{os.environ['PATH']}"
        self._process = subprocess.Popen(
            ["bash", "--noprofile", "--norc"],
            cwd=folder,
            env={**os.environ, "PATH": path, "LC_ALL": "C.UTF-8", "TERM": "dumb", "HOME": folder},
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT,
            text=True,
            start_new_session=True,
        )

    def run(self, command: str, awaited: int = 0) -> list[str]:
        """The lines that it prints. awaited: so many of one that goes on in the background."""
        assert self._process.stdin is not None and self._process.stdout is not None
        self._process.stdin.write(f"{{ (exit $status); {command}\n}} </dev/null; status=$?\necho {END}\n")
        self._process.stdin.flush()
        lines = []
        ended = False
        for line in self._process.stdout:
            text, found, _ = line.rstrip("\n").partition(END)
            if text or not found:
                lines.append(text)
            ended = ended or bool(found)
            if ended and (not command.endswith("&") or len(lines) >= awaited):
                return lines
        raise EOFError(f"the shell ended at: {command}")

    def end(self) -> None:
        """With everything that it has started."""
        os.killpg(self._process.pid, 9)
        self._process.wait()


@dataclass
class Shown:
    command: str
    output: list[str]


def commands(block: str) -> list[Shown]:
    shown: list[Shown] = []
    for line in block.splitlines():
        if line.startswith("$ "):
            shown.append(Shown(line[2:], []))
        elif shown and not shown[-1].output and shown[-1].command.endswith("\\"):
            shown[-1].command += "\n" + line
        elif shown:
            shown[-1].output.append(line)
        else:
            raise ValueError(f"a console block begins with '$ ', not with: {line}")
    return shown


def blank(lines: list[str], varying: list[str]) -> list[str]:
    """Without what varies, and without the spaces that align it."""
    result = []
    for line in lines:
        for pattern in varying:
            line = re.sub(pattern, "#", line)
        result.append(re.sub(r"\s+", " ", line).strip())
    while result and not result[-1]:
        result.pop()
    return result


def matches(shown: list[str], printed: list[str]) -> bool:
    """Whether it is what was printed, but for what "…" stands for."""
    pattern = "".join("(?:.*\n)*" if line == "…" else re.escape(line) + "\n" for line in shown)
    return re.fullmatch(pattern, "".join(line + "\n" for line in printed)) is not None


class Page:
    def __init__(self, path: Path) -> None:
        self.path = path
        self.text = path.read_text(encoding="utf-8")
        self.varying = VARIES.findall(self.text)
        self.commands = 0

    def faults(self, shell: Shell) -> Iterator[str]:
        for step in STEP.finditer(self.text):
            if step["hidden"]:
                shell.run(step["hidden"])
                continue
            indent = step["indent"]
            block = re.sub(f"^{indent}", "", step["block"], flags=re.M)
            yield from self._block_faults(block, step["block"], indent, shell)

    def _block_faults(self, block: str, text: str, indent: str, shell: Shell) -> Iterator[str]:
        written = ""
        is_right = True
        for shown in commands(block):
            self.commands += 1
            printed = shell.run(shown.command, len(shown.output))
            expected = blank(shown.output, self.varying)
            actual = blank(printed, self.varying)
            fits = matches(expected, actual)
            written += "\n".join([f"$ {shown.command}", *(shown.output if fits else printed)]) + "\n"
            if not fits:
                is_right = False
                difference = difflib.unified_diff(expected, actual, "shown", "printed", lineterm="")
                yield f"{self.path}: $ {shown.command}\n" + "\n".join(difference)
        if not is_right:
            indented = "".join(indent + line + "\n" for line in written.splitlines())
            self.text = self.text.replace(text, indented)


def check(path: Path, programs: str, *, update: bool) -> bool:
    page = Page(path)
    with tempfile.TemporaryDirectory() as folder:
        shell = Shell(folder, programs)
        try:
            faults = list(page.faults(shell))
        finally:
            shell.end()
    print("\n".join([*faults, f"{path}: {page.commands} commands, {len(faults)} differ"]))
    if update and faults:
        path.write_text(page.text, encoding="utf-8")
    return not faults and page.commands > 0


def main() -> int:
    arguments = [argument for argument in sys.argv[1:] if argument != "--update"]
    update = len(arguments) < len(sys.argv) - 1
    programs, *pages = arguments
    programs = str(Path(programs).resolve())
    return 0 if all([check(Path(page), programs, update=update) for page in pages]) else 1


if __name__ == "__main__":
    sys.exit(main())
