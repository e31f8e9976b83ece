#!/bin/sh
# The project ($1) as a part of another one, which gets the library and nothing else: in a folder of
# the build ($2).
set -eu

source=$1 work=$2/subdirectory-test
rm -rf "$work"
mkdir -p "$work"
cat >"$work/CMakeLists.txt" <<END
cmake_minimum_required(VERSION 3.25)
project(Host LANGUAGES C CXX)
add_subdirectory($source telvo)
add_executable(host host.c)
target_link_libraries(host PRIVATE Telvo::TelvoDll)
END
printf '#include <TelvoDll.h>\nint main(void) { return expDisconnectGrabber(7) == -1 ? 0 : 1; }\n' \
    >"$work/host.c"
cmake -S "$work" -B "$work/build" -G Ninja -DCMAKE_BUILD_TYPE=Debug >"$work/configure.log"
targets=$(ninja -C "$work/build" -t targets all)
for target in telvo-camera: telvo: test_api: bench_control:; do
    if printf '%s\n' "$targets" | grep -q "^$target"; then
        echo "the host's build has the target $target"
        exit 1
    fi
done
# As far as a library that needs nothing of others; the rest is what this build has built already.
cmake --build "$work/build" --target telvo_log
ninja -C "$work/build" -n host | grep -q 'Linking C executable host'
