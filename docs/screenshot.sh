#!/usr/bin/env bash
# screenshot.sh [PICTURE]: runs the main window in the built-in neighbourhood, on a display of its own, and
# takes its picture: docs/veltrin.png, unless another file is named.
source "$(dirname "${BASH_SOURCE[0]}")/../cmake/setup.sh"

picture=$(realpath -m -- "${1:-$root/docs/veltrin.png}")
work=$root/build/screenshot
width=780 # the window's own size: it covers the desktop
height=720

# The last ones: letters for the title bar, for texts, and for Chinese and Japanese names.
packages+=(xvfb imagemagick fonts-wine fonts-open-sans fonts-droid-fallback)
setup_packages
build suite

# A prefix of its own: its programs draw through X.
prefix=$work/wine
make_prefix
home=$work/home
rm -rf "$home" "$work/display"
mkdir -p "$home"
export VLSIM_HOME="Z:${home//\//\\}"
[ "$(locale charmap 2>/dev/null)" = UTF-8 ] || export LC_ALL=C.UTF-8
run_wine vldemo.exe reset

export WINEPREFIX=$prefix WINEDEBUG=-all WINEDLLOVERRIDES=mscoree,mshtml,winedbg.exe=

# Xvfb picks a free display and writes its number down.
Xvfb -displayfd 3 -screen 0 "${width}x${height}x24" -dpi 96 -nolisten tcp 3>"$work/display" 2>/dev/null &
server=$!
finish() {
    wineserver -k 2>/dev/null || true
    kill "$server" 2>/dev/null || true
}
trap finish EXIT
until [ -s "$work/display" ]; do sleep 0.1; done
DISPLAY=:$(cat "$work/display")
export DISPLAY

# set_value KEY NAME TYPE DATA: of the registry.
set_value() { wine reg add "$1" /v "$2" /t "$3" /d "$4" /f >/dev/null 2>&1; }
set_value 'HKCU\Software\Wine\Drivers' Graphics REG_SZ x11
for face in 'Tahoma' 'MS Shell Dlg' 'MS Shell Dlg 2' 'Segoe UI'; do
    set_value 'HKCU\Software\Wine\Fonts\Replacements' "$face" REG_SZ 'Open Sans'
done
set_value 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontLink\SystemLink' 'Open Sans' REG_MULTI_SZ \
    'DroidSansFallbackFull.ttf,Droid Sans Fallback'
cp /usr/share/wine/fonts/marlett.ttf "$prefix/drive_c/windows/Fonts/"
wineserver -w

# Without a window manager only a Wine desktop draws title bars.
cd "$bin"
wine explorer "/desktop=shot,${width}x${height}" Veltrin.exe >/dev/null 2>&1 &

# Done when two pictures in a row are equal and show more than an empty desktop. Never ask `import` for a
# window by name: it waits for a mouse click when there is none.
before=none
for _ in $(seq 60); do
    sleep 0.5
    import -window root "$work/shot.png"
    now=$(identify -format '%# %k' "$work/shot.png")
    if [ "$now" = "$before" ] && [ "${now#* }" -gt 8 ]; then
        cp "$work/shot.png" "$picture"
        say "wrote $picture"
        exit 0
    fi
    before=$now
done
stop "there is nothing to see"
