#!/bin/bash
# abi.sh check|record LIBRARY HEADERS BASELINE [WAIVERS]: compares what a library offers to programs that were linked with
# it before (sizes, members, virtual functions, signatures) with a recorded baseline, or records it. The library carries
# debugging data; HEADERS is a directory with its public headers: types that are not in them do not count.
# Exit status 1 for any change that the file of waivers, an abidiff suppression file, does not name.
set -euo pipefail
what=$1 library=$2 headers=$3 baseline=$4 waivers=${5:-}
here=$( dirname "$( readlink -f "${BASH_SOURCE[0]}" )" )
directory=$( mktemp -d )
trap 'rm -r "$directory"' EXIT

abidw --no-corpus-path --no-comp-dir-path --no-show-locs --no-elf-needed --exported-interfaces-only \
    --headers-dir "$headers" --drop-private-types --suppressions "$here/foreign" \
    --out-file "$directory/now.abi" "$library"
# A library without debugging data would equal any other one.
grep -q '<class-decl' "$directory/now.abi" || { echo "$library has no debugging data: compile it with -g"; exit 2; }

if [[ $what == record ]]; then
    xz -9 <"$directory/now.abi" >"$baseline"
    exit
fi
xz -d <"$baseline" >"$directory/recorded.abi"
abidiff ${waivers:+--suppressions "$waivers"} "$directory/recorded.abi" "$directory/now.abi" && exit
cat <<END

The ABI of $library is not the one that is recorded in $baseline.
A change that breaks programs which are in use needs a new SONAME. For any other one, either name it in the file of
waivers (${waivers:-none is in use}), which explains itself, or record the library as it is now: ./dev abi record
END
exit 1
