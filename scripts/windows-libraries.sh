#!/bin/sh
# Fetches the sources of the libraries that Debian has no Windows build of, from Debian's source
# packages, and unpacks them into build/windows-libraries/NAME. Each is fetched once.
set -eu

root=$(cd "$(dirname "$0")/.." && pwd)
target=$root/build/windows-libraries
mkdir -p "$target/apt"

source_list=

# A list of source packages of our own: the system's lists stay as they are.
apt_with_sources()
{
    apt-get -o Dir::Etc::sourcelist="$source_list" -o Dir::Etc::sourceparts=- \
        -o Dir::State::lists="$target/apt/lists" -o APT::Sandbox::User="$(id -un)" -qq "$@"
}

write_source_list()
{
    if [ -s /etc/apt/sources.list.d/debian.sources ]; then
        source_list=$target/apt/list.sources
        sed 's/^Types:.*/Types: deb-src/' /etc/apt/sources.list.d/debian.sources >"$source_list"
    else
        source_list=$target/apt/list.list
        sed -n 's/^deb /deb-src /p' /etc/apt/sources.list >"$source_list"
    fi
}

fetch()
{
    name=$1 package=$2
    [ -d "$target/$name" ] && return
    if [ -z "$source_list" ]; then
        write_source_list
        mkdir -p "$target/apt/lists/partial"
        apt_with_sources update
    fi
    echo "Fetching the source of $package"
    rm -rf "$target/apt/$name"
    mkdir -p "$target/apt/$name"
    (cd "$target/apt/$name" && apt_with_sources source --download-only --tar-only "$package")
    tar -C "$target/apt/$name" -xf "$target/apt/$name/"*.orig.tar.*
    rm "$target/apt/$name/"*.orig.tar.*
    mv "$target/apt/$name/"* "$target/$name"
}

fetch pugixml pugixml
fetch minizip minizip
fetch libpng libpng1.6
fetch libtiff tiff
fetch libjpeg libjpeg-turbo
