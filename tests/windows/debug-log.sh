#!/bin/sh
# `telvo log --raw` in one process receives what the library says in another, byte for byte: a camera
# that miscounts a recorded frame makes it write a line with a letter beyond ASCII.
# debug-log.sh NATIVE-CAMERA telvo.exe
set -eu

if [ "$1" != --inside ]; then
    exec "$(dirname "$0")/with-camera.sh" "$1 --fault-frame jump:2:5:0:1000" "$0" --inside "$2"
fi
telvo=$2
cd "$WINEPREFIX"

wine "$telvo" log --raw >log &
tries=20
until [ -s log ]; do # the viewer is there
    tries=$((tries - 1))
    [ $tries != 0 ] || exit 1
    wine "$telvo" set --camera 127.0.0.11 custom-data=0 >set
done

wine "$telvo" record --camera 127.0.0.11 --frames 10
if wine "$telvo" download --camera 127.0.0.11 --count 5 --out frames; then
    echo "the miscounted frame went unnoticed"
    exit 1
fi
line=$(printf 'getRecordedFrameBlockResult: Sequenzfehler, Vorg\344nger frame = 1, Nachfolger frame = 7, )\r')
LC_ALL=C grep --text --fixed-strings "$line" log
