#!/usr/bin/env bash
# Shows the tool at work: starts a virtual camera on a loopback address, finds it, asks what it is,
# takes live pictures, records into the camera's memory, reads the recording back and compares it
# with what the camera recorded. Leaves the pictures in build/demo and nothing running.
set -euo pipefail

cd "$(dirname "$0")/.."
programs=${1:?usage: scripts/demo.sh BUILD_FOLDER}/bin
results=build/demo

camera=  # process id
command= # process id of the demo's present step

fail()
{
    printf 'demo: %s\n' "$1" >&2
    exit 1
}

clean_up()
{
    trap - EXIT INT TERM
    # The command first: it still talks to the camera.
    for process in $command $camera; do
        kill "$process" 2>/dev/null || true
        wait "$process" 2>/dev/null || true
    done
}
trap clean_up EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

# Ten seconds for the camera's line that it listens.
camera_is_ready()
{
    for _ in {1..100}; do
        grep -q ' listens on ' "$results/camera.log" && return 0
        kill -0 "$camera" 2>/dev/null || return 1
        sleep 0.1
    done
    fail "the virtual camera does not start; see $results/camera.log"
}

# On the first address that no other camera has.
start_camera()
{
    for address in 127.0.0.{11..30}; do
        # A session of its own: Ctrl-C is for the command, which then takes leave of the camera.
        setsid "$programs/telvo-camera" --address "$address" --user-sets-prepared \
            --save-recordings "$results/camera" >"$results/camera.log" 2>&1 &
        camera=$!
        camera_is_ready && return 0
    done
    fail "cannot start a virtual camera: $(cat "$results/camera.log")"
}

# Runs beside the shell, so that Ctrl-C and a request to end are obeyed at once.
show()
{
    printf '\n$ telvo %s\n' "$*"
    "$programs/telvo" "$@" &
    command=$!
    wait "$command" || fail "telvo $1 failed"
    command=
}

for program in telvo telvo-camera; do
    [ -x "$programs/$program" ] || fail "there is no $programs/$program; build first"
done
rm -rf "$results"
mkdir -p "$results/live"

start_camera
cat "$results/camera.log"
show discover --interface lo
show info --camera "$address"
show live --camera "$address" --frames 50 --fps 25 --out "$results/live" \
    --contact-sheet "$results/contact-sheet.png"
show record --camera "$address" --frames 200 --fps 1000
show download --camera "$address" --out "$results/recording.raw"
show download --camera "$address" --format png --count 20 --out "$results/recording"

# Ended, the camera leaves what it recorded.
kill "$camera"
wait "$camera" || fail "the virtual camera failed; see $results/camera.log"
camera=
cmp "$results/recording.raw" "$results/camera/$address-0.raw" || fail "the recordings differ"
rm -r "$results/camera"
printf '\nThe downloaded recording is what the camera recorded, byte for byte.\n'

cat <<END

Live pictures:      $results/live, at a glance: $results/contact-sheet.png
Recorded pictures:  $results/recording, all bytes: $results/recording.raw
END
