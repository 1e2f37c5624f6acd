#!/usr/bin/python3 -B
"""render_icons.py FOLDER: makes FOLDER/ID.ico of every icon, and FOLDER/icons.rc that lists them.

Icons that are there and look as before are left alone: beside each lies the image it was made from.
A newer version of this script makes them all again."""
import os
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from icon_set import read_rows

SIZES = [16, 20, 24, 32, 48]
LARGE = 256  # stays a PNG inside the icon


def render(image, size, png):
    subprocess.run(["rsvg-convert", "-w", str(size), "-h", str(size), "-o", png, image], check=True)
    return png


def is_made(target, source, image):
    if not target.exists() or target.stat().st_mtime <= Path(__file__).stat().st_mtime:
        return False
    return source.exists() and source.read_text(encoding="utf-8") == image


def make(icon, folder):
    target, source = folder / f"{icon.identifier}.ico", folder / f"{icon.identifier}.svg"
    image = icon.image()
    if is_made(target, source, image):
        return
    target.unlink(missing_ok=True)
    source.write_text(image, encoding="utf-8")
    with tempfile.TemporaryDirectory(dir=folder) as work:
        small = [render(source, size, f"{work}/{size}.png") for size in SIZES]
        large = render(source, LARGE, f"{work}/{LARGE}.png")
        made = f"{work}/made.ico"
        subprocess.run(["icotool", "--create", "--output", made, *small, f"--raw={large}"], check=True)
        os.replace(made, target)


def main():
    folder = Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    icons = [icon for row in read_rows() for icon in row]
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        list(pool.map(lambda icon: make(icon, folder), icons))
    lines = [f'{icon.identifier} ICON "{icon.identifier}.ico"\n' for icon in icons]
    (folder / "icons.rc").write_text("".join(lines), encoding="utf-8")


main()
