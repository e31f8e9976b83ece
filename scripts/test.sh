#!/bin/sh
# Builds everything and runs every suite: under the address and undefined-behaviour sanitizers, as
# released, and the Windows build under Wine; those with threads also under the thread sanitizer.
# Stops at the first failure.
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
    # A test that fails is tried once more, and both tries are told: where a machine stalls for
    # seconds, a camera is rightly taken for lost.
    ctest --preset "$1" --parallel "$2" --repeat until-pass:2
}

for preset in asan tsan release windows; do
    build "$preset"
done
run_tests windows "$(nproc)"
# More at once than there are cores: many of them wait for a camera most of their time.
for preset in asan tsan release; do
    run_tests "$preset" "$((2 * $(nproc)))"
done
