# Sourced by the commands in the root folder: packages, build, private Wine prefix.
# shellcheck shell=bash
# Everything is made below build/; deleting that folder undoes it.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
bin=$root/build/win64/bin
prefix=$root/build/wine
jobs=$(nproc)

packages=(wine wine64 g++-mingw-w64-x86-64-win32 clang-14 clang-format-14 clang-tidy-14 cmake ninja-build
          googletest catch2 nlohmann-json3-dev libcli11-dev python3-pefile doxygen librsvg2-bin icoutils
          python3-vobject imagemagick locales)

say() { printf '== %s\n' "$*"; }
stop() { printf '%s: %s\n' "$(basename "$0")" "$*" >&2; exit 1; }

missing_packages() {
    local package
    for package in "${packages[@]}"; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || echo "$package"
    done
}

# Installs what is missing; needs the network and root (or sudo) only then.
setup_packages() {
    command -v dpkg-query >/dev/null || stop "this needs Debian or a relative of it (no dpkg-query here)"
    local missing as_root=()
    mapfile -t missing < <(missing_packages)
    [ ${#missing[@]} -gt 0 ] || return 0
    if [ "$(id -u)" != 0 ]; then
        command -v sudo >/dev/null || stop "packages are missing and only root can install them: ${missing[*]}"
        as_root=(sudo)
    fi
    say "installing ${missing[*]}"
    local log
    log=$(mktemp)
    if ! { "${as_root[@]}" apt-get update &&
           "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
               apt-get install -y --no-install-recommends "${missing[@]}"; } >"$log" 2>&1 </dev/null; then
        tail -5 "$log" >&2
        stop "cannot install: ${missing[*]}"
    fi
    rm -f "$log"
}

# build [TARGET...]: everything, or the targets named. Silent when nothing is to be done.
build() {
    cd "$root"
    if [ ! -e build/win64/build.ninja ]; then
        say "configuring"
        mkdir -p build
        cmake --preset win64 >build/configure.log 2>&1 || { cat build/configure.log >&2; stop "cannot configure"; }
    fi
    say "building"
    cmake --build --preset win64 --parallel "$jobs" ${1:+--target "$@"} || stop "the build failed"
    cd - >/dev/null
}

# The private prefix: made once (about 10 s), then only looked at.
make_prefix() {
    [ -e "$prefix/.ready" ] || say "making a Wine prefix in build/wine"
    "$root/cmake/wine-run.sh" "$prefix" || stop "Wine cannot make its prefix (see 'wine wineboot')"
}

# run_wine PROGRAM ARGS...: runs a program of build/win64/bin there; its exit code is passed on.
run_wine() { (cd "$bin" && "$root/cmake/wine-run.sh" "$prefix" "$@"); }
