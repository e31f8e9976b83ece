#!/usr/bin/python3
"""Writes the ctypes declarations of the library's functions from its C header.

usage: generate_functions.py HEADER [--check FILE]

Prints the module; with --check compares it with FILE and fails where they differ.
"""

from __future__ import annotations

import re
import sys
from pathlib import Path

# A pointer that comes back is an address, which ctypes gives as a number. A pointer to one value or
# to bytes takes byref() or an array.
CTYPES = {
    "void*": "c_void_p",
    "const void*": "c_void_p",
    "char*": "c_char_p",
    "const char*": "c_char_p",
    "const TelvoConnectionSettings*": "POINTER(ConnectionSettings)",
    "TelvoChangedCallback": "Callback",
    "TelvoDataAvailableCallback": "Callback",
}
WIDTH = 100  # of a line of the module
NUMBERS = {"uint8_t", "int32_t", "uint32_t", "int64_t", "uint64_t", "double"}

MODULE = '''\
"""The library's functions, made from its C header by generate_functions.py; not to be edited."""

from __future__ import annotations

from ctypes import (
    CFUNCTYPE,
    POINTER,
    Structure,
    c_char_p,
    c_double,
    c_int32,
    c_int64,
    c_uint8,
    c_uint32,
    c_uint64,
    c_void_p,
)
from typing import Any

Callback = CFUNCTYPE(None, c_int32)


class ConnectionSettings(Structure):
    """Link settings as the C functions take them."""

    _fields_ = [
{fields}
    ]


# By name: what comes back, and the parameters' names and types.
FUNCTIONS: dict[str, tuple[Any, dict[str, Any]]] = {{
{functions}
}}
'''


def number_type(name: str) -> str:
    if name not in NUMBERS:
        raise SystemExit(f"no ctypes type for '{name}'")
    return "c_" + name.removesuffix("_t")


def parameter_type(name: str) -> str:
    if name in CTYPES:
        return CTYPES[name]
    if name.endswith("*"):
        return f"POINTER({number_type(name.removeprefix('const ').removesuffix('*'))})"
    return number_type(name)


def result_type(name: str) -> str:
    return "c_void_p" if name.endswith("*") else number_type(name)


def fields(header: str) -> list[tuple[str, str]]:
    """Names and ctypes types of the settings' fields."""
    body = re.search(r"typedef struct TelvoConnectionSettings \{(.*?)\}", header, re.S)
    if body is None:
        raise SystemExit("the header has no TelvoConnectionSettings")
    found = re.findall(r"(\w+)\s+(\w+)(?:\[(\d+)\])?;", body[1])
    return [
        (name, number_type(kind) + (f" * {count}" if count else ""))
        for kind, name, count in found
    ]


def functions(header: str) -> list[tuple[str, str, dict[str, str]]]:
    """Names, result types and parameters of the functions, in the header's order."""
    found = re.findall(r"TELVO_API ([\w ]+?\*?)\s*(exp\w+)\((.*?)\) TELVO_NOEXCEPT;", header, re.S)
    return [
        (name, result_type(result), dict(parameter(text) for text in parameters.split(",")))
        for result, name, parameters in found
    ]


def parameter(text: str) -> tuple[str, str]:
    kind, _, name = text.strip().rpartition(" ")
    return name, parameter_type(kind.strip())


def function_entry(name: str, result: str, parameters: dict[str, str]) -> str:
    pairs = [f'"{key}": {kind}' for key, kind in parameters.items()]
    line = f'    "{name}": ({result}, {{{", ".join(pairs)}}}),'
    if len(line) <= WIDTH:
        return line
    lines = "".join(f"            {pair},\n" for pair in pairs)
    return f'    "{name}": (\n        {result},\n        {{\n{lines}        }},\n    ),'


def module(header: str) -> str:
    code = re.sub(r"/\*.*?\*/|//[^\n]*", "", header, flags=re.S)
    return MODULE.format(
        fields="\n".join(f'        ("{name}", {kind}),' for name, kind in fields(code)),
        functions="\n".join(function_entry(*each) for each in functions(code)),
    )


def main(arguments: list[str]) -> int:
    text = module(Path(arguments[0]).read_text(encoding="utf-8"))
    if arguments[1:2] != ["--check"]:
        sys.stdout.write(text)
        return 0
    if Path(arguments[2]).read_text(encoding="utf-8") == text:
        return 0
    print(f"{arguments[2]} does not match {arguments[0]}", file=sys.stderr)
    return 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
