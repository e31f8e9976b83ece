#!/usr/bin/python3
"""Checks the Markdown pages of a source folder: that each link leads to a file or to a heading, and
that each C and C++ snippet compiles.

usage: check.py SOURCE
"""
import pathlib
import re
import subprocess
import sys

COMPILERS = {
    "c": ["cc", "-std=c11", "-x", "c"],
    "cpp": ["c++", "-std=c++20", "-x", "c++"],
}
WARNINGS = ["-Wall", "-Wextra", "-Werror", "-fsyntax-only", "-"]


def anchor(heading):
    text = re.sub(r"[^\w\- ]", "", heading.strip().lower())
    return text.replace(" ", "-")


def anchors(page):
    return {anchor(line.lstrip("#")) for line in page.read_text(encoding="utf-8").splitlines()
            if line.startswith("#")}


def broken_links(page):
    text = re.sub(r"```.*?```", "", page.read_text(encoding="utf-8"), flags=re.S)
    for target in re.findall(r"\]\(([^)\s]+)\)", text):
        if "://" in target:
            continue
        path, _, fragment = target.partition("#")
        file = (page.parent / path).resolve() if path else page
        if not file.exists():
            yield f"{page}: there is no {target}"
        elif fragment and file.suffix == ".md" and fragment not in anchors(file):
            yield f"{page}: there is no heading {target}"


def broken_snippets(page, source):
    includes = [f"-I{source / folder}" for folder in ("include", "platform/ebus")]
    for language, code in re.findall(r"```(c|cpp)\n(.*?)```",
                                     page.read_text(encoding="utf-8"), re.S):
        result = subprocess.run(COMPILERS[language] + includes + WARNINGS, input=code, text=True,
                                capture_output=True, check=False)
        if result.returncode != 0:
            yield f"{page}: {result.stderr}"


def main():
    source = pathlib.Path(sys.argv[1]).resolve()
    pages = sorted([*source.glob("*.md"), *source.glob("docs/**/*.md")])
    faults = [fault for page in pages
              for fault in (*broken_links(page), *broken_snippets(page, source))]
    print("\n".join(faults))
    print(f"{len(pages)} pages, {len(faults)} faults")
    sys.exit(1 if faults or not pages else 0)


if __name__ == "__main__":
    main()
