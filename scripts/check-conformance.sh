#!/bin/bash
# Fails when docs/conformance.md names a test that is not there, or has a row that neither names a test nor says what is
# not verified. Prints each offence.
#
# Every name in backticks in the second column of its tables is that of a group of tests, or of one test in a group.
#
# usage: scripts/check-conformance.sh [FILE]      another file than the project's own, for trying the check itself
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
table=$(realpath "${1:-$root/docs/conformance.md}")
cd "$root"

# The tests as GROUP.NAME, one a line.
tests=$(
    find tests -name '*.cpp' -print0 | xargs -0 cat | tr '\n' ' ' |
        grep -oE '\bTEST(_F|_P)?\( *[A-Za-z0-9_]+, *[A-Za-z0-9_]+\)' |
        sed -E 's/^TEST(_F|_P)?\( *//; s/, */./; s/\)$//'
)

offences=$(
    awk -v tests="$tests" '
        BEGIN {
            count = split(tests, names, "\n")
            for (i = 1; i <= count; i++) {
                known[names[i]] = 1
                group = names[i]; sub(/\..*/, "", group); known[group] = 1
            }
        }
        function offend(why) { printf "%s:%d: %s\n", FILENAME, FNR, why }
        !/^\|/ || /^\|-/ || /^\| row / { next }
        {
            shown = $0; sub(/^\|[^|]*\|/, "", shown)
            found = 0
            rest = shown
            while (match(rest, /`[^`]*`/)) {
                name = substr(rest, RSTART + 1, RLENGTH - 2)
                rest = substr(rest, RSTART + RLENGTH)
                if (known[name]) found++
                else offend("there is no test " name)
            }
            if (!found && shown !~ /not /) offend("the row names no test and says nothing of what is not verified")
            rows++
        }
        END { if (!rows) offend("no rows") }
    ' "$table"
)
[[ -z $offences ]] && exit 0
printf '%s\n' "$offences"
exit 1
