#!/usr/bin/python3
"""make_pictures.py CONVERT FOLDER: the picture files of the image tests, made by ImageMagick.

Files that it cannot make are written here byte by byte: a rotation mark, broken files, a drawing.
"""
import pathlib
import struct
import subprocess
import sys
import zlib

# Smooth, and different in each quarter: shows scaling, mirroring and turning, without fine detail in
# which two ways of scaling would differ.
MOTIF = ["-colorspace", "sRGB", "-sparse-color", "bilinear",
         "0,0 #d03020 %[fx:w-1],0 #20a040 0,%[fx:h-1] #2040d0 %[fx:w-1],%[fx:h-1] #f0e0a0", "-depth", "8"]

# name: size, options of ImageMagick behind the motif
PICTURES = {
    "plain.jpg": ("1024x768", []),
    "progressive.jpg": ("320x200", ["-interlace", "JPEG"]),
    "cmyk.jpg": ("320x200", ["-colorspace", "CMYK"]),
    "grey.jpg": ("320x200", ["-colorspace", "Gray"]),
    "tall.jpg": ("100x300", []),
    "small.jpg": ("40x30", []),
    "24bit.bmp": ("320x200", ["-type", "TrueColor", "-define", "bmp:format=bmp3"]),
    "32bit.bmp": ("320x200", ["-type", "TrueColorAlpha", "-alpha", "opaque"]),
    "8bit.bmp": ("320x200", ["-type", "Palette", "-colors", "256", "-compress", "None", "-define", "bmp:format=bmp3"]),
    "8bit_rle.bmp": ("320x200", ["-type", "Palette", "-colors", "256", "-define", "bmp:format=bmp3"]),
    "plain.gif": ("320x200", []),
    "transparent.gif": ("320x200", ["-transparent", "#d03020"]),
    "plain.png": ("320x200", ["-define", "png:color-type=2"]),
    "16bit.png": ("320x200", ["-depth", "16", "-define", "png:bit-depth=16", "-define", "png:color-type=2"]),
    "palette.png": ("320x200", ["-colors", "200", "-define", "png:color-type=3"]),
    "alpha.png": ("320x200", ["-alpha", "set", "-channel", "A", "-evaluate", "set", "60%",
                              "-define", "png:color-type=6"]),
    "plain.tif": ("320x200", []),
}


def convert(arguments):
    subprocess.run([sys.argv[1], *arguments], check=True)


def draw(folder):
    for name, (size, options) in PICTURES.items():
        convert(["-size", size, "xc:", *MOTIF, *options, str(folder / name)])
    frames = [part for colour in ("red", "green", "blue") for part in ("(", "-size", "320x200", f"xc:{colour}", ")")]
    convert(["-delay", "10", *frames, "-loop", "0", str(folder / "animated.gif")])


def exif_turned_right():
    """An EXIF segment of a JPEG file that says: show me turned by 90 degrees."""
    orientation = struct.pack(">HHIHH", 0x0112, 3, 1, 6, 0)
    tiff = b"MM\0\x2a" + struct.pack(">I", 8) + struct.pack(">H", 1) + orientation + struct.pack(">I", 0)
    payload = b"Exif\0\0" + tiff
    return b"\xff\xe1" + struct.pack(">H", len(payload) + 2) + payload


def with_exif(jpeg):
    """The segment right behind the start mark."""
    return jpeg[:2] + exif_turned_right() + jpeg[2:]


def png_header(width, height):
    """A PNG file that ends behind its header."""
    header = b"IHDR" + struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + struct.pack(">I", 13) + header + struct.pack(">I", zlib.crc32(header))


def windows_drawing():
    """A rectangle as a Windows metafile with its placing header."""
    records = (struct.pack("<IHhh", 5, 0x020B, 0, 0) + struct.pack("<IHhh", 5, 0x020C, 200, 320) +
               struct.pack("<IHhhhh", 7, 0x041B, 150, 250, 50, 50) + struct.pack("<IH", 3, 0))
    words = (18 + len(records)) // 2
    header = struct.pack("<HHHIHIH", 1, 9, 0x300, words, 0, 7, 0)
    place = struct.pack("<IHhhhhHI", 0x9AC6CDD7, 0, 0, 0, 320, 200, 96, 0)
    checksum = 0
    for word, in struct.iter_unpack("<H", place):
        checksum ^= word
    return place + struct.pack("<H", checksum) + header + records


def write_by_hand(folder):
    plain = {name: (folder / name).read_bytes() for name in ("plain.jpg", "plain.png", "plain.gif", "24bit.bmp")}
    files = {
        "turned.jpg": with_exif((folder / "progressive.jpg").read_bytes()),
        "huge_header.png": png_header(20000, 20000),
        "drawing.wmf": windows_drawing(),
        "empty.jpg": b"",
        "text.jpg": b"This is no picture.\n" * 20,
    }
    for name, content in plain.items():
        files["half_" + name] = content[:len(content) // 2]
        files["start_" + name] = content[:12]
    for name, content in files.items():
        (folder / name).write_bytes(content)


def main():
    folder = pathlib.Path(sys.argv[2])
    folder.mkdir(parents=True, exist_ok=True)
    draw(folder)
    write_by_hand(folder)


if __name__ == "__main__":
    main()
