#!/bin/sh
# Succeeds if a second build for Windows, in another folder, gives the bytes of build/windows.
set -eu

cd "$(dirname "$0")/.."
again=build/windows-again
rm -rf "$again"
# Compiled anew, whatever launcher of the compiler the environment names.
cmake --preset windows -B "$again" -DTELVO_TESTS=OFF -DCMAKE_C_COMPILER_LAUNCHER= \
      -DCMAKE_CXX_COMPILER_LAUNCHER= >build/configure-windows-again.log
cmake --build "$again" --target TelvoDll telvo telvo-camera

for file in bin/TelvoDll.dll bin/telvo.exe bin/telvo-camera.exe lib/libTelvoDll.dll.a; do
    cmp "build/windows/$file" "$again/$file"
    echo "the same bytes: $file"
done
