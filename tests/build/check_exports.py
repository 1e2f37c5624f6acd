#!/usr/bin/python3
"""check_exports.py DLL DEF HEADER_FOLDER LIST: the export table, the .def and the headers name the functions
of the list, which other programs are built against, and nothing else."""
import pathlib
import re
import sys

import pefile

DECLARATION = re.compile(r"^VLCM_API\b[^;(]*?\b(\w+)\s*\(", re.MULTILINE)
COMMENT = re.compile(r"/\*.*?\*/|//[^\n]*", re.DOTALL)


def exported(path):
    symbols = pefile.PE(path).DIRECTORY_ENTRY_EXPORT.symbols
    return [symbol.name.decode() if symbol.name else f"#{symbol.ordinal}" for symbol in symbols]


def listed(path):
    lines = [line.split(";")[0].strip() for line in pathlib.Path(path).read_text(encoding="utf-8").splitlines()]
    return [line for line in lines[lines.index("EXPORTS") + 1:] if line]


def declared(folder):
    names = []
    for header in sorted(pathlib.Path(folder).glob("*.h")):
        text = COMMENT.sub(" ", header.read_text(encoding="utf-8"))
        names += DECLARATION.findall(text)
    return names


def findings(tables):
    for title, names in tables.items():
        for name in sorted({name for name in names if names.count(name) > 1}):
            yield f"{name}: twice in {title}"
        for name in names:
            if not re.fullmatch(r"Vl[Cc]m_\w+", name) and title != "the headers":
                yield f"{name}: {title} holds a name of another kind"
    everything = sorted(set().union(*tables.values()))
    for name in everything:
        missing = [title for title, names in tables.items() if name not in names]
        if missing:
            yield f"{name}: missing in {', '.join(missing)}"


def main():
    dll, definition, headers, expected = sys.argv[1:]
    tables = {"the DLL": exported(dll), "the .def": listed(definition), "the headers": declared(headers),
              "the list": pathlib.Path(expected).read_text(encoding="utf-8").split()}
    found = list(findings(tables))
    print("\n".join(found) or f"{len(tables['the DLL'])} exports, the same everywhere")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
