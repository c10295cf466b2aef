#!/bin/bash
# Plays a visit of the folder screens in the 64-bit screen host. Fails unless every step succeeds. Pictures, and whatever the
# visit saves, are left in build/NAME, and so is the transcript.
#
# usage: scripts/play-visit.sh NAME [SCREENFILE]      KIV_FOLDER names another build folder than build/win64; needs a display
#                                                     and a Wine prefix, as ./test provides them, or makes its own
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
source "$root/scripts/wine.sh"

name=${1:?which visit?}
shift
folder=${KIV_FOLDER:-$build/win64}
cd "$root"
rm -rf "build/$name"
mkdir -p "build/$name"
if [[ -z ${WINEPREFIX-} ]]; then
    use_wine design
    start_display
else
    wine=${wine:-wine}
fi
status=0
timeout -k 5 "${KIV_VISIT_LIMIT:-600}" "$wine" "$folder/ScreenHost.exe" --server "$folder/KivDateTime.ocx" \
    --server "$folder/VexaSimulator.dll" --once --script "screens/$name.visit" "$@" 8>&- >"build/$name/transcript.txt" ||
    status=$?
tr -d '\r' <"build/$name/transcript.txt" | grep -a 'FAILED' || true
# A program that crashes may well end with status 0 under Wine: every step has to be there.
steps=$(grep -ac '^ *[0-9.]*  ok ' "build/$name/transcript.txt" || true)
wanted=$(grep -cv '^ *\(;.*\)\?$' "screens/$name.visit")
if ((status != 0 || steps != wanted)); then
    tail -n 3 "build/$name/transcript.txt"
    complain "The visit $name ended with status $status after $steps of $wanted steps; see build/$name/transcript.txt."
    exit 1
fi
say "the visit $name was played in $steps steps"
