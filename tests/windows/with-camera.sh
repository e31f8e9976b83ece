#!/bin/sh
# Runs a command against a virtual camera on 127.0.0.11, in a Wine prefix and a network of their own:
# with-camera.sh CAMERA-COMMAND COMMAND [ARGUMENT...]
set -eu

if [ "$1" != --inside ]; then
    exec "$(dirname "$0")/../../scripts/in-wine.sh" "$0" --inside "$@"
fi
camera=$2
shift 2

# shellcheck disable=SC2086 # a command with its arguments
$camera --address 127.0.0.11 --user-sets-prepared --set AcquisitionFrameRateRaw=200 \
    --memory 64MB >"$WINEPREFIX/camera.log" 2>&1 &
running=$!
trap 'kill $running 2>/dev/null || true' EXIT
tries=100
until grep -q 'listens on' "$WINEPREFIX/camera.log"; do
    tries=$((tries - 1))
    if [ $tries = 0 ]; then
        cat "$WINEPREFIX/camera.log"
        exit 1
    fi
    sleep 0.1
done
"$@"
