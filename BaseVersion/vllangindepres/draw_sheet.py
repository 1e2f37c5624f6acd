#!/usr/bin/python3 -B
"""draw_sheet.py: draws docs/icons.png, every icon with its identifier, its index and its meaning."""
import subprocess
from html import escape

from icon_set import FOLDER, read_rows

COLUMNS = 2
ICON, STEP, ROW, LABEL, SMALL = 48, 70, 80, 250, 48
WIDTH = LABEL + SMALL + 5 * STEP + 20
TOP = 76


def cell(icon, x, y):
    middle = x + ICON / 2
    return (f'<svg x="{x}" y="{y}" width="{ICON}" height="{ICON}" viewBox="0 0 32 32">{icon.svg}</svg>'
            f'<text x="{middle}" y="{y + ICON + 12}" text-anchor="middle" class="id">{icon.identifier}'
            f'<tspan class="index"> · {icon.index}</tspan></text>')


def line(row, x, y):
    first = row[0]
    parts = [f'<text x="{x}" y="{y + 29}">{escape(first.meaning)}</text>',
             f'<svg x="{x + LABEL}" y="{y + 16}" width="16" height="16" viewBox="0 0 32 32">{first.svg}</svg>']
    return "".join(parts + [cell(icon, x + LABEL + SMALL + n * STEP, y) for n, icon in enumerate(row)])


def heading(x):
    states = ["idle", "connected", "not ready", "paired*", "default"]
    middle = x + LABEL + SMALL + ICON / 2
    words = [f'<text x="{middle + n * STEP}" y="{TOP - 12}" text-anchor="middle" class="head">{state}</text>'
             for n, state in enumerate(states)]
    return f'<text x="{x + LABEL - 3}" y="{TOP - 12}" class="head">16 px</text>' + "".join(words)


def sheet():
    rows = read_rows()
    height = -(-len(rows) // COLUMNS)
    parts = [line(row, 24 + n // height * WIDTH, TOP + n % height * ROW) for n, row in enumerate(rows)]
    parts += [heading(24 + n * WIDTH) for n in range(COLUMNS)]
    size = (24 + COLUMNS * WIDTH, TOP + height * ROW)
    return (f'<svg xmlns="http://www.w3.org/2000/svg" width="{size[0]}" height="{size[1]}">'
            '<style>text{font:14px sans-serif;fill:#222}.id{font-size:11px}.index{fill:#777}'
            '.head{font-size:12px;fill:#777}.title{font-size:18px}</style>'
            '<rect width="100%" height="100%" fill="#fff"/>'
            '<text x="24" y="34" class="title">vlLangInDepRes.dll: identifier · index</text>'
            f'<text x="{24 + WIDTH}" y="34" class="head">* a service: connected without audio</text>'
            f'{"".join(parts)}</svg>')


target = FOLDER.parent.parent / "docs" / "icons.png"
subprocess.run(["rsvg-convert", "-o", target], input=sheet().encode(), check=True)
