#!/bin/sh
# bench.sh [--peers] [SUITE...] [-- OPTIONS]: builds the benchmarks and runs them.
#
#     bench.sh                        lexing, storing and whole runs, with Google Benchmark
#     bench.sh -- --benchmark_filter=lex    the same with options of Google Benchmark
#     bench.sh --peers                the same mounts through other loaders, one table of ratios
#     bench.sh peers warm fleet       suites of measure.py, see `measure.py --help`; `all` for all of them
#     bench.sh peers -- --rounds 3 --sizes 100000       a suite with options of measure.py
#
# --peers installs the packages of the other loaders (Debian's) when one is missing.
set -eu

root=$(cd "$(dirname "$0")/.." && pwd)
build=$root/build/bench
own_packages="libbenchmark-dev libcli11-dev"
peer_packages="rapidjson-dev libsimdjson-dev libyaml-cpp-dev libtomlplusplus-dev nlohmann-json3-dev libyaml-dev
    libmount-dev flex bison sudo"

install_missing() {
    missing=
    for package in "$@"; do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q "ok installed" || missing="$missing $package"
    done
    [ -n "$missing" ] || return 0
    if [ "$(id -u)" -eq 0 ]; then as_root=; else as_root=sudo; fi
    # The list is of words.
    # shellcheck disable=SC2086
    $as_root apt-get -o DPkg::Lock::Timeout=120 install -y --no-install-recommends $missing
}

peers=OFF
suites=
while [ $# -gt 0 ]; do
    case $1 in
        --peers) suites="$suites peers" ;;
        -h | --help) sed -n '2,/^set /s/^#\( \|$\)//p' "$0"; exit 0 ;;
        --) shift; break ;;
        -*) echo "bench.sh: no option $1" >&2; exit 2 ;;
        *) suites="$suites $1" ;;
    esac
    shift
done
[ -z "$suites" ] || peers=ON

# shellcheck disable=SC2086
install_missing $own_packages
if [ "$peers" = ON ]; then
    # shellcheck disable=SC2086
    install_missing $peer_packages
fi

cd "$root"
cmake --preset bench -DCORVID_BENCHMARK_PEERS="$peers" >/dev/null
cmake --build --preset bench >&2
if [ -n "$suites" ]; then
    # shellcheck disable=SC2086
    exec python3 benchmarks/measure.py --bin "$build/bin" $suites "$@"
fi
exec "$build/bin/profile-benchmarks" "$@"
