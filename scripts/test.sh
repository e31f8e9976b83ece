#!/bin/sh
# Builds one preset or two and runs every suite of each once: the second one's beside those of the
# first, and shows them when they have ended. Stops at the first failure.
#   usage: scripts/test.sh PRESET [PRESET]
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

# Tests wait for a camera most of their time, so more of them run at once than there are cores.
run_tests()
{
    case $1 in
    windows) at_once=$(nproc) ;;
    *) at_once=$((5 * $(nproc))) ;;
    esac
    ctest --preset "$1" --parallel "$at_once"
}

for preset in "$@"; do
    build "$preset"
done

if [ $# -gt 1 ]; then
    run_tests "$2" >"build/test-$2.log" 2>&1 &
    beside=$!
    trap 'kill "$beside" 2>/dev/null || true' EXIT
fi
heading "Tests: $1"
run_tests "$1"
if [ $# -gt 1 ]; then
    heading "Tests: $2"
    result=0
    wait "$beside" || result=$?
    cat "build/test-$2.log"
    exit "$result"
fi
