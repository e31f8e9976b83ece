#!/bin/sh
# Runs a command in a network namespace of its own that has nothing but the loopback interface, so
# that tests side by side use the same addresses and nothing reaches the machine's network.
set -eu

as_root=
[ "$(id -u)" = 0 ] || as_root=--map-root-user
# shellcheck disable=SC2086 # one word or none
exec unshare --net $as_root sh -c 'ip link set lo up && exec "$@"' sh "$@"
