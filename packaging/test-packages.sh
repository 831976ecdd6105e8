#!/bin/bash
# Installs the packages of build/package into a clean root, uses them there, and removes them: nothing may be left of them.
# Run as root. The clean root itself is kept in build/cache.
set -euo pipefail
root=$( dirname "$( dirname "$( readlink -f "${BASH_SOURCE[0]}" )" )" )
package="$root/build/package"
system="$package/root"
# shellcheck source=/dev/null
codename=$( . /etc/os-release && echo "$VERSION_CODENAME" )
clean_root="$root/build/cache/clean-root-$codename.tar"
tools=cmake,g++,make,pkg-config

say() { printf 'test-packages: %s\n' "$*" >&2; }

# From the same archive as this system's own packages.
make_clean_root() {
    local archive
    # shellcheck disable=SC2016 # apt fills in what is in $( )
    archive=$( apt-get indextargets --format '$(CODENAME) $(REPO_URI)' 'Created-By: Packages' |
        sed -n "s/^$codename //p;T;q" )
    say "making a clean root (once)"
    mkdir -p "${clean_root%/*}"
    debootstrap --variant=minbase --include="$tools" "$codename" "$system" "$archive" >"$package/debootstrap.log" ||
        { say "failed, see $package/debootstrap.log"; return 1; }
    tar -C "$system" -cf "$clean_root.part" .
    mv "$clean_root.part" "$clean_root"
}

in_root() {
    chroot "$system" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 "$@"
}

apt_get() {
    in_root apt-get -q -y -o Dpkg::Use-Pty=0 "$@" >>"$package/apt.log" 2>&1 ||
        { tail -n 20 "$package/apt.log" >&2; say "failed: apt-get $*"; return 1; }
}

# All files and packages, less what apt and dpkg remember of what they did.
state() {
    ( cd "$system" && find . -path ./tmp/packages -prune -o ! -path './var/cache/*' ! -path './var/lib/apt/*' \
        ! -path './var/lib/dpkg/*-old' ! -path './var/log/*' -print ) | sort
    in_root dpkg-query -W
}

# The file of a package, as it is named within the root.
file_of() {
    local found=( "$system/tmp/packages/$1"_*.deb )
    echo "/tmp/packages/${found[0]##*/}"
}

use() {
    say "using what is installed: $1"
    cp "$root/debian/tests/$1" "$system/tmp/packages/"
    in_root "/tmp/packages/$1" >"$package/$1.log" 2>&1 || { cat "$package/$1.log" >&2; say "failed: $1"; return 1; }
}

rm -rf "$system"
mkdir -p "$system"
[[ -e $clean_root ]] || make_clean_root
[[ -e $system/etc ]] || tar -C "$system" -xpf "$clean_root"
mkdir -p "$system/tmp/packages"
cp "$package"/{mountprofile,libcorvidmountprofilehdlr}[1_-]*.deb "$system/tmp/packages/"
rm -f "$system"/tmp/packages/*-dbgsym*
cp /etc/resolv.conf "$system/etc/resolv.conf"
: >"$package/apt.log"

apt_get update
state >"$package/state-before"
say "installing the command"
apt_get install --no-install-recommends "$( file_of mountprofile )" \
    "$( file_of libcorvidmountprofilehdlr1 )"
use command
say "reading how it is built"
python3 -B "$root/tests/exports/check_hardening.py" "$system"/usr/lib/*/libCorvidMountProfileHdlr.so.1 "$system/usr/bin/mountprofile"
say "installing the development files"
apt_get install --no-install-recommends "$( file_of libcorvidmountprofilehdlr-dev )"
use library
say "removing all of it"
apt_get purge --autoremove mountprofile libcorvidmountprofilehdlr1 libcorvidmountprofilehdlr-dev
state >"$package/state-after"
if ! diff "$package/state-before" "$package/state-after"; then
    say "something is left behind, or went along"
    exit 1
fi
rm -rf "$system"
say "installed, used and removed without a trace"
