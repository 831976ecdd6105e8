#!/bin/bash
# Builds the Debian packages from a copy of the source tree, without running its tests, and has lintian look at them. All
# that comes of it is in build/package.
set -euo pipefail
root=$( dirname "$( dirname "$( readlink -f "${BASH_SOURCE[0]}" )" )" )
package="$root/build/package"

rm -rf "$package"
mkdir -p "$package/source"
tar -C "$root" --exclude=./build --exclude=./.git -c . | tar -C "$package/source" -x
cd "$package/source"
DEB_BUILD_OPTIONS="nocheck parallel=$( nproc )" dpkg-buildpackage --build-profiles=nocheck --no-sign
lintian --allow-root --fail-on error,warning "$package"/*.changes
