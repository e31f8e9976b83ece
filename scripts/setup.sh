#!/bin/sh
# Installs, as Debian packages by name, what the purposes given need; installs nothing where all is
# there already. For Windows it also fetches the sources of the libraries that are built for it.
#   usage: scripts/setup.sh PURPOSE...     build test windows bench lint docs fuzz
set -eu

# The library, the tool and the virtual camera: all that the demo needs.
build="build-essential cmake ninja-build pkgconf git
    libpugixml-dev libminizip-dev zlib1g-dev libpng-dev libcli11-dev nlohmann-json3-dev libtiff-dev
    libavformat-dev libavcodec-dev libswscale-dev libboost-dev libjpeg62-turbo-dev"
docs="python3-sphinx python3-myst-parser"
# The suites, the independent programs that they meet, and namespaces for their networks.
test="libgtest-dev libgmock-dev aravis-tools aravis-tools-cli iproute2
    libtiff-tools imagemagick ffmpeg python3 lintian dpkg-dev mono-mcs mono-runtime
    python3-numpy python3-matplotlib python3-pytest
    chromium chromium-driver python3-selenium
    python3-build python3-pip python3-setuptools python3-wheel mypy
    $docs nftables libcap2-bin"
# The cross-compiler, and a system to run what it makes.
windows="g++-mingw-w64-x86-64-posix lld libz-mingw-w64-dev googletest wine wine64 xvfb xdotool"
bench="libbenchmark-dev python3-numpy"
lint="clang-format clang-tidy"
fuzz="clang libclang-rt-14-dev"

packages=
fetch_windows_libraries=false
for purpose in "$@"; do
    case $purpose in
    build) packages="$packages $build" ;;
    test) packages="$packages $test" ;;
    windows)
        packages="$packages $windows"
        fetch_windows_libraries=true
        ;;
    bench) packages="$packages $bench" ;;
    lint) packages="$packages $lint" ;;
    docs) packages="$packages $docs" ;;
    fuzz) packages="$packages $fuzz" ;;
    *)
        echo "setup: there is no purpose '$purpose'" >&2
        exit 2
        ;;
    esac
done

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

if $fetch_windows_libraries; then
    "$(dirname "$0")/windows-libraries.sh"
fi
