# What every script of this project starts with: where the project lies, how to talk, how to run a long command with
# its output in a log, how to keep two commands from working in the same folder at once. To be sourced.
#
# Whatever is started in the background ends with the script that started it.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
build=$root/build
logs=$build/log
jobs=$(nproc)
mkdir -p "$logs"

say() { printf '%s\n' "$*"; }
step() { printf '==> %s\n' "$*"; }
complain() { printf '%s\n' "$*" >&2; }
elapsed() { printf '%d:%02d min' $((SECONDS / 60)) $((SECONDS % 60)); }

# Ends everything that was started and still runs. A subshell that starts something calls watch_exit for itself.
declare -A running_groups=()
running_subshell=
exit_actions=()
at_exit() { exit_actions+=("$*"); }
run_exit_actions() {
    local status=$? action group
    trap - EXIT
    trap '' INT TERM HUP
    if [[ -n $running_subshell ]]; then
        kill -TERM "$running_subshell" 2>/dev/null || true
        wait "$running_subshell" || true
    fi
    for group in "${!running_groups[@]}"; do
        end_group "$group"
    done
    for action in "${exit_actions[@]}"; do
        $action || true
    done
    exit "$status"
}
watch_exit() {
    running_groups=()
    running_subshell=
    exit_actions=()
    trap run_exit_actions EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM HUP
}
watch_exit

# start_group COMMAND...: runs it in the background in a process group of its own and sets group to that group's number.
start_group() {
    set -m
    "$@" 8>&- &
    group=$!
    set +m
    running_groups[$group]=1
}

# wait_group GROUP: its status.
wait_group() {
    local status=0
    wait "$1" || status=$?
    unset "running_groups[$1]"
    return "$status"
}

# A group that ignores the polite signal is killed after two seconds.
end_group() {
    local i
    for ((i = 0; i < 20; i++)); do
        kill -TERM -- "-$1" 2>/dev/null || return 0
        sleep 0.1
    done
    kill -KILL -- "-$1" 2>/dev/null || true
}

# attended FILE PATIENCE COMMAND...: runs the command with its output in the file and returns its status. Every 20
# seconds the file's last line tells how far it is. A command that prints nothing for PATIENCE seconds hangs and is
# ended, with status 124; a PATIENCE of 0 waits for ever.
attended() {
    local file=$1 patience=$2 size=0 now ticks=0 quiet=0 status=0 group
    shift 2
    start_group "$@" >"$file" 2>&1 </dev/null
    while kill -0 "$group" 2>/dev/null; do
        sleep 0.2
        ticks=$((ticks + 1))
        if ((ticks % 100 == 0)); then
            say "    ... $(tail -n 1 "$file" | tr -d '\r' | cut -c 1-150)"
        fi
        now=$(stat -c %s "$file")
        quiet=$((now == size ? quiet + 1 : 0))
        size=$now
        if ((patience > 0 && quiet > patience * 5)); then
            end_group "$group"
            wait_group "$group" || true
            return 124
        fi
    done
    wait_group "$group" || status=$?
    return "$status"
}

# logged NAME COMMAND...: an attended command whose output only matters when it fails: then its end is shown.
logged() {
    local file=$logs/$1.log status=0
    shift
    attended "$file" 0 "$@" || status=$?
    if ((status != 0)); then
        tail -n 60 "$file" >&2
        complain "failed with status $status; the whole log is ${file#"$root"/}"
    fi
    return "$status"
}


# locked NAME COMMAND...: one at a time among all commands of this project. The command does not inherit the lock, so
# that nothing that it leaves running can hold it. It runs in the background, because a shell hears signals only while
# it waits for something of that kind.
locked() {
    local status=0
    hold_and_run "$@" 9>"$build/.lock-$1" &
    running_subshell=$!
    wait "$running_subshell" || status=$?
    running_subshell=
    return "$status"
}

hold_and_run() {
    watch_exit
    if ! flock -n 9; then
        say "    waiting: another command of this project is busy with: $1"
        until flock -n 9; do sleep 0.5; done
    fi
    "${@:2}" 9>&-
}

# hold_lock NAME: the same, until this script ends.
hold_lock() {
    exec 8>"$build/.lock-$1"
    if ! flock -n 8; then
        say "Waiting: the same command is already at work in this folder."
        until flock -n 8; do sleep 0.5; done
    fi
}
