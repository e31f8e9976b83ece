#!/bin/sh
# Packs the zip of a build folder ($1) with a version ($2), compares the list of its files, and runs
# the programs from the unpacked folder.
set -eu

build=$1 version=$2
name=TelvoDll-$version-win64
work=$build/package-test
rm -rf "$work"
mkdir -p "$work"

cpack --config "$build/CPackConfig.cmake" -B "$work" >"$work/cpack.log" || {
    cat "$work/cpack.log"
    exit 1
}
cd "$work"
cmake -E tar xf "$name.zip"

cat >expected <<END
README.md
bin/TelvoDll.dll
bin/telvo-camera.exe
bin/telvo.exe
include/TelvoDll.h
lib/TelvoDll.def
lib/libTelvoDll.dll.a
licences/CLI11.txt
licences/GPL-3.txt
licences/Telvo.txt
licences/gcc-runtime.txt
licences/libpng.txt
licences/mingw-w64.txt
licences/minizip.txt
licences/pugixml.txt
licences/zlib.txt
END
(cd "$name" && find . -type f -size +0 | sed 's|^\./||' | LC_ALL=C sort) | diff expected -

in_wine=$(dirname "$0")/../../scripts/in-wine.sh
"$in_wine" wine "$name/bin/telvo.exe" --version | tr -d '\r' | grep -x "telvo $version"
"$in_wine" wine "$name/bin/telvo-camera.exe" --help | grep -q -- --user-sets-prepared
