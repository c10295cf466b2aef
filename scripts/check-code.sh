#!/bin/bash
# Fails when clang-tidy finds anything (.clang-tidy says what it looks for, and the one in a folder what is left out there).
# A file is looked at again only when it, a header that it includes, its compiler options or the configuration have
# changed since it was last found clean. Works on what the named build folders compile.
#
# usage: scripts/check-code.sh [PRESET...]      native, win64; both where none is named
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

clean=$build/tidy
mkdir -p "$clean"
work=$(mktemp -d "$build/.tidy.XXXXXX")
at_exit rm -rf "$work"
version=$(clang-tidy --version | sha256sum - "$root"/{,benchmarks/,tests/}.clang-tidy "$root/scripts/check-code.sh" | sha256sum)

# The headers of the Windows tool chain, by hand: clang does not find this flavour of it. The compiler's own intrinsics
# stay out, clang has its own.
windows_arguments() {
    local folder
    echo --extra-arg-before=--target=x86_64-w64-mingw32
    echo --extra-arg-before=-nostdinc++
    x86_64-w64-mingw32-g++-posix -E -x c++ -v - </dev/null 2>&1 |
        sed -n '/^#include </,/^End of search/s/^ //p' | while read -r folder; do
            folder=$(realpath -m "$folder")
            case $folder in
                */include-fixed | *-posix/include) ;;
                *) echo "--extra-arg=-isystem$folder" ;;
            esac
        done
}

# list_units PRESET: file, object and command of each translation unit of the project, tab-separated.
list_units() {
    awk -v root="$root/" -v build="$build/" '
        /^ *"command": / { command = $0; object = $0; sub(/^.* -o /, "", object); sub(/ .*$/, "", object) }
        /^ *"file": / {
            file = $0; sub(/^ *"file": "/, "", file); sub(/",?$/, "", file)
            if (index(file, root) == 1 && index(file, build) != 1 && file ~ /\.cpp$/ && !seen[file]++)
                printf "%s\t%s\t%s\n", file, object, command
        }' "$build/$1/compile_commands.json"
}

# key_units PRESET: list_units with the command replaced by a key that changes when anything that matters does; the key
# is - for what has not been compiled yet.
key_units() {
    local file object command contents
    (cd "$build/$1" && ninja -t deps) | awk -v root="$root/" '
        /^[^ ].*: #deps/ { object = $1; sub(/:$/, "", object) }
        /^    / {
            # Compiler caches may have them relative to the build folder.
            sub(/^\.\.\/\.\.\//, root, $1)
            if (index($1, root) == 1) print object "\t" $1
        }' >"$work/deps"
    cut -f 2 "$work/deps" | sort -u | tr '\n' '\0' | xargs -0 -r sha256sum 2>/dev/null >"$work/hashes" || true
    awk -F '\t' '
        FILENAME == ARGV[1] { hash[substr($0, 67)] = substr($0, 1, 64); next }
        { contents[$1] = contents[$1] hash[$2] }
        END { for (object in contents) print object "\t" contents[object] }' "$work/hashes" "$work/deps" |
        sort >"$work/contents"
    while IFS=$'\t' read -r file object command; do
        contents=$(awk -F '\t' -v object="$object" '$1 == object { print $2 }' "$work/contents")
        if [[ -n $contents ]]; then
            contents=$(sha256sum <<<"$version $command $contents")
        fi
        printf '%s\t%s\n' "$file" "${contents%% *}"
    done
}

check_preset() {
    local preset=$1 commands=$work/$1 arguments=() file key
    if [[ ! -f $build/$preset/compile_commands.json ]]; then
        complain "build/$preset has not been built"
        return 1
    fi
    if [[ $preset == win* ]]; then
        mapfile -t arguments < <(windows_arguments)
    fi
    # A precompiled header of another compiler is of no use to clang; without it, each file has to include what it uses. Nor
    # does it know of object files with two kinds of code.
    mkdir "$commands"
    sed -E 's/-Winvalid-pch -include [^ ]*cmake_pch\.hxx//; s/ -ffat-lto-objects//' "$build/$preset/compile_commands.json" \
        >"$commands/compile_commands.json"
    list_units "$preset" | grep -vFf "$work/taken" >"$work/units" || true
    cut -f 1 "$work/units" >>"$work/taken"
    key_units "$preset" <"$work/units" >"$work/keys"
    all=$((all + $(wc -l <"$work/keys")))
    while IFS=$'\t' read -r file key; do
        if [[ -z $key || ! -e $clean/$key ]]; then
            printf '%s\0%s\0' "$file" "${key:--}"
        fi
    done <"$work/keys" >"$work/todo"
    anew=$((anew + $(tr -cd '\0' <"$work/todo" | wc -c) / 2))
    xargs -0 -r -n 2 -P "$jobs" "$root/scripts/check-code.sh" --one "$commands" "$clean" "${arguments[@]}" \
        <"$work/todo"
}

# check_one BUILD-FOLDER CLEAN-FOLDER ARGUMENT... FILE KEY
check_one() {
    local folder=$1 marks=$2 found status=0 arguments file key
    shift 2
    arguments=("${@:1:$#-2}")
    file=${*: -2:1}
    key=${*: -1}
    found=$(clang-tidy -p "$folder" --quiet "${arguments[@]}" "$file" 2>&1) || status=$?
    if ((status == 0)); then
        [[ $key == - ]] || : >"$marks/$key"
        say "clean: ${file#"$root"/}"
    else
        grep -vE '^[0-9]+ warnings? ' <<<"$found"
        return 1
    fi
}

if [[ ${1-} == --one ]]; then
    shift
    check_one "$@"
    exit
fi
all=0
anew=0
status=0
echo "no file is taken yet" >"$work/taken"
[[ $# -gt 0 ]] || set -- native win64
for preset in "$@"; do
    check_preset "$preset" || status=1
done
((status == 0)) && say "nothing found in $all files, $anew of them looked at anew"
exit "$status"
