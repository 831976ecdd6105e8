#!/bin/bash
# library-abi.sh check|record DEBUG_BUILD RELEASE_BUILD: does that for the library's ABI, by the build tree with debugging
# data, and for the names of its symbols in the Debian package, by the one that is shipped.
set -euo pipefail
root=$( dirname "$( dirname "$( dirname "$( readlink -f "${BASH_SOURCE[0]}" )" )" )" )
what=$1 debug=$root/build/$2 release=$root/build/$3
name=libCorvidMountProfileHdlr.so
headers=$debug/abi-headers

rm -rf "$headers"
cmake --install "$debug" --component headers --prefix "$headers" >/dev/null
"$root/packaging/abi/abi.sh" "$what" "$debug/lib/$name" "$headers" "$root/packaging/abi/$name.1.abi.xz" \
    "$root/packaging/abi/waivers"
"$root/packaging/abi/symbols.sh" "$what" "$release/lib/$name"
