#!/bin/bash
# Fails when a file includes what its layer may not know (docs/architecture.md has the picture), or when portable code
# includes anything but the standard library. Prints file, line and include of each offence.
#
# usage: scripts/check-layers.sh [FOLDER]      another tree than the project's own, for trying the check itself
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
cd "${1:-$root}"

# layer; folders whose headers it may include, besides its own; generated headers
rules='
src/platform    : -                                                                     : -
src/common      : platform                                                              : -
src/setcontrol  : common platform                                                       : -
src/showcontrol : common platform                                                       : -
src/pages       : common platform                                                       : -
src/win32       : platform comkit framework                                             : -
src/server      : platform common setcontrol showcontrol pages win32 comkit framework   : KivDateTime.h Vexa.h
comkit          : -                                                                     : -
framework       : -                                                                     : -
headless        : platform common setcontrol showcontrol pages simulator                : -
simulator       : framework comkit                                                      : Vexa.h VexaSimulator.h
screenhost      : framework comkit                                                      : KivDateTime.h Vexa.h VexaSimulator.h
'
portable='platform common setcontrol showcontrol pages headless'

offences=$(
    while IFS=: read -r folder allowed generated; do
        read -r folder <<<"$folder"
        [[ -n $folder && -d $folder ]] || continue
        find "$folder" \( -name '*.h' -o -name '*.cpp' \) -print0 | sort -z |
            xargs -0 -r awk -v layer="${folder##*/}" -v allowed="$allowed" -v generated="$generated" \
                -v portable="$portable" '
                function has(list, word,    words, n, i) {
                    n = split(list, words, " ")
                    for (i = 1; i <= n; i++) if (words[i] == word) return 1
                    return 0
                }
                function offend(why) { printf "%s:%d: %s: %s\n", FILENAME, FNR, $0, why }
                /^[ \t]*#[ \t]*include[ \t]*</ {
                    name = $0; sub(/^[^<]*</, "", name); sub(/>.*$/, "", name)
                    if (has(portable, layer) && name ~ /[.\/]/) offend("portable code knows the standard library only")
                }
                /^[ \t]*#[ \t]*include[ \t]*"/ {
                    name = $0; sub(/^[^"]*"/, "", name); sub(/".*$/, "", name)
                    folder = name; sub(/\/.*$/, "", folder)
                    if (name ~ /^\./) offend("name the folder instead of walking to it")
                    else if (name !~ /\//) { if (!has(generated, name) && !local(name)) offend("not known to " layer) }
                    else if (folder != layer && !has(allowed, folder)) offend(layer " may not know " folder)
                    else if (layer == "win32" && folder == "framework" && name != "framework/FrameworkNames.h")
                        offend("win32 knows the names of the framework only")
                }
                # A header of the same folder may be named without it.
                function local(name,    path, line, ok) {
                    path = FILENAME; sub(/[^\/]*$/, "", path)
                    ok = (getline line < (path name)) >= 0
                    close(path name)
                    return ok
                }'
    done <<<"$rules"
)
if [[ -n $offences ]]; then
    say "$offences"
    exit 1
fi
say "every include stays within its layer"
