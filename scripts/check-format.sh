#!/bin/bash
# Fails when a C++ file is not laid out as clang-format and .clang-format have it.
#
# usage: scripts/check-format.sh           says which files, and changes nothing
#        scripts/check-format.sh --fix     lays them out
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
source "$root/scripts/sources.sh"
cd "$root"

mapfile -d '' files < <(list_sources '*.h' '*.cpp')
if [[ ${1-} == --fix ]]; then
    clang-format -i "${files[@]}"
    exit
fi
clang-format --dry-run -Werror "${files[@]}"
say "${#files[@]} files are laid out as agreed"
