#!/bin/sh
# Runs commands, separated by "--", against one virtual camera ($1) on 127.0.0.11; all have to succeed.
set -eu

camera=$1
shift
log=$(mktemp)
"$camera" --address 127.0.0.11 --memory 64MB --set AcquisitionFrameRateRaw=200 >"$log" 2>&1 &
running=$!
trap 'kill $running 2>/dev/null || true; rm -f "$log"' EXIT
tries=100
until grep -q 'listens on' "$log"; do
    tries=$((tries - 1))
    [ $tries -gt 0 ] || { cat "$log"; exit 1; }
    sleep 0.1
done

set -- "$@" --
command=
for word in "$@"; do
    if [ "$word" = -- ]; then
        echo "+$command"
        # shellcheck disable=SC2086 # a command with its arguments
        $command
        command=
    else
        command="$command $word"
    fi
done
