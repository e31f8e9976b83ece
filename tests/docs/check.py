#!/usr/bin/python3
"""Checks the Markdown pages of a source folder: that each link leads to a file or to a heading, that
each C, C++ and C# snippet compiles, that commands name what is there, and that no page of docs/ has a snippet
that nothing checks.

usage: check.py SOURCE
"""
import json
import pathlib
import re
import subprocess
import sys
import tempfile

COMPILERS = {
    "c": ["cc", "-std=c11", "-x", "c"],
    "cpp": ["c++", "-std=c++20", "-x", "c++"],
}
# What runs the others: transcripts.py, shell.py, and test_guide.py in tests/python. Text is no snippet;
# bat is for Windows' own programs.
CHECKED = {*COMPILERS, "csharp", "console", "sh", "cmake", "text", "bat"}
CHECKED_ON = {"python": ["python.md"]}
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


def compile_csharp(code, source):
    with tempfile.TemporaryDirectory() as folder:
        snippet = pathlib.Path(folder, "snippet.cs")
        snippet.write_text(code, encoding="utf-8")
        declarations = source / "examples/csharp/TelvoDll.cs"
        return subprocess.run(["mcs", "-warnaserror", "-target:library", f"-out:{folder}/snippet.dll",
                               declarations, snippet], text=True, capture_output=True, check=False)


def broken_csharp(page, source):
    for code in re.findall(r"```csharp\n(.*?)```", page.read_text(encoding="utf-8"), re.S):
        result = compile_csharp(code, source)
        if result.returncode != 0:
            yield f"{page}: {result.stdout}{result.stderr}"


def without_blocks(text):
    return re.sub(r"^ *```.*?^ *```$", "", text, flags=re.S | re.M)


def commands(page):
    """What the page shows for a shell, in blocks and within its text."""
    text = page.read_text(encoding="utf-8")
    blocks = re.findall(r"^```sh\n(.*?)^```$", text, re.S | re.M)
    return "\n".join([*blocks, *re.findall(r"`([^`\n]+)`", without_blocks(text))])


def programs(source):
    """Names that the build gives to what it makes."""
    text = "".join(path.read_text(encoding="utf-8")
                   for path in source.glob("*/**/CMakeLists.txt") if "build" not in path.parts)
    return {*re.findall(r"(?:add_executable|telvo_test)\(([\w-]+)", text),
            *(f"fuzz_{name}" for name in re.findall(r"telvo_fuzz\((\w+)", text))}


def missing_names(page, source):
    presets = json.loads((source / "CMakePresets.json").read_text(encoding="utf-8"))
    there = {
        r"^make ([a-z-]+)": re.findall(r"^([a-z-]+):", (source / "Makefile").read_text(), re.M),
        r"--preset (\w+)": [preset["name"] for preset in presets["configurePresets"]],
        r"\bbuild/\w+/bin/([\w-]+)(?!\.dll)\b": programs(source),
    }
    code = commands(page)
    for pattern, names in there.items():
        for name in set(re.findall(pattern, code, re.M)) - set(names):
            yield f"{page}: there is no {name}"
    for path in set(re.findall(r"(?<![\w./-])((?:bench|examples|include|python|scripts|tests)/[\w./-]*)", code)):
        if not (source / path).exists():
            yield f"{page}: there is no {path}"


def unchecked_snippets(page):
    text = page.read_text(encoding="utf-8")
    for language in re.findall(r"^ *```(\w*)\n.*?^ *```$", text, re.S | re.M):
        if language not in CHECKED and page.name not in CHECKED_ON.get(language, []):
            yield f"{page}: nothing checks a snippet in '{language}'"
    for code in re.findall(r"^\n {4}(?![ *-]).*", without_blocks(text), re.M):
        yield f"{page}: a snippet without a language: {code.strip()}"


def main():
    source = pathlib.Path(sys.argv[1]).resolve()
    pages = sorted([*source.glob("*.md"), *source.glob("docs/**/*.md")])
    faults = [fault for page in pages
              for fault in (*broken_links(page), *broken_snippets(page, source),
                            *broken_csharp(page, source), *missing_names(page, source))]
    faults += [fault for page in source.glob("docs/**/*.md") for fault in unchecked_snippets(page)]
    print("\n".join(faults))
    print(f"{len(pages)} pages, {len(faults)} faults")
    sys.exit(1 if faults or not pages else 0)


if __name__ == "__main__":
    main()
