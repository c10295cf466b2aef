#!/bin/bash
# Unpacks Debian's 32-bit Wine below build/wine32, beside the installed 64-bit Wine of the same version, so that one
# Wine prefix serves 32- and 64-bit programs. The system's own packages stay as they are: no second architecture is
# added. Does nothing when it is there already. About 100 MB to fetch, 600 MB on disk.
#
# usage: scripts/wine32.sh      needs the package groups wine and wine32 (see packages.sh); ends with a status other
#                               than 0 where 32-bit programs cannot be had, after saying why
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

target=$build/wine32
version=$(dpkg-query -W -f '${Version}' wine64)
stamp="$version 1"

# Wine's 32-bit half and the libraries that it is linked with or loads. The C library is not among them: the 64-bit
# system has a 32-bit one in libc6-i386.
packages=(wine32 libwine libunwind8 liblzma5 zlib1g libfreetype6 libpng16-16 libbrotli1 libx11-6 libxext6 libxcb1
    libxau6 libxdmcp6 libbsd0 libmd0 libxrender1 libxcursor1 libxi6 libxrandr2 libxfixes3 libxcomposite1 libxinerama1
    libxxf86vm1 libfontconfig1 libexpat1 libuuid1 libgnutls30 libgmp10 libhogweed6 libidn2-0 libnettle8 libp11-kit0
    libtasn1-6 libunistring2 libffi8)

# An apt of its own: a state folder for i386 with nothing installed, fed by the mirror that the system's apt uses for
# its main suite. The security suite is left out: its 32-bit packages need not exist for the installed version.
prepare_apt() {
    local suite uri
    suite=$(. /etc/os-release && echo "$VERSION_CODENAME")
    uri=$(apt-get indextargets --format '$(REPO_URI) $(CODENAME) $(COMPONENT)' 'Identifier: Packages' |
        awk -v suite="$suite" '$2 == suite && $3 == "main" { print $1; exit }')
    if [[ -z $uri ]]; then
        complain "apt has no list of the main part of $suite; run apt-get update"
        return 1
    fi
    mkdir -p "$work"/{state/lists/partial,cache/archives/partial,none}
    : >"$work/state/status"
    echo "deb [arch=i386] $uri $suite main" >"$work/sources.list"
    cat >"$work/apt.conf" <<CONF
APT::Architecture "i386";
APT::Architectures { "i386"; };
APT::Sandbox::User "";
Dir::State "$work/state";
Dir::State::status "$work/state/status";
Dir::Cache "$work/cache";
Dir::Etc::sourcelist "$work/sources.list";
Dir::Etc::sourceparts "$work/none";
Dir::Etc::preferences "/dev/null";
Dir::Etc::preferencesparts "$work/none";
Acquire::Languages "none";
Acquire::Retries "5";
CONF
    APT_CONFIG=$work/apt.conf apt-get -q update
}

fetch_and_unpack() {
    local file
    prepare_apt
    (cd "$work" && APT_CONFIG=$work/apt.conf apt-get -q download "${packages[@]}")
    for file in "$work"/*.deb; do
        dpkg-deb -x "$file" "$fresh"
    done
    if [[ ! -x $fresh/usr/lib/wine/wine ]]; then
        complain "the 32-bit package holds no Wine loader where it was expected"
        return 1
    fi
}

# The loader finds its 64-bit half and its data relative to itself.
join_with_system() {
    local lib=$fresh/usr/lib/wine
    cp -f /usr/lib/wine/wine64 /usr/lib/wine/wineserver64 "$lib/"
    ln -sfn /usr/lib/x86_64-linux-gnu "$fresh/usr/lib/x86_64-linux-gnu"
    rm -rf "$fresh/usr/share/wine"
    mkdir -p "$fresh/usr/share"
    ln -sfn /usr/share/wine "$fresh/usr/share/wine"
}

# Wine loads its own modules through the Windows zlib of the tool chain, which has to carry Wine's mark; the package's
# installation would have put it there.
mark_zlib() {
    local from=/usr/i686-w64-mingw32/lib/zlib1.dll to=$fresh/usr/lib/i386-linux-gnu/wine/i386-windows/zlib1.dll
    {
        head -c 64 "$from"
        printf 'Wine builtin DLL\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0'
        tail -c +97 "$from"
    } >"$to"
}

write_commands() {
    mkdir -p "$fresh/bin"
    cat >"$fresh/bin/wine" <<'COMMAND'
#!/bin/sh
here=$(dirname "$(dirname "$(readlink -f "$0")")")
export LD_LIBRARY_PATH="$here/usr/lib/i386-linux-gnu:$here/lib/i386-linux-gnu${LD_LIBRARY_PATH:+:$LD_LIBRARY_PATH}"
export WINELOADER="$here/usr/lib/wine/wine" WINESERVER="$here/usr/lib/wine/wineserver64"
exec "$WINELOADER" "$@"
COMMAND
    cat >"$fresh/bin/wineserver" <<'COMMAND'
#!/bin/sh
exec "$(dirname "$(dirname "$(readlink -f "$0")")")/usr/lib/wine/wineserver64" "$@"
COMMAND
    chmod +x "$fresh/bin/wine" "$fresh/bin/wineserver"
}

unpack_wine32() {
    if [[ -f $target/.complete && $(<"$target/.complete") == "$stamp" ]]; then
        return 0
    fi
    if [[ $(dpkg --print-architecture) != amd64 ]]; then
        complain "32-bit Wine is only put together for amd64 systems"
        return 1
    fi
    step "Unpacking 32-bit Wine $version below build/wine32 (about 100 MB to fetch)"
    fresh=$build/wine32.new
    work=$build/wine32.apt
    rm -rf "$fresh" "$work" "$target"
    mkdir -p "$fresh"
    logged wine32 fetch_and_unpack
    join_with_system
    mark_zlib
    write_commands
    rm -rf "$work"
    echo "$stamp" >"$fresh/.complete"
    mv "$fresh" "$target"
}

locked wine32 unpack_wine32
