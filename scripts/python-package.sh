#!/bin/sh
# Builds the Python package without the network: the sources and a wheel for every system, and,
# given the library, a wheel for this one that carries it. The folder is made anew.
#   usage: scripts/python-package.sh FOLDER [LIBRARY]
set -eu

folder=$1
library=${2:-}
project=$(dirname "$0")/..
python=/usr/bin/python3

build()
{
    $python -m build --no-isolation "$@" --outdir "$folder" "$folder/source" \
        >"$folder/build.log" 2>&1 || {
        cat "$folder/build.log"
        exit 1
    }
}

# A copy, because building leaves files beside the sources.
rm -rf "$folder"
mkdir -p "$folder"
cp -r "$project/python" "$folder/source"
cp "$project/LICENSE" "$folder/source"

build --sdist
build --wheel
if [ -n "$library" ]; then
    rm -rf "$folder/source/build"
    mkdir "$folder/source/src/telvo/library"
    cp "$library" "$folder/source/src/telvo/library/libTelvoDll.so"
    # Any Python 3, but only this kind of machine.
    build --wheel "--config-setting=--build-option=--plat-name=linux_$(uname -m)"
fi
rm -r "$folder/source" "$folder/build.log"
