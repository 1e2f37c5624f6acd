#!/usr/bin/env bash
# bench.sh [--record] [OPTION...]: sets up, builds and measures the library against its floors.
# --record writes the table into docs/performance.md. The other options are those of the program
# (--seconds 5, --only "hand over", --json FILE, --help); files are relative to build/win64/bin.
source "$(dirname "${BASH_SOURCE[0]}")/cmake/setup.sh"

record=
if [ "${1-}" = --record ]; then
    record=yes
    shift
fi

setup_packages
build vlcm_bench
make_prefix

# What the numbers depend on, one line.
machine() {
    local model
    model=$(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -1)
    printf '%s, %s processors, %s, Linux %s, %s, %s\n' "${model:-$(uname -m)}" "$jobs" \
        "$(sed -n 's/^MemTotal: *\([0-9]*\) kB/\1/p' /proc/meminfo | awk '{printf "%.0f GiB", $1 / 1048576}')" \
        "$(uname -r)" "$(wine --version 2>/dev/null)" "$(clang++-14 --version | head -1)"
}

# Replaces what stands between the two marks in the document.
write_table() {
    local document=$root/docs/performance.md
    { echo; date '+Measured on %Y-%m-%d: '"$(machine)."; echo; cat "$1"; } >"$1.text"
    awk -v text="$1.text" '
        /^<!-- table -->$/ { print; while ((getline line < text) > 0) print line; skip = 1 }
        /^<!-- end of table -->$/ { skip = 0 }
        !skip' "$document" >"$document.new"
    mv "$document.new" "$document"
}

say "measuring"
mkdir -p "$root/build/bench"
run_wine vlcm_bench.exe --table ../../bench/table.md "$@"
[ -z "$record" ] || write_table "$root/build/bench/table.md"
