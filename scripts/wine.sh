# Wine programs in a prefix and on a display of this project's own. To be sourced after lib.sh.
#
#   use_wine NAME [32]   the prefix build/wine-NAME, made when it is missing; with 32, for 32-bit programs too, where
#                        build/wine32 is there
#   start_display        a virtual display, ended with the script
#   in_wine PROGRAM ...  runs a Windows program there
#   on_processor NUMBER  this script and all that it starts from now on stay on one processor
#
# Nothing of the user's own Wine is touched, and two commands with prefixes of different names do not meet.

# A run of the suites needs no browser, no .NET and no entries in the user's menus.
export WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES='mscoree=;mshtml=;winemenubuilder.exe='

have_wine32() { [[ -f $build/wine32/.complete ]]; }

use_wine() {
    if ! wine=$(command -v wine) || ! wineserver=$(command -v wineserver); then
        complain "Wine is not installed; ./test installs it."
        return 1
    fi
    if [[ ${2-} == 32 ]] && have_wine32; then
        wine=$build/wine32/bin/wine
        wineserver=$build/wine32/bin/wineserver
    fi
    export WINEPREFIX=$build/wine-$1
    at_exit end_wine
    locked "wine-$1" make_prefix "$1"
}

# It was seen, on a busy machine, that a program did not find the system's own libraries (status 53, the end of c0000135): it
# is started once more. No program of this project ends with that status.
in_wine() {
    local status=0
    "$wine" "$@" 8>&- || status=$?
    if ((status == 53)); then
        sleep 1
        status=0
        "$wine" "$@" 8>&- || status=$?
    fi
    return "$status"
}
windows_path() { printf 'Z:%s' "${1//\//\\}"; }

# Ends every process of this prefix, and of no other.
end_wine() { "$wineserver" -k 2>/dev/null || true; }

# A program and Wine's server take turns, many times in a millisecond. Where both are on one processor that takes a quarter
# of the time that it takes to wake another one. The number counts those that this script may use, from 0 and over again.
on_processor() {
    local ranges=() range allowed=() each
    IFS=, read -ra ranges < <(sed -n 's/^Cpus_allowed_list:[[:space:]]*//p' /proc/self/status)
    for range in "${ranges[@]}"; do
        for ((each = ${range%-*}; each <= ${range#*-}; each++)); do
            allowed+=("$each")
        done
    done
    if ((${#allowed[@]} > 0)); then
        taskset -cp "${allowed[$1 % ${#allowed[@]}]}" "$BASHPID" >/dev/null || true
    fi
}

# A crash ends the program instead of waiting in a dialog; windows are not left to a window manager, because waiting for
# one that is not there costs two seconds whenever a window closes.
make_prefix() {
    local stamp
    stamp="$("$wine" --version) $wine 3"
    if [[ -f $WINEPREFIX/.complete && $(<"$WINEPREFIX/.complete") == "$stamp" ]]; then
        return 0
    fi
    step "Making the Wine prefix build/wine-$1"
    end_wine
    rm -rf "$WINEPREFIX"
    logged "wine-$1" fill_prefix || return 1
    echo "$stamp" >"$WINEPREFIX/.complete"
}

fill_prefix() {
    # Without a display: nothing of the set-up shows a window.
    DISPLAY= in_wine wineboot -i &&
        copy_fonts &&
        set_registry 'HKCU\Software\Wine\WineDbg' ShowCrashDialog REG_DWORD 0 &&
        set_managed N &&
        "$wineserver" -w
}

# Debian's Wine does not look where Debian's package of its fonts puts them.
copy_fonts() { cp /usr/share/wine/fonts/*.{fon,ttf} "$WINEPREFIX/drive_c/windows/Fonts/"; }

set_registry() { in_wine reg add "$1" /v "$2" /t "$3" /d "$4" /f >/dev/null; }

# set_managed Y|N: whether a window manager has the windows.
set_managed() { set_registry 'HKCU\Software\Wine\X11 Driver' Managed REG_SZ "$1"; }

# Whether 32-bit programs run in the prefix: asked of one of Wine's own.
runs_32bit_programs() {
    have_wine32 && timeout -k 5 60 "$wine" 'C:\windows\syswow64\cmd.exe' /c 'exit 7' >/dev/null 2>&1
    [[ $? == 7 ]]
}

# A display without any resources, such as a virtual one, has Wine look for them in files whenever it selects a font, which
# takes several times as long as the selecting. A desktop has some.
give_resources() {
    export XENVIRONMENT=$build/.x-resources
    echo 'KivDateTime.display: virtual' >"$XENVIRONMENT"
}

# The number of the display is chosen by the server itself, so that two of them never want the same.
start_display() {
    local file i group
    give_resources
    file=$(mktemp "$build/.display.XXXXXX")
    start_group serve_display "$file"
    for ((i = 0; i < 150; i++)); do
        if [[ -s $file ]]; then
            DISPLAY=:$(<"$file")
            export DISPLAY
            rm -f "$file"
            return 0
        fi
        kill -0 "$group" 2>/dev/null || break
        sleep 0.1
    done
    rm -f "$file"
    complain "no virtual display: $(tail -n 3 "$logs/display.log")"
    return 1
}

# Ends with this script even when the script itself is killed.
serve_display() {
    exec setpriv --pdeathsig TERM \
        Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$1" >"$logs/display.log" 2>&1
}

# True when the user sits at a display that answers: a local one is looked up by its socket, a remote one is believed.
have_display() {
    local number
    case ${DISPLAY-} in
        :*)
            number=${DISPLAY#:}
            number=${number%%.*}
            [[ -S /tmp/.X11-unix/X$number ]] || grep -q "@/tmp/.X11-unix/X$number\$" /proc/net/unix 2>/dev/null
            ;;
        ?*) return 0 ;;
        *) return 1 ;;
    esac
}
