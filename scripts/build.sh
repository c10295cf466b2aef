# Configuring and building. To be sourced after lib.sh.

# build_preset PRESET [TARGET...]: everything where no target is named.
build_preset() { locked "build-$1" configure_and_build "$@"; }

configure_and_build() {
    local preset=$1 target targets=()
    shift
    for target in "$@"; do
        targets+=(--target "$target")
    done
    step "Building $preset${*:+: $*}"
    forget_moved_tree "$preset"
    logged "configure-$preset" cmake -S "$root" --preset "$preset" || return 1
    logged "build-$preset" cmake --build "$build/$preset" --parallel "$jobs" "${targets[@]}"
}

# A build folder that came along when the project was copied belongs to the place it came from.
forget_moved_tree() {
    local cache=$build/$1/CMakeCache.txt
    if [[ -f $cache ]] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$cache"; then
        say "    build/$1 was made at another place; starting afresh"
        rm -rf "${build:?}/$1"
    fi
}
