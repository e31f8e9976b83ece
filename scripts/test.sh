#!/bin/sh
# Builds the presets given and runs every suite of each once. Stops at the first failure.
#   usage: scripts/test.sh PRESET...
set -eu

cd "$(dirname "$0")/.."

heading()
{
    printf '\n=== %s ===\n' "$1"
}

build()
{
    heading "Build: $1"
    mkdir -p build
    cmake --preset "$1" >"build/configure-$1.log" || {
        cat "build/configure-$1.log"
        return 1
    }
    cmake --build --preset "$1"
}

run_tests()
{
    heading "Tests: $1"
    case $1 in
    windows) at_once=$(nproc) ;;
    # More at once than there are cores: many of them wait for a camera most of their time.
    *) at_once=$((3 * $(nproc))) ;;
    esac
    ctest --preset "$1" --parallel "$at_once"
}

for preset in "$@"; do
    build "$preset"
done
for preset in "$@"; do
    run_tests "$preset"
done
