#!/bin/sh
# Runs every fuzz target with clang's libFuzzer for so many minutes, all side by side, and prints
# what each has covered. An input that breaks something becomes a seed, which the fuzz tests run
# from then on; then the status is 1. What covers something new is kept in build/fuzz/found, where
# the next run goes on from.
#   usage: scripts/fuzz.sh MINUTES
set -eu

seconds=$(($1 * 60))
cd "$(dirname "$0")/.."
mkdir -p build
cmake --preset fuzz >build/configure-fuzz.log || {
    cat build/configure-fuzz.log
    exit 1
}
cmake --build --preset fuzz --target fuzz_targets

names=$(cd tests/fuzz/corpus && ls)
rm -rf build/fuzz/broken
for name in $names; do
    mkdir -p "build/fuzz/found/$name" "build/fuzz/broken/$name"
    "build/fuzz/bin/fuzz_$name" -max_total_time="$seconds" -timeout=10 -report_slow_units=10 \
        -artifact_prefix="build/fuzz/broken/$name/" \
        "build/fuzz/found/$name" "tests/fuzz/corpus/$name" >"build/fuzz/$name.log" 2>&1 &
    running="${running:-} $name:$!"
done

failed=0
printf '\n%-12s %8s %10s %8s\n' TARGET COVERED FEATURES RUNS/S
for one in $running; do
    name=${one%:*}
    wait "${one#*:}" && found= || found=" FAILED, see build/fuzz/$name.log"
    # The last line with figures: ... cov: 123 ft: 456 corp: ... exec/s: 789 ...
    figures=$(sed -n 's/.* cov: \([0-9]*\) ft: \([0-9]*\) .* exec\/s: \([0-9]*\) .*/\1 \2 \3/p' \
        "build/fuzz/$name.log" | tail -n 1)
    # shellcheck disable=SC2086 # three words
    printf '%-12s %8s %10s %8s%s\n' "$name" ${figures:-- - -} "$found"
    [ -z "$found" ] || failed=1
done

for input in build/fuzz/broken/*/*; do
    [ -f "$input" ] || continue
    folder=tests/fuzz/corpus/$(basename "$(dirname "$input")")
    mv "$input" "$folder/"
    echo "FOUND: $folder/$(basename "$input")"
done
exit $failed
