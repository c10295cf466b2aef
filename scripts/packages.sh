# The Debian packages that this project works with, in groups, and their installation. To be sourced after lib.sh.
#
# Only what is missing is installed, with apt, as root or through sudo. Where that is impossible, install_group fails
# and has said why; the caller decides what can be done without.

# To build the portable core; to test it; to measure it.
packages_native=(g++ cmake ninja-build)
packages_tests=(libgtest-dev)
packages_bench=(libfmt-dev valgrind)
# To fuzz.
packages_fuzz=(clang libclang-rt-dev)
# To check layout and code.
packages_lint=(clang-format clang-tidy)
# To build for Windows; googletest holds the sources that the component's tests are built with.
packages_cross=(g++ cmake ninja-build g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix mingw-w64-tools libwine
    googletest)
# To run Windows programs on a display of our own. The X libraries and gnutls are loaded by Wine while it runs; without
# its fonts there are letters where the symbols of scroll bars and caption buttons should be.
packages_wine=(wine wine64 libwine fonts-wine xvfb fonts-liberation libgl1 libgnutls30 libxcomposite1 libxcursor1
    libxfixes3 libxi6 libxinerama1 libxrandr2 libxrender1 libxxf86vm1)
# What 32-bit Wine needs of the 64-bit system; Wine itself is unpacked by wine32.sh.
packages_wine32=(libc6-i386 lib32gcc-s1 libz-mingw-w64)
# To pack what users get.
packages_package=(perl zip wixl msitools)

missing_packages() {
    local package
    for package in "$@"; do
        if ! dpkg-query -W -f '${db:Status-Status}\n' "$package" 2>/dev/null | grep -qx installed; then
            printf '%s\n' "$package"
        fi
    done
}

# Sets as_root to the words that a command has to start with in order to run as root.
find_root() {
    as_root=()
    if ((EUID == 0)); then
        return 0
    fi
    command -v sudo >/dev/null || return 1
    as_root=(sudo)
    # Asks for the password here, in the foreground, where there is somebody to ask.
    sudo -n true 2>/dev/null || { [[ -t 0 ]] && sudo -v; }
}

run_apt() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=600 -o Acquire::Retries=5 "$@"
}

install_packages() {
    local missing
    mapfile -t missing < <(missing_packages "$@")
    if ((${#missing[@]} == 0)); then
        return 0
    fi
    if ! command -v apt-get >/dev/null; then
        complain "These packages are missing, and there is no apt here to install them with: ${missing[*]}"
        return 1
    fi
    if ! find_root; then
        complain "These packages are missing: ${missing[*]}"
        complain "Installing them takes root: run this command as root, allow it sudo, or install them beforehand."
        return 1
    fi
    step "Installing with apt: ${missing[*]}"
    # A source of the machine's owner that does not answer must not stop us: what counts is whether the packages come.
    logged apt-update run_apt update || complain "apt could not read all of its sources; trying with what it has."
    logged apt-install run_apt install -y --no-install-recommends "${missing[@]}"
}

# install_group native|tests|bench|fuzz|lint|cross|wine|wine32|package
install_group() {
    local -n group_packages=packages_$1
    locked packages install_packages "${group_packages[@]}"
}
