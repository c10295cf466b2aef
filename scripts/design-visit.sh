#!/bin/bash
# Plays screens/design.visit in the 64-bit screen host: a screen is built from nothing, saved, opened again and run. Fails
# unless every step succeeds. Pictures and the screen are left in build/design.
#
# usage: scripts/design-visit.sh [BUILD-FOLDER]      build/win64 where none is named; needs a display and a Wine prefix, as
#                                                    ./test provides them
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
source "$root/scripts/wine.sh"

folder=${1:-$build/win64}
cd "$root"
rm -rf build/design
mkdir -p build/design
if [[ -z ${WINEPREFIX-} ]]; then
    use_wine design
    start_display
else
    wine=${wine:-wine}
fi
status=0
timeout -k 5 "${KIV_VISIT_LIMIT:-600}" "$wine" "$folder/ScreenHost.exe" --server "$folder/KivDateTime.ocx" \
    --server "$folder/VexaSimulator.dll" --once --script screens/design.visit 8>&- >build/design/transcript.txt ||
    status=$?
tr -d '\r' <build/design/transcript.txt | grep -a 'FAILED' || true
# A program that crashes may well end with status 0 under Wine: every step has to be there.
steps=$(grep -ac '^ *[0-9.]*  ok ' build/design/transcript.txt || true)
wanted=$(grep -cv '^ *\(;.*\)\?$' screens/design.visit)
if ((status != 0 || steps != wanted)); then
    tail -n 3 build/design/transcript.txt
    complain "The design visit ended with status $status after $steps of $wanted steps; see build/design/transcript.txt."
    exit 1
fi
say "a screen was designed, saved, opened and run in $steps steps"
