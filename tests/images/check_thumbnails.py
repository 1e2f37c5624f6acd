#!/usr/bin/python3
"""check_thumbnails.py CONVERT COMPARE IDENTIFY PICTURES THUMBNAILS: thumbnails in the eyes of another program.

Each is a JPEG file of 160 x 120 pixels that shows the whole picture, scaled to that size: the root mean
square of the difference from what ImageMagick makes of it stays below TOLERANCE of the full range.
"""
import pathlib
import re
import subprocess
import sys

TOLERANCE = 0.02

# What GDI+ puts behind transparent places is its own affair: only their shape is looked at.
TRANSPARENT = {"transparent.gif", "alpha.png"}
LEAST = 19


def shape(identify, thumbnail):
    return subprocess.run([identify, "-format", "%m %w %h", str(thumbnail)], check=True, capture_output=True,
                          text=True).stdout


def difference(convert, compare, picture, thumbnail, scratch):
    # The first frame, not turned, whatever a mark in the file says.
    subprocess.run([convert, f"{picture}[0]", "-colorspace", "sRGB", "-resize", "160x120!", "-depth", "8",
                    str(scratch)], check=True)
    result = subprocess.run([compare, "-metric", "RMSE", str(scratch), str(thumbnail), "null:"],
                            capture_output=True, text=True)
    found = re.search(r"\((\S+)\)", result.stderr)
    return float(found.group(1)) if found else 1.0


def findings(convert, compare, identify, pictures, thumbnails):
    scratch = thumbnails / "expected.png"
    files = sorted(thumbnails.glob("*.jpg"))
    if len(files) < LEAST:
        yield f"{len(files)} thumbnails instead of {LEAST}: run images_test first"
    for thumbnail in files:
        name = thumbnail.name.removesuffix(".jpg")
        found = shape(identify, thumbnail)
        if found != "JPEG 160 120":
            yield f"{thumbnail.name}: {found}"
        if name in TRANSPARENT:
            continue
        off = difference(convert, compare, pictures / name, thumbnail, scratch)
        print(f"{name}: {off:.4f}")
        if not off < TOLERANCE:
            yield f"{thumbnail.name}: differs by {off:.4f} from the picture"


def main():
    convert, compare, identify = sys.argv[1:4]
    found = list(findings(convert, compare, identify, *map(pathlib.Path, sys.argv[4:6])))
    print("\n".join(found) or "all thumbnails are as another program draws them")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
