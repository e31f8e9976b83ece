#!/bin/sh
# Succeeds if no program ($2 ...) names the folder that it was built in ($1): else its bytes depend on
# where it was built.
set -eu

folder=$1
shift
for program; do
    test -s "$program"
    if grep --text --fixed-strings --only-matching "$folder" "$program" | head -n 1 | grep .; then
        echo "in $program"
        exit 1
    fi
done
