#!/bin/sh
# run_on_minimal.sh SOURCE BIN: the tests of every platform, and the example of a host, on the minimal one.
set -eu
source=$1
bin=$( realpath "$2" )

"$bin/PlatformContractTest" --gtest_brief=1

# The includes are found, and read in whatever order; without cells, paths are not qualified.
cd "$source"
expected='Fan-
  1 default: 9 mounts
  10 policy: 2 mounts, blocks until true == /%sysname/cooling/config.enabled and %slot == %peerSlot
  20 power: 1 mounts, when 1 <= len( /%sysname/hardware/power.entryState )
  99 all: 6 mounts'
printed=$( "$bin/minimal_host" examples/fan 2>&1 )
if [ "$printed" != "$expected" ]; then
    printf 'minimal_host printed:\n%s\n' "$printed"
    exit 1
fi
