# Running test programs and checks, watching over them, and counting. To be sourced after lib.sh.

passed=0
failed=0
skipped=0
unchanged=0
failures=()
# yes: suites that passed are run again even where nothing has changed.
again=no

count_pass() { passed=$((passed + ${1:-1})); }
count_skip() { skipped=$((skipped + $1)); }
count_failure() {
    failed=$((failed + ${2:-1}))
    failures+=("$1")
}

# A test program that prints nothing for so many seconds hangs: its tests are short, and long ones say how far they are.
patience=${KIV_TEST_PATIENCE:-300}

# Reads the output of a GoogleTest program; prints five numbers (announced, passed, failed, skipped, and 1 when a test
# was begun and not finished), then the name of that unfinished test.
read_results() {
    tr -d '\r' <"$1" | awk '
        /^\[==========\] Running [0-9]+ tests?/ { announced = $3 }
        /^\[ RUN      \] / { current = substr($0, 14) }
        /^\[       OK \] / { ok++; current = "" }
        /^\[  FAILED  \] .*\([0-9]+ ms\)$/ { bad++; current = "" }
        /^\[  SKIPPED \] .*\([0-9]+ ms\)$/ { skip++; current = "" }
        END { print announced + 0, ok + 0, bad + 0, skip + 0, (current != ""), current }'
}

# What the result of a suite or check depends on besides its own program: files and folders.
reads=()

# key_of PROGRAM COMMAND...: changes when the result may: with the program and what it reads, the command, these scripts,
# the sanitizers' options, the share of the tests, the system's packages, and every day, because there are clocks and
# calendars in it.
key_of() {
    local program=$1
    shift
    {
        date +%F
        printf '%s\n' "$@" "${ASAN_OPTIONS-}" "${UBSAN_OPTIONS-}" "${KIV_SHARE-}"
        find "$program" "${reads[@]}" "$root"/scripts/{lib,suites,wine}.sh -type f -print0 | sort -z | xargs -0 sha256sum
        stat -c %Y /var/lib/dpkg/status || true
    } 2>&1 | sha256sum
}

# not_again MARK KEY: whether what left the mark passed with the same key, and need not run again. What passed and what was
# skipped then is in earlier_passed and earlier_skipped.
not_again() {
    local key
    [[ $again == no && -f $1 ]] && { read -r earlier_passed earlier_skipped && read -r key; } <"$1" && [[ $key == "$2" ]]
}
mark_of() { echo "$build/passed/${1//[^A-Za-z0-9._-]/-}"; }
# leave_mark MARK KEY PASSED SKIPPED
leave_mark() {
    mkdir -p "${1%/*}"
    printf '%s\n' "$3 $4" "$2" >"$1"
}

# run_suite LABEL COMMAND... PROGRAM: runs a GoogleTest program. Every test that it announced is counted; one that hangs
# or crashes is named and, with all that it kept from running, counted as failed. A suite that passed is not run again
# while its key is the same; its tests then count as unchanged, not as passed.
run_suite() {
    local label=$1 file status=0 announced ok bad skip unfinished current lost how key mark
    shift
    file=$logs/test-${label//[^a-z0-9]/-}.log
    mark=$(mark_of "$label")
    key=$(key_of "${*: -1}" "$@")
    if not_again "$mark" "$key"; then
        step "Not run again: $label"
        unchanged=$((unchanged + earlier_passed))
        count_skip "$earlier_skipped"
        say "    unchanged since its $earlier_passed tests passed$( ((earlier_skipped > 0)) && echo ", $earlier_skipped skipped")"
        return 0
    fi
    rm -f "$mark"
    step "Testing: $label"
    attended "$file" "$patience" "$@" || status=$?
    read -r announced ok bad skip unfinished current < <(read_results "$file")
    lost=$((announced - ok - bad - skip - unfinished))
    count_pass "$ok"
    count_skip "$skip"
    if ((bad > 0)); then
        tr -d '\r' <"$file" | awk '
            /^\[ RUN      \] / { n = 0 }
            { text[n++] = $0 }
            /^\[  FAILED  \] .*\([0-9]+ ms\)$/ { for (i = 0; i < n; i++) print "    " text[i]; n = 0 }'
        while read -r current_failure; do
            count_failure "$label: $current_failure"
        done < <(tr -d '\r' <"$file" | sed -nE 's/^\[  FAILED  \] (.*) \([0-9]+ ms\)$/\1/p')
    fi
    if ((unfinished + lost > 0)); then
        how="ended with status $status"
        ((status == 124)) && how="printed nothing for $patience seconds and was ended"
        tr -d '\r' <"$file" | tail -n 30 | sed 's/^/    /'
        count_failure "$label $how${current:+ in $current}; $lost more of its tests did not run" $((unfinished + lost))
    elif ((announced == 0 || (status != 0 && bad == 0))); then
        tr -d '\r' <"$file" | tail -n 30 | sed 's/^/    /'
        count_failure "$label ended with status $status after $ok of $announced tests"
    fi
    if ((ok > 0 && status == 0 && bad + unfinished + lost == 0)); then
        leave_mark "$mark" "$key" "$ok" "$skip"
    fi
    say "    $ok of $announced passed$( ((skip > 0)) && echo ", $skip skipped")   [$(elapsed)]"
}

# run_check LABEL COMMAND...: something that is right or wrong as a whole; it prints what is wrong.
run_check() {
    local label=$1 file status=0
    shift
    file=$logs/check-${label//[^a-z0-9]/-}.log
    step "Checking: $label"
    attended "$file" "${KIV_CHECK_PATIENCE:-600}" "$@" || status=$?
    if ((status == 0)); then
        count_pass
        tail -n 1 "$file" | sed 's/^/    /'
    else
        tail -n 60 "$file" | sed 's/^/    /'
        count_failure "$label"
    fi
}

# run_kept_check LABEL PROGRAM COMMAND...: the same, not again while the program, what it reads and the command are those
# with which it was right.
run_kept_check() {
    local label=$1 mark key failed_before=$failed
    mark=$(mark_of "$label")
    key=$(key_of "$2" "${@:3}")
    if not_again "$mark" "$key"; then
        step "Not checked again: $label"
        unchanged=$((unchanged + 1))
        return 0
    fi
    rm -f "$mark"
    run_check "$label" "${@:3}"
    if ((failed == failed_before)); then
        leave_mark "$mark" "$key" 1 0
    fi
}

# run_lanes FUNCTION...: side by side, the name of its lane before every line of each. What they count is counted as if
# they had run one after the other.
run_lanes() {
    local lane groups=() i=0
    for lane in "$@"; do
        rm -f "$build/.lane-$lane"
        start_group serve_lane "$lane"
        groups+=("$group")
    done
    for lane in "$@"; do
        wait_group "${groups[i++]}" || true
        take_counts "$lane" || count_failure "the lane $lane ended before its end"
    done
}
serve_lane() {
    local writer
    watch_exit
    passed=0 failed=0 skipped=0 unchanged=0 failures=()
    exec 7>&1 > >(exec sed -u "s/^/${1//_/ }: /" 7>&-)
    writer=$!
    "$1" 7>&-
    printf '%s\n' "$passed $failed $skipped $unchanged" "${failures[@]}" >"$build/.lane-$1"
    exec >&7 7>&-
    wait "$writer"
}
take_counts() {
    local file=$build/.lane-$1 more=() failure
    [[ -f $file ]] || return 1
    {
        read -ra more
        while read -r failure; do
            [[ -z $failure ]] || failures+=("$failure")
        done
    } <"$file"
    passed=$((passed + more[0])) failed=$((failed + more[1]))
    skipped=$((skipped + more[2])) unchanged=$((unchanged + more[3]))
    rm -f "$file"
}

# How many tests stand in the sources: for those that cannot even be built here.
count_in_sources() {
    find "$@" -name '*.cpp' -exec grep -hE '^(TYPED_TEST|TEST)(_F|_P)?\(' {} + 2>/dev/null | wc -l
}

# The last line is the total, alone. Fails on any failure, and when nothing ran.
report() {
    local failure total
    if ((${#failures[@]} > 0)); then
        say "What failed:"
        for failure in "${failures[@]}"; do
            say "    $failure"
        done
    fi
    say "Took $(elapsed)."
    total="$passed passed, $failed failed"
    ((skipped > 0)) && total+=", $skipped skipped"
    ((unchanged > 0)) && total+=", $unchanged not run again because unchanged since they passed"
    say "$total"
    ((failed == 0 && passed > 0))
}
