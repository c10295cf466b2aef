#!/bin/bash
# Plays screens/design.visit: a screen is built from nothing, saved, opened again and run. Pictures and the screen are left in
# build/design.
#
# usage: scripts/design-visit.sh
exec "$(dirname "${BASH_SOURCE[0]}")/play-visit.sh" design
