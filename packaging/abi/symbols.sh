#!/bin/bash
# symbols.sh check|record LIBRARY: compares the names of a library's symbols with those in the Debian package's symbols
# file, from which other packages get their dependencies; or records them, the new ones with the version of the day.
set -euo pipefail
what=$1 library=$( readlink -f "$2" )
cd "$( dirname "$( readlink -f "${BASH_SOURCE[0]}" )" )/../.."
recorded=debian/libcorvidmountprofilehdlr1.symbols
now=$( mktemp )
trap 'rm -f "$now"' EXIT

gensymbols() {
    dpkg-gensymbols -plibcorvidmountprofilehdlr1 -v"$( dpkg-parsechangelog -SVersion )" -I"$recorded" -e"$library" \
        -O"$now" "$@"
}
if [[ $what == record ]]; then
    [[ -e $recorded ]] || : >"$recorded"
    gensymbols -q -c0
    # Whether what is missing was ever released is known to who reads the change.
    grep -v '^#MISSING' "$now" >"$recorded"
elif ! gensymbols -c4; then
    echo "$recorded does not have the symbols of the library: record them with ./dev abi record"
    exit 1
fi
