#!/bin/bash
# Checks every screen of the project with the 64-bit screen host (--check), and that the host tells a bad screen from a good
# one. Fails on any finding.
#
# usage: scripts/check-screens.sh [BUILD-FOLDER]      build/win64 where none is named; needs a Wine prefix, as ./test
#                                                     provides it, or makes one
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
source "$root/scripts/wine.sh"

folder=${1:-$build/win64}
cd "$root"
if [[ -z ${WINEPREFIX-} ]]; then
    use_wine design
else
    wine=${wine:-wine}
fi

# check FILE...: what the host reports, without carriage returns; its status in status.
check() {
    status=0
    report=$(timeout -k 5 120 "$wine" "$folder/ScreenHost.exe" --check "$@" 8>&-) || status=$?
    report=${report//$'\r'/}
}

# A slot with a path alone stands on its third line.
bad=$build/bad.screen
at_exit rm -f "$bad"
printf '%s\n' '[A]' 'ProgID = "KivDateTime.KivSetDateTime"' 'DataElemPath5 = "Clock.Month"' >"$bad"
check "${bad#"$root"/}"
if [[ $status != 1 || $report != *"bad.screen:3: "*"[no-variable]"* ]]; then
    complain "A bad screen was not told from a good one (status $status): $report"
    exit 1
fi
check build/no-such.screen "${bad#"$root"/}"
if [[ $status != 2 || $report != *"bad.screen:3: "* ]]; then
    complain "A missing screen was not told from a bad one (status $status): $report"
    exit 1
fi

screens=(screens/*.screen)
check "${screens[@]}"
clean=$(grep -c ': no findings$' <<<"$report" || true)
if ((status != 0 || clean != ${#screens[@]})); then
    say "$report"
    complain "The check ended with status $status; $clean of ${#screens[@]} screens are without findings."
    exit 1
fi
say "no findings in $clean screens"
