#!/usr/bin/env bash
# test.sh [FILTER]: sets up, builds and runs every test, or those whose names match the regular
# expression FILTER. ./test.sh --list names them.
source "$(dirname "${BASH_SOURCE[0]}")/cmake/setup.sh"

setup_packages
build
make_prefix

cd "$root"
case ${1-} in
    --list) exec ctest --preset win64 -N ;;
    -*) stop "unknown option $1; usage: test.sh [--list | FILTER]" ;;
esac
say "testing"
exec ctest --preset win64 --no-tests=error --parallel "$jobs" ${1:+-R "$1"}
