#!/bin/sh
# Packs the zip of a build folder ($1) with a version ($2), compares the list of its files, and runs
# the programs from the unpacked folder.
set -eu

build=$1 version=$2 source=$(realpath "$(dirname "$0")/../..")
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

{
    (cd "$source" && git ls-files docs examples | grep -v 'docs/conf.py')
    cat <<END
README.md
bin/TelvoDll.dll
bin/telvo-camera.exe
bin/telvo.exe
include/TelvoDll.h
include/telvo.hpp
lib/TelvoDll.def
lib/TelvoDll.lib
lib/cmake/Telvo/TelvoConfig.cmake
lib/cmake/Telvo/TelvoConfigVersion.cmake
lib/cmake/Telvo/TelvoTargets-release.cmake
lib/cmake/Telvo/TelvoTargets.cmake
lib/libTelvoDll.dll.a
lib/pkgconfig/telvo.pc
licences/Boost.txt
licences/CLI11.txt
licences/GPL-3.txt
licences/Telvo.txt
licences/gcc-runtime.txt
licences/libjpeg-turbo.txt
licences/libpng.txt
licences/mingw-w64.txt
licences/minizip.txt
licences/pugixml.txt
licences/zlib.txt
END
} | LC_ALL=C sort >expected
(cd "$name" && find . -type f -size +0 -not -path './docs/html/*' | sed 's|^\./||' | LC_ALL=C sort) |
    diff expected -
"$source/tests/docs/site.py" "$name/docs/html"

in_wine=$source/scripts/in-wine.sh
"$in_wine" wine "$name/bin/telvo.exe" --version | tr -d '\r' | grep -x "telvo $version"
"$in_wine" wine "$name/bin/telvo-camera.exe" --help | grep -q -- --user-sets-prepared

# A host that has the zip alone: with either import library it records and reads back.
for library in -lTelvoDll -l:TelvoDll.lib; do
    for example in record readout; do
        x86_64-w64-mingw32-gcc "$name/examples/c/$example.c" -I"$name/include" -L"$name/lib" \
            $library -o "$name/bin/$example.exe"
    done
    "$source/tests/windows/with-camera.sh" "$source/build/release/bin/telvo-camera" sh -c "
        wine '$name/bin/record.exe' 02:54:45:00:00:0b 127.0.0.11 &&
        wine '$name/bin/readout.exe' 02:54:45:00:00:0b 127.0.0.11" | grep -q 'frames read, 0 gaps'
done
