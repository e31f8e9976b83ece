#!/bin/sh
# Checks every C and C++ source of the project: its format, and with clang-tidy under the commands that
# compile it, which are the release build's, or the Windows build's for what is compiled there alone.
# Any finding, and a source that no build compiles, is a failure.
#   usage: scripts/lint.sh [FILE...]     without files: all of them
set -eu

cd "$(dirname "$0")/.."
root=$PWD
work=build/lint/work
mkdir -p "$work"

configure()
{
    cmake --preset "$1" >"build/configure-$1.log" || {
        cat "build/configure-$1.log"
        return 1
    }
}

# The project's sources that a preset compiles.
compiled_by()
{
    sed -n "s|^ *\"file\": \"$root/\\(.*\\)\",*\$|\\1|p" "build/$1/compile_commands.json" | sort -u
}

# A preset's commands as clang understands them: without GCC's precompiled headers, and with the
# cross-compiler's C++ headers where that compiles.
translate_commands()
{
    cross=x86_64-w64-mingw32
    headers=$($cross-g++-posix -E -x c++ -v - </dev/null 2>&1 |
        sed -n '/^#include </,/^End/s|^ \(.*/c++.*\)|-isystem \1|p' | tr '\n' ' ')
    mkdir -p "$work/$1.commands"
    sed -e 's| -Winvalid-pch -include [^ ]*/cmake_pch.hxx||' -e 's| -fno-keep-inline-dllexport||' \
        -e "s|[^ \"]*$cross-g++-posix|clang++ --target=$cross -nostdinc++ $headers|" \
        -e "s|[^ \"]*$cross-gcc-posix|clang --target=$cross|" \
        "build/$1/compile_commands.json" >"$work/$1.commands/compile_commands.json"
}

# What clang-tidy says besides findings is how many warnings of others' headers it left out.
tidy()
{
    xargs -r -n 1 -P "$(nproc)" clang-tidy -quiet -p "$work/$1.commands" \
        <"$work/$1" 2>"$work/$1.notes" || {
        grep -v 'warnings\{0,1\} generated\.$' "$work/$1.notes" || true
        return 1
    }
}

if [ $# -gt 0 ]; then
    printf '%s\n' "$@"
else
    git ls-files '*.c' '*.cpp' '*.h'
fi | sort -u >"$work/all"

for preset in lint windows; do
    configure "$preset"
    compiled_by "$preset" >"$work/$preset.compiled"
    translate_commands "$preset"
done
grep -v '\.h$' "$work/all" >"$work/sources" || true
comm -12 "$work/sources" "$work/lint.compiled" >"$work/lint"
comm -23 "$work/sources" "$work/lint.compiled" >"$work/left"
comm -12 "$work/left" "$work/windows.compiled" >"$work/windows"
comm -23 "$work/left" "$work/windows.compiled" >"$work/left-again"
# What scripts compile when they need it, and a benchmark in Python.
grep -E '^scripts/|^bench/python_' "$work/left-again" >"$work/scripts" || true
grep -v -E '^scripts/|^bench/python_' "$work/left-again" >"$work/uncompiled" || true

failed=0
xargs -r clang-format --dry-run --Werror <"$work/all" || failed=1
tidy lint || failed=1
tidy windows || failed=1
xargs -r -I FILE clang-tidy -quiet FILE -- -Iinclude <"$work/scripts" || failed=1
if [ -s "$work/uncompiled" ]; then
    sed 's/$/: compiled by no build/' "$work/uncompiled"
    failed=1
fi
exit $failed
