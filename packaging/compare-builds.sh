#!/bin/bash
# Builds the library in two directories of other names and depths, and compares the results: they are the same to the bit.
set -euo pipefail
root=$( dirname "$( dirname "$( readlink -f "${BASH_SOURCE[0]}" )" )" )
places=$( mktemp -d -t "compare-builds.XXXXXX" )
trap 'rm -rf "$places"' EXIT
export CCACHE_DISABLE=1 # what is compared is compiled

build_in() {
    mkdir -p "$1"
    tar -C "$root" --exclude=./build --exclude=./.git -c . | tar -C "$1" -x
    cd "$1"
    cmake --preset release -DBUILD_TESTING=OFF
    cmake --build --preset release --target CorvidMountProfileHdlr
}

build_in "$places/here"
build_in "$places/some where/else"
cmp "$places"/{here,"some where/else"}/build/release/lib/libCorvidMountProfileHdlr.so
echo "the same: $( sha256sum <build/release/lib/libCorvidMountProfileHdlr.so )"
