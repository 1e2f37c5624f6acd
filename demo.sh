#!/usr/bin/env bash
# demo.sh [FILE...]: sends files to a simulated phone through the built library and checks what arrives.
# Without FILE: a text file and a generated binary of 5 MB by object push, the text by file transfer.
source "$(dirname "${BASH_SOURCE[0]}")/cmake/setup.sh"

phone="Lena's phone"
home=$root/build/demo

# Paths of the callers' own files, before anything changes the folder.
files=()
for file in "$@"; do
    case $file in -*) stop "unknown option $file; usage: demo.sh [FILE...]" ;; esac
    [ -f "$file" ] && [ -r "$file" ] || stop "cannot read $file"
    files+=("Z:$(realpath -- "$file")")
done

setup_packages
build suite
make_prefix

# Wine reads file names in the character set of the locale.
[ "$(locale charmap 2>/dev/null)" = UTF-8 ] || export LC_ALL=C.UTF-8
export VLSIM_HOME="Z:${home//\//\\}"

vldemo() { run_wine vldemo.exe "$@"; }
vlcm() { run_wine vlcm.exe "$@"; }
end_agent() { vldemo stop || true; }

say "cleaning the simulated neighbourhood"
vldemo stop
rm -rf "$home"
mkdir -p "$home"
vldemo reset
vldemo install

trap end_agent EXIT
say "starting the tray agent"
vldemo start

say "the neighbourhood before"
vlcm show

result=0
if [ ${#files[@]} -gt 0 ]; then
    say "sending to $phone"
    vldemo send "$phone" "${files[@]}" --via push || result=1
else
    binary=$home/binary.dat
    head -c 5000000 /dev/urandom >"$binary"
    text=Z:$root/samples/letter.txt
    say "two files to $phone by object push"
    vldemo send "$phone" "$text" "Z:$binary" --via push || result=1
    say "one file to $phone by file transfer"
    vldemo send "$phone" "$text" --via ftp || result=1
fi

say "the neighbourhood after"
vlcm show || result=1

say "closing the tray agent"
trap - EXIT
vldemo stop || result=1
[ $result = 0 ] || stop "what arrived differs from what was sent (log: build/demo/log)"
say "all files arrived as they were sent"
