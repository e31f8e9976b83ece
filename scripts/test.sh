#!/bin/sh
# Builds everything and runs every suite: under the address and undefined-behaviour sanitizers,
# under the thread sanitizer, and as released; the Windows build is built. Stops at the first
# failure.
set -eu

cd "$(dirname "$0")/.."

heading()
{
    printf '\n=== %s ===\n' "$1"
}

build()
{
    heading "Build: $1"
    cmake --preset "$1" >"build/configure-$1.log" || {
        cat "build/configure-$1.log"
        return 1
    }
    cmake --build --preset "$1"
}

run_tests()
{
    heading "Tests: $1"
    # More at once than there are cores: many of them wait for a camera most of their time.
    ctest --preset "$1" --parallel "$((2 * $(nproc)))"
}

for preset in asan tsan release; do
    build "$preset"
done
build windows
for preset in asan tsan release; do
    run_tests "$preset"
done
