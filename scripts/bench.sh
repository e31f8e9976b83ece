#!/bin/sh
# Runs every benchmark of the build directory given, in a network of its own.
set -eu

for benchmark in "$1"/bin/bench_*; do
    printf '\n=== %s ===\n' "$(basename "$benchmark")"
    "$(dirname "$0")/in-own-network.sh" "$benchmark"
done

printf '\n=== python_readout ===\n'
"$(dirname "$0")/in-own-network.sh" /usr/bin/python3 "$(dirname "$0")/../bench/python_readout.py" "$1"
