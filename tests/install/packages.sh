#!/bin/sh
# Makes the Debian packages of a build folder ($1) and checks them: what they hold, what they depend
# on, and that a host (the examples of $2) is built and runs with their files alone.
set -eu

build=$1 source=$2 work=$1/deb-test
rm -rf "$work"
mkdir -p "$work/unpacked"
cpack --config "$build/CPackConfig.cmake" -B "$work" >"$work/cpack.log" 2>&1 || {
    cat "$work/cpack.log"
    exit 1
}
cd "$work"
for package in *.deb; do
    dpkg-deb -x "$package" unpacked
done
lintian --suppress-tags dir-or-file-in-opt --fail-on error ./*.deb
dpkg-deb --field telvo-tools_*.deb Depends | grep -q 'libtelvodll0.1 (= .*libpng16-16'
dpkg-deb --field libtelvodll0.1_*.deb Depends | grep -q 'libstdc++6'
if readelf --sections unpacked/usr/lib/libTelvoDll.so.0.1 | grep -q debug_info; then
    echo "the library is not stripped"
    exit 1
fi
gzip -dc unpacked/usr/share/man/man1/telvo-record.1.gz | grep -q 'waits for the trigger'
ls ./*-dbgsym_*.ddeb >/dev/null

cc "$source/examples/c/connect.c" -Iunpacked/usr/include -Lunpacked/usr/lib -lTelvoDll -o connect
LD_LIBRARY_PATH=$work/unpacked/usr/lib "$source/scripts/in-own-network.sh" \
    "$source/tests/examples/with-camera.sh" "$work/unpacked/usr/bin/telvo-camera" \
    "$work/connect 02:54:45:00:00:0b 127.0.0.11" | grep 'model *TOVI1'
