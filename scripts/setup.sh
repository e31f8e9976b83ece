#!/bin/sh
# Installs what building, testing and the demo need, as Debian packages by name, and fetches the
# sources of the libraries that are built for Windows. Does nothing where all is there already.
set -eu

packages="
build-essential cmake ninja-build pkgconf git
libpugixml-dev libminizip-dev zlib1g-dev libpng-dev libcli11-dev
libgtest-dev libgmock-dev libbenchmark-dev
g++-mingw-w64-x86-64-posix libz-mingw-w64-dev googletest
wine wine64 xvfb xdotool
aravis-tools aravis-tools-cli iproute2
clang-format clang-tidy
"

missing=
for package in $packages; do
    status=$(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$status" = installed ] || missing="$missing $package"
done

if [ -n "$missing" ]; then
    as_root=
    [ "$(id -u)" = 0 ] || as_root=sudo
    echo "Installing:$missing"
    $as_root apt-get update -qq
    # shellcheck disable=SC2086 # a list of words
    DEBIAN_FRONTEND=noninteractive $as_root apt-get install -y -qq --no-install-recommends $missing \
        >/dev/null
else
    echo "All packages are installed."
fi

"$(dirname "$0")/windows-libraries.sh"
