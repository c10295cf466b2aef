# The project's own C++ files. To be sourced after lib.sh.

source_folders=(benchmarks comkit framework fuzz headless screenhost simulator src tests)

# list_sources PATTERN...: files whose names match, relative to the project, separated by NUL.
list_sources() {
    local pattern names=()
    for pattern in "$@"; do
        names+=(-o -name "$pattern")
    done
    (cd "$root" && find "${source_folders[@]}" -type f \( "${names[@]:1}" \) -print0 2>/dev/null | sort -z) || true
}
