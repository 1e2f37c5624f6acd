#!/usr/bin/python3
"""check_version.py DLL VERSION: the version resource says what the build says."""
import sys

import pefile


def strings_of(pe):
    blocks = [block for info in pe.FileInfo for block in info if block.Key == b"StringFileInfo"]
    return {key.decode(): value.decode() for block in blocks for table in block.StringTable
            for key, value in table.entries.items()}


def main():
    dll, version = sys.argv[1:]
    pe = pefile.PE(dll)
    fixed = pe.VS_FIXEDFILEINFO[0]
    number = ".".join(str(part) for part in (fixed.FileVersionMS >> 16, fixed.FileVersionMS & 0xFFFF,
                                             fixed.FileVersionLS >> 16, fixed.FileVersionLS & 0xFFFF))
    product = (fixed.ProductVersionMS, fixed.ProductVersionLS)
    strings = strings_of(pe)
    wanted = f"{version}.0"
    checks = {
        "file version": (number, wanted),
        "product version": (product, (fixed.FileVersionMS, fixed.FileVersionLS)),
        "FileVersion": (strings.get("FileVersion"), wanted),
        "ProductVersion": (strings.get("ProductVersion"), wanted),
        "OriginalFilename": (strings.get("OriginalFilename"), "VlCommon.dll"),
        "InternalName": (strings.get("InternalName"), "VlCommon"),
        "file type": (fixed.FileType, 2),  # VFT_DLL
        "flags": (fixed.FileFlags, 0),     # neither debug nor private
    }
    wrong = [f"{title}: {got}, expected {want}" for title, (got, want) in checks.items() if got != want]
    wrong += [f"{key} is empty" for key in ("FileDescription", "ProductName") if not strings.get(key)]
    print("\n".join(wrong) or f"version {number}")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
