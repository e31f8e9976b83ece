#!/bin/sh
# Installs a build folder ($1) elsewhere, moves it, and builds and runs the examples of the source
# folder ($2) with what is there alone: by CMake, by pkg-config, and by the compiler alone.
set -eu

build=$1 source=$2 work=$1/install-test
rm -rf "$work"
mkdir -p "$work"
cmake --install "$build" --prefix "$work/first" >"$work/install.log"
mv "$work/first" "$work/moved"
prefix=$work/moved

check() # the program that was built as $1
{
    "$source/scripts/in-own-network.sh" "$source/tests/examples/with-camera.sh" \
        "$prefix/bin/telvo-camera" "$1 02:54:45:00:00:0b 127.0.0.11" | grep -q 'model *TOVI1'
    echo "$1 runs"
}

cmake -S "$source/examples" -B "$work/cmake" -DCMAKE_PREFIX_PATH="$prefix" >"$work/cmake.log"
cmake --build "$work/cmake" >"$work/build.log"
check "$work/cmake/example_connect"

export PKG_CONFIG_PATH="$prefix/lib/pkgconfig" LD_LIBRARY_PATH="$prefix/lib"
# shellcheck disable=SC2046 # words
cc "$source/examples/c/connect.c" $(pkg-config --cflags --libs telvo) -o "$work/by-pkg-config"
check "$work/by-pkg-config"

cc "$source/examples/c/connect.c" -I"$prefix/include" -L"$prefix/lib" -lTelvoDll -o "$work/by-hand"
check "$work/by-hand"

readelf --dynamic "$work/by-hand" | grep -q 'NEEDED.*libTelvoDll.so.0.1'
unset LD_LIBRARY_PATH
test "$(gzip -dc "$prefix/share/man/man1/telvo-settings-save.1.gz")" = \
    "$("$prefix/bin/telvo" man settings save)"
"$prefix/bin/telvo" --version # finds its library beside it
