#!/bin/bash
# Runs a Windows program with this project's Wine: prefix build/wine-ctest, a virtual display of its own.
#
# usage: scripts/in-wine.sh PROGRAM [ARGUMENT...]      the status is the program's
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
source "$root/scripts/wine.sh"

hold_lock ctest >&2
on_processor 0
use_wine ctest 32 >&2
start_display
in_wine "$@"
