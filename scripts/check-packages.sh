#!/bin/bash
# Tries the packages as users do, under Wine: installs and removes the installers, uses the controls meanwhile from a
# program that knows their names only (tests/packages), and uses the zips' files without registration. Fails where
# something does not work, works where it should not, or stays behind in the registry or on the disk.
#
# usage: scripts/check-packages.sh      makes the packages where they are missing or old; works in build/packages-tried
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
source "$root/scripts/build.sh"
source "$root/scripts/wine.sh"

dist=$build/dist
tried=$build/packages-tried
snapshots=$tried/snapshots
platforms=(x64)
faults=0

fault() {
    complain "$*"
    faults=$((faults + 1))
}

preset_of() { [[ $1 == x64 ]] && echo win64 || echo win32; }
package_file() { ls "$dist"/*-"$1"."$2"; }
home_of() { [[ $1 == x64 ]] && echo 'C:\Program Files\KivDateTime' || echo 'C:\Program Files (x86)\KivDateTime'; }

# probe PROGRAM: what it says, in one line; its status.
probe() {
    local said status=0
    said=$(in_wine "$(windows_path "$1")" 2>/dev/null | tr -d '\r') || status=$?
    tr '\n' ';' <<<"$said"
    return "$status"
}

# expect works|fails SITUATION PROGRAM [FOLDER]: with the folder that the server has to come from.
expect() {
    local said status=0
    said=$(probe "$3") || status=$?
    if [[ $1 == fails && $status == 1 && $said == *'server: none;'* ]]; then
        return 0
    fi
    if [[ $1 == works && $status == 0 && $said == *"server: $4\\KivDateTime.ocx;"* ]]; then
        return 0
    fi
    fault "$2: expected that the control $1, but: $said (status $status)"
}

registered_probe() { echo "$build/$(preset_of "$1")/control_probe.exe"; }

# A program of the prefix's own, the 64-bit one: a 32-bit one would see half of the registry.
tool() { in_wine "$(windows_path "$WINEPREFIX/drive_c/windows/system32/$1.exe")" "${@:2}"; }

installers_own='^\[HKEY_LOCAL_MACHINE\\Software\\(Classes|Microsoft\\Windows\\CurrentVersion)\\Installer'
installers_own+='(\\UserData(\\S-1-5-18)?)?(\\(Features|Products|UpgradeCodes|Components))?\]$'

# snapshot NAME: registry and files as text. Left out is what Wine's own installer makes when it is first used, as long
# as it is empty, and where Wine keeps temporary files and settings.
snapshot() {
    local hive file
    for hive in HKLM HKCU; do
        tool reg export "$hive\\Software" "$(windows_path "$snapshots/$hive.reg")" /y >/dev/null
    done
    for file in "$snapshots"/HK??.reg; do
        iconv -f UTF-16 -t UTF-8 "$file" | tr -d '\r'
    done | awk '/^\[/ { skipped = /^\[HKEY_CURRENT_USER\\Software\\Wine\\/ } !skipped && NF' | grep -viE "$installers_own" \
        >"$snapshots/$1.registry"
    (cd "$WINEPREFIX/drive_c" && find . -mindepth 1 ! -path './windows/Installer' ! -path '*/[Tt]emp/*' | sort) \
        >"$snapshots/$1.files"
}

# expect_same NAME NAME SITUATION
expect_same() {
    local kind
    for kind in registry files; do
        if ! diff "$snapshots/$1.$kind" "$snapshots/$2.$kind" >"$snapshots/difference"; then
            fault "$3; $kind:"
            head -n 20 "$snapshots/difference" >&2
        fi
    done
}

# installer /i|/x PLATFORM
installer() {
    timeout -k 5 120 "$wine" msiexec "$1" "$(windows_path "$(package_file "$2" msi)")" /qn 8>&- ||
        fault "msiexec $1 of the $2 installer ended with status $?"
}

# What the classes are registered as, without what differs by its nature.
classes_of() {
    awk '/^\[/ { shown = /\\(Software|SOFTWARE)\\Classes\\/ && !/\\Classes\\Installer/ } shown' \
        "$snapshots/$1.registry" | sed 's/KivDateTime\\\\"$/KivDateTime"/'
}

# register PLATFORM [/u]: a program of that bitness registers the server in the installer's folder, or takes it back.
register() {
    local folder=system32
    [[ $1 == x86 ]] && folder=syswow64
    in_wine "$(windows_path "$WINEPREFIX/drive_c/windows/$folder/regsvr32.exe")" /s "${@:2}" \
        "$(home_of "$1")\\KivDateTime.ocx" || fault "regsvr32 ${*:2} of $1 ended with status $?"
}

# Installed servers have the entries that they would have made themselves.
compare_with_registering() {
    local platform home
    for platform in "${platforms[@]}"; do
        home=$(home_of "$platform")
        home=$WINEPREFIX/drive_c/${home#C:\\}
        mkdir "${home//\\//}"
        cp "$build/$(preset_of "$platform")/KivDateTime.ocx" "${home//\\//}/"
        register "$platform"
    done
    snapshot registered
    for platform in "${platforms[@]}"; do
        register "$platform" /u
        home=$(home_of "$platform")
        home=$WINEPREFIX/drive_c/${home#C:\\}
        rm -r "${home//\\//}"
    done
    if ! diff <(classes_of registered) <(classes_of installed) >"$snapshots/difference"; then
        fault "the installers register other things than the servers themselves:"
        head -n 20 "$snapshots/difference" >&2
    fi
    (($(classes_of installed | grep -c KivDateTime.ocx) >= 13 * ${#platforms[@]})) || fault "too little was compared"
}

# Each comes and goes without taking from the other.
try_installers() {
    local platform left=("${platforms[@]}")
    for platform in "${platforms[@]}"; do
        expect fails "$platform not installed" "$(registered_probe "$platform")"
        installer /i "$platform"
    done
    for platform in "${platforms[@]}"; do
        expect works "all installed" "$(registered_probe "$platform")" "$(home_of "$platform")"
    done
    snapshot installed
    while ((${#left[@]} > 0)); do
        installer /x "${left[0]}"
        expect fails "${left[0]} removed" "$(registered_probe "${left[0]}")"
        left=("${left[@]:1}")
        for platform in "${left[@]}"; do
            expect works "$platform left alone" "$(registered_probe "$platform")" "$(home_of "$platform")"
        done
    done
    snapshot removed
    expect_same before removed "something stays behind"
}

try_zip() {
    local platform=$1 folder=$tried/$1 program
    mkdir -p "$folder"
    (cd "$folder" && cmake -E tar xf "$(package_file "$platform" zip)")
    program=$folder/control_probe.exe
    cp "$(registered_probe "$platform")" "$program"
    expect fails "no manifest beside a $platform program" "$program"
    cp "$folder/YourProgram.exe.manifest" "$program.manifest"
    expect works "a manifest beside a $platform program" "$program" "$(windows_path "$folder")"
}

prepare() {
    "$root/package" || return 1
    (cd "$dist" && sha256sum --quiet -c SHA256SUMS) || return 1
    build_preset win64 control_probe && build_preset win32 control_probe || return 1
    # What an interrupted check has left installed would be there before the next one.
    if [[ -f $tried/.at-work ]]; then
        rm -rf "$build/wine-packages"
    fi
    rm -rf "$tried"
    mkdir -p "$snapshots"
    use_wine packages 32 && start_display || return 1
    touch "$tried/.at-work"
    if runs_32bit_programs; then
        platforms+=(x86)
    else
        say "32-bit programs cannot run here: the 32-bit packages are made and not tried."
    fi
}

prepare || exit 1
snapshot before
for platform in "${platforms[@]}"; do
    try_zip "$platform"
done
# What the set control remembers for the machine is its own doing here: there is nobody to take it away.
for bits in 64 32; do
    tool reg delete 'HKLM\Software\The Corvale Company' /f "/reg:$bits" >/dev/null 2>&1 || true
done
try_installers
compare_with_registering
if ((faults > 0)); then
    complain "$faults faults; the snapshots are in ${snapshots#"$root"/}"
    exit 1
fi
rm -f "$tried/.at-work"
say "installed, used and removed: ${platforms[*]}; used without registration: ${platforms[*]}"
