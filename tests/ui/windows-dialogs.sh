#!/usr/bin/env bash
# Drives the library's dialogs on a display of their own, with keys and mouse, against native virtual
# cameras: windows-dialogs.sh TEST CAMERA-PROGRAM dialog_host.exe [FOLDER-FOR-PICTURES]
#
# The host program says what its dialog shows, each time it changes; see WindowWatch.h.
set -euo pipefail

if [ "$1" != --inside ]; then
    exec "$(dirname "$0")/../../scripts/in-wine.sh" "$0" --inside "$@"
fi
test=$2 camera=$3 host=$4 pictures=${5:-}

log=$WINEPREFIX/host.log
seen=0 # bytes of the log that were there when a key was pressed last
host_process=
cameras=()

clean_up()
{
    [ ${#cameras[@]} = 0 ] || kill "${cameras[@]}"
}
trap clean_up EXIT

fail()
{
    printf 'windows-dialogs %s: %s\n--- the host said last:\n' "$test" "$1" >&2
    tail -n 40 "$log" >&2
    exit 1
}

# await TEXT PATTERN FILE: until a line of the file's part behind $seen matches.
await()
{
    for _ in {1..600}; do
        tail -c "+$((seen + 1))" "$3" 2>/dev/null | tr -d '\r' | grep -Eq "$2" && return 0
        sleep 0.1
    done
    fail "$1"
}

shows()
{
    await "no line matches: $1" "$1" "$log"
}

start_camera()
{
    local address=$1
    "$camera" --address "$@" --user-sets-prepared >"$WINEPREFIX/$address.log" 2>&1 &
    cameras+=($!)
    await "the camera does not start" 'listens on' "$WINEPREFIX/$address.log"
}

# On a desktop window of Wine's own, which draws the frames and gets the keys: there is no window
# manager.
start_host()
{
    : >"$log"
    seen=0
    wine explorer "/desktop=telvo,1000x760" "$host" "$@" >"$log" 2>&1 &
    host_process=$!
    shows '^window '
    xdotool search --name telvo windowfocus
}

mark()
{
    seen=$(stat --format=%s "$log")
}

press()
{
    mark
    xdotool key --delay 30 "$@" 2>/dev/null
}

enter_text()
{
    mark
    xdotool type --delay 30 "$1" 2>/dev/null
}

picture()
{
    [ -z "$pictures" ] || import -window root "$pictures/$1.png"
}

# The last line that matches, without what comes before the match.
last()
{
    tr -d '\r' <"$log" | grep -Eo "$1" | tail -n 1
}

# camera_says FEATURE VALUE: asked by a program that is not ours.
camera_says()
{
    local answer
    answer=$(arv-tool-0.8 -a 127.0.0.11 control "$1")
    grep -Eq "$1 = $2( |\$)" <<<"$answer" || fail "the camera says: $answer"
}

start_finder()
{
    start_camera 127.0.0.11
    start_camera 127.0.0.12 --model "Fenrow Lite"
    start_host finder
    shows '^row [0-9,]+ 02:54:45:00:00:0b \| 127.0.0.11 \| TOVI1 \| VC00000B \| virtual camera \| free'
    shows '^row [0-9,]+ 02:54:45:00:00:0c \| 127.0.0.12 \| Fenrow Lite \| VC00000C .* free'
    shows '^control 1 at [0-9,]+ disabled: OK'
}

start_browser()
{
    start_camera 127.0.0.11
    start_host gev-params 02:54:45:00:00:0b 127.0.0.11
    shows '^row .*ExposureTimeRaw \| 1000 us \| integer'
}

selected_feature()
{
    last '^row .* \*$' | cut -d ' ' -f 3
}

press_down()
{
    local before
    before=$(selected_feature)
    press Down
    for _ in {1..600}; do
        [ "$(selected_feature)" = "$before" ] || return 0
        sleep 0.1
    done
    fail "Down does not select the next feature"
}

# In the tree, AcquisitionControl is the third category below "All features".
select_exposure()
{
    press Down Down Down
    shows '^row [0-9,]+ AcquisitionMode '
    press Tab Home
    shows '^row [0-9,]+ AcquisitionMode .* \*$'
    until [ "$(selected_feature)" = ExposureTimeRaw ]; do
        press_down
    done
}

finder_by_keyboard()
{
    start_finder
    press Down
    shows '^row .*0b .* free \*$'
    shows '^control 1 at [0-9,]+ enabled: OK'
    picture device-finder
    press Down
    shows '^row .*0c .* free \*$'
    press Return
    shows '^connect: 0$'
    shows '^camera: 02:54:45:00:00:0c 127.0.0.12$'
}

finder_by_mouse()
{
    start_finder
    local place
    place=$(last '^row [0-9,]+ 02:54:45:00:00:0c' | grep -Eo '[0-9]+,[0-9]+' | head -n 1)
    mark
    for _ in {1..30}; do # on a busy machine two clicks may be too far apart
        xdotool mousemove "${place%,*}" "${place#*,}" click --repeat 2 --delay 50 1
        sleep 2
        ! tail -n 1 "$log" | grep -q '^control' && break
    done
    shows '^camera: 02:54:45:00:00:0c 127.0.0.12$'
}

finder_cancelled()
{
    start_finder
    press Return # nothing is selected: stays open
    press Down
    shows '^row .*0b .* free \*$'
    press Escape
    shows '^connect: -1$'
}

browser_number()
{
    start_browser
    select_exposure
    shows '^control 102 .*: ExposureTimeRaw \(integer; 1 to 19999 us\)$'
    press Return # into the value
    shows '^control 104 .* enabled focus: 1000$'
    enter_text 2500
    shows '^control 104 .* focus: 2500$'
    press Return
    shows '^row .*ExposureTimeRaw \| 2500 us \| integer \*$'
    shows '^control 107 .*: ExposureTimeRaw: written\.$'
    picture parameter-browser
    press Escape
    shows '^shown: 0$'
    wait "$host_process"
    camera_says ExposureTimeRaw 2500
}

browser_refusal()
{
    start_browser
    select_exposure
    press Return
    shows '^control 104 .* focus: 1000$'
    enter_text 20000
    press Return
    shows '^control 107 .*: 20000 is above the maximum of 19999\.$'
    last '^control 104 .*' | grep -q 'focus: 20000$' || fail "the refused text is gone"
    press Escape
    shows '^shown: 0$'
    wait "$host_process"
    camera_says ExposureTimeRaw 1000
}

browser_choice()
{
    start_browser
    select_exposure
    press Home # AcquisitionMode
    shows '^control 105 .* enabled: Continuous$'
    press Return
    shows '^control 105 .* focus: Continuous$'
    press Down
    shows '^control 105 .* focus: SingleFrame$'
    press Return
    shows '^row .*AcquisitionMode \| SingleFrame \| choice \*$'
    press Escape
    shows '^shown: 0$'
    wait "$host_process"
    camera_says AcquisitionMode SingleFrame
}

# Larger by 100 and 80 pixels: the list grows, the buttons stay at their edges.
resized()
{
    start_finder
    local place
    place=$(last '^window at [0-9,]+' | grep -Eo '[0-9,]+$')
    IFS=, read -r left top right bottom <<<"$place"
    IFS=, read -r _ _ ok_right ok_bottom <<<"$(last '^control 2 at [0-9,]+' | grep -Eo '[0-9,]+$')"
    mark
    xdotool mousemove $((right - 2)) $((bottom - 2)) mousedown 1
    xdotool mousemove_relative 50 40 mousemove_relative 50 40 mouseup 1
    shows "^window at $left,$top,$((right + 100)),$((bottom + 80)): "
    shows "^control 2 at [0-9]+,[0-9]+,$((ok_right + 100)),$((ok_bottom + 80)) "
    press Escape
    shows '^connect: -1$'
}

"$test"
