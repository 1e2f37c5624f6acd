#!/bin/sh
# with-spooler.sh PREFIX WINSPOOL.DRV PROGRAM [ARGS...]: runs a program where our print spooler has taken
# the place of the system's. That is a prefix of its own, because the file must lie in the system folder:
# the library loads it from there by its full path.
set -eu
prefix=$1; spooler=$2; shift 2
case $prefix in /*) ;; *) prefix=$PWD/$prefix ;; esac
here=$(cd "$(dirname "$0")" && pwd)
installed=$prefix/drive_c/windows/system32/winspool.drv

"$here/wine-run.sh" "$prefix"
(
    flock 9
    cmp -s "$spooler" "$installed" || cp --remove-destination "$spooler" "$installed"
) 9>"$prefix/.lock"
export WINEDLLOVERRIDES="winspool.drv=n;mscoree,mshtml,winedbg.exe="
exec "$here/wine-run.sh" "$prefix" "$@"
