#!/bin/sh
# check-profiles.sh [DIRECTORY]: for any CI system that runs a shell. Prints one line for each error, in the form of a
# compiler's, leaves a report behind for tools, and fails when a file is invalid (1) or could not be checked (2).
set -eu
directory=${1:-profiles}

mountprofile check --format sarif "$directory" >mountprofile.sarif || : # what it finds is told by the next one
mountprofile check --format gcc "$directory"
