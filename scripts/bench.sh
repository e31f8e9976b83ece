#!/bin/sh
# Runs every benchmark of the build directory given.
set -eu

for benchmark in "$1"/bin/bench_*; do
    printf '\n=== %s ===\n' "$(basename "$benchmark")"
    "$benchmark"
done
