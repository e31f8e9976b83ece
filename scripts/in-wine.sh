#!/bin/sh
# Runs a command with what Windows programs need here: a Wine prefix, a display and a network
# namespace, all of them this run's own, so that runs side by side do not see each other. The command
# is a native one: `in-wine.sh wine some.exe`, or a script that starts cameras and hosts.
#
# The prefix is a copy of build/windows/wine, which is made once. A Wine server keeps the display
# and the network of whoever started it, so it starts here and ends with the command.
set -eu

if [ "${1:-}" != --inside ]; then
    exec "$(dirname "$0")/in-own-network.sh" "$0" --inside "$@"
fi
shift

scripts=$(cd "$(dirname "$0")" && pwd)
build=$(dirname "$scripts")/build/windows
template=$build/wine
exact_bind=$build/exact-bind.so
export WINEDEBUG=-all,err+module WINEARCH=win64 # only what keeps a program from starting
export WINEDLLOVERRIDES="mscoree,mshtml=" # else Wine asks for .NET and a browser to install

run=
display_server=

clean_up()
{
    if [ -n "$run" ]; then
        wineserver --kill || true
        wineserver --wait
    fi
    [ -z "$display_server" ] || kill "$display_server" || true
    [ -z "$run" ] || rm -rf "$run"
}
trap clean_up EXIT
trap 'exit 1' INT TERM HUP

make_template()
{
    if [ ! -d "$template" ]; then
        rm -rf "$template.new"
        WINEPREFIX=$template.new wineboot --init >"$build/wine.log" 2>&1 || {
            cat "$build/wine.log"
            return 1
        }
        WINEPREFIX=$template.new wineserver --wait
        mv "$template.new" "$template"
    fi
    [ -e "$exact_bind" ] || cc -shared -fPIC -o "$exact_bind" "$scripts/ExactBind.c"
}

# Sets DISPLAY. The server listens on an abstract socket alone, which belongs to the namespace. Keys
# do not repeat: on a busy machine one may be down for long.
start_display()
{
    mkfifo "$1"
    Xvfb -displayfd 8 -nolisten unix -nolisten tcp -r -screen 0 1280x1024x24 8>"$1" 2>/dev/null &
    display_server=$!
    read -r number <"$1" || {
        echo "in-wine.sh: Xvfb does not start" >&2
        exit 1
    }
    export DISPLAY=":$number"
}

# Wine's own files are shared with the template, what it writes is copied.
make_prefix()
{
    export WINEPREFIX="$1"
    mkdir "$WINEPREFIX"
    cp --archive --link "$template/drive_c" "$WINEPREFIX"
    cp --archive "$template/dosdevices" "$template"/*.reg "$template/.update-timestamp" "$WINEPREFIX"
}

mkdir -p "$build"
exec 9>"$build/wine.lock"
flock 9
make_template
exec 9>&-

run=$(mktemp -d "$build/wine-run.XXXXXX")
make_prefix "$run/prefix"
start_display "$run/display"
LD_PRELOAD=$exact_bind wineserver --persistent
"$@"
