#!/bin/bash
# compare-builds.sh LIBRARY: builds the library once more, in a directory with another name, and compares it with LIBRARY
# from build/release: they are the same to the bit.
set -euo pipefail
root=$( dirname "$( dirname "$( readlink -f "${BASH_SOURCE[0]}" )" )" )
library=$1
elsewhere=$( mktemp -d -t "built somewhere else.XXXXXX" )
trap 'rm -rf "$elsewhere"' EXIT

tar -C "$root" --exclude=./build --exclude=./.git -c . | tar -C "$elsewhere" -x
cd "$elsewhere"
export CCACHE_DISABLE=1 # what is compared is compiled
cmake --preset release -DBUILD_TESTING=OFF >/dev/null
cmake --build --preset release --target CorvidMountProfileHdlr
cmp "$library" "build/release/lib/${library##*/}" && echo "the same: $( sha256sum <"$library" )"
