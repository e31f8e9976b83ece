#!/usr/bin/env bash
# Shows the tool at work: starts two virtual cameras on loopback addresses, finds them, takes live
# pictures, lets both record in a ring until a trigger, looks at what they have, reads the frames
# around the trigger as TIFF, PNG and MP4, and compares whole recordings with what the cameras
# recorded. Leaves the pictures in build/demo and nothing running.
set -euo pipefail

cd "$(dirname "$0")/.."
programs=${1:?usage: scripts/demo.sh BUILD_FOLDER}/bin
results=build/demo

cameras= # process id
command= # process id of the demo's present step

fail()
{
    printf 'demo: %s\n' "$1" >&2
    exit 1
}

clean_up()
{
    trap - EXIT INT TERM
    # The command first: it still talks to the cameras.
    for process in $command $cameras; do
        kill "$process" 2>/dev/null || true
        wait "$process" 2>/dev/null || true
    done
}
trap clean_up EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

# Ten seconds for a line in a file that a process writes to.
wait_for()
{
    local line=$1 file=$2 process=$3
    for _ in {1..100}; do
        grep -q "$line" "$file" && return 0
        kill -0 "$process" 2>/dev/null || return 1
        sleep 0.1
    done
    fail "there is no '$line' in $file"
}

# On the first two addresses that no other cameras have. What is written to descriptor 3 reaches
# them as commands.
start_cameras()
{
    mkfifo "$results/commands"
    exec 3<>"$results/commands"
    for number in {11..30}; do
        first=127.0.0.$number second=127.0.1.$number
        # A session of its own: Ctrl-C is for the command, which then takes leave of the cameras.
        setsid "$programs/telvo-camera" --address "$first" --address "$second" \
            --user-sets-prepared --memory 200MB --set ExtTriggerEnable=1 --commands \
            --save-recordings "$results/cameras" <"$results/commands" >"$results/cameras.log" 2>&1 &
        cameras=$!
        wait_for "$second, MAC" "$results/cameras.log" "$cameras" && return 0
    done
    fail "cannot start the virtual cameras: $(cat "$results/cameras.log")"
}

begin()
{
    printf '\n$ telvo %s\n' "$*"
    "$programs/telvo" "$@" &
    command=$!
}

end()
{
    wait "$command" || fail "telvo failed"
    command=
}

# Runs beside the shell, so that Ctrl-C and a request to end are obeyed at once.
show()
{
    begin "$@"
    end
}

for program in telvo telvo-camera; do
    [ -x "$programs/$program" ] || fail "there is no $programs/$program; build first"
done
rm -rf "$results"
mkdir -p "$results/live"

start_cameras
cat "$results/cameras.log"
show discover --interface lo
show live --camera "$first" --frames 50 --fps 10 --out "$results/live" \
    --contact-sheet "$results/live.png"

# A trigger comes once the rings are full: half of what they keep is from before it.
begin record --camera "$first" --camera "$second" --mode ring --trigger external --post 50% --fps 1000
sleep 3
echo trigger >&3
end

show review --camera "$first" --contact-sheet "$results/contact-sheet.png"
show download --camera "$first" --around-trigger 20 --format tiff --out "$results/trigger.tif"
show download --camera "$first" --around-trigger 10 --format png --out "$results/trigger"
show download --camera "$first" --around-trigger 20 --format mp4 --out "$results/trigger.mp4"
show download --camera "$first" --out "$results/first.raw"
show download --camera "$second" --out "$results/second.raw"

# Ended, the cameras leave what they recorded.
kill "$cameras"
wait "$cameras" || fail "the virtual cameras failed; see $results/cameras.log"
cameras=
cmp "$results/first.raw" "$results/cameras/$first-0.raw" || fail "the recordings differ"
cmp "$results/second.raw" "$results/cameras/$second-0.raw" || fail "the recordings differ"
rm -r "$results/cameras" "$results/commands"
printf '\nBoth recordings are what the cameras recorded, byte for byte.\n'

cat <<END

Contact sheet:      $results/contact-sheet.png, of the live pictures: $results/live.png
Around the trigger: $results/trigger.tif, $results/trigger, $results/trigger.mp4
All frames:         $results/first.raw, $results/second.raw, what is known of them: first.raw.json
END
