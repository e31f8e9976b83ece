#!/bin/sh
# A host that disconnects its live camera in an exit handler ends well, and the camera is free:
# exit-host.sh NATIVE-CAMERA exit_host.exe HANDLER
set -eu

if [ "$1" != --inside ]; then
    exec "$(dirname "$0")/with-camera.sh" "$1" "$0" --inside "$2" "$3"
fi
output=$(wine "$2" "$3" TelvoDll.dll 02:54:45:00:00:0b 127.0.0.11) || {
    echo "the host ended with status $?: $output"
    exit 1
}
[ "$(printf '%s' "$output" | tr -d '\r')" = "disconnected: 0" ] || {
    echo "the host said: $output"
    exit 1
}
