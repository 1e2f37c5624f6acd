"""The icons that icons.txt lists, each as one SVG text: a drawing and, over it, the badge of its state."""
import re
from pathlib import Path

FOLDER = Path(__file__).resolve().parent
STATES = {
    "device": [None, "connected", "not_ready", "paired", "default"],
    "service": [None, "connected", "not_ready", "without_audio", "default"],
    "-": [None],
}
# What cannot be used now loses its colour; the badge keeps its own.
FADED = ('<filter id="faded"><feColorMatrix type="saturate" values="0"/></filter>'
         '<g filter="url(#faded)" opacity="0.7">{}</g>')


class Icon:
    """One identifier: `svg` is the inside of an image of 32 by 32."""

    def __init__(self, identifier, drawing, badge, has_states, meaning):
        self.identifier, self.badge, self.meaning = identifier, badge, meaning
        self.index = None
        self.svg = inside(drawing)
        if badge == "not_ready" and has_states:
            self.svg = FADED.format(self.svg)
        if badge:
            self.svg += inside(f"badge_{badge}")

    def image(self):
        return f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 32 32">{self.svg}</svg>\n'


def inside(drawing):
    text = (FOLDER / "drawings" / f"{drawing}.svg").read_text(encoding="utf-8")
    return re.fullmatch(r"\s*<svg[^>]*>(.*)</svg>\s*", text, re.DOTALL).group(1)


def read_rows():
    """One list of icons for each line of icons.txt, with their places in the file."""
    rows = []
    for line in (FOLDER / "icons.txt").read_text(encoding="utf-8").splitlines():
        if line and not line.startswith("#"):
            first, drawing, states, meaning = line.split(maxsplit=3)
            badges = STATES.get(states, [states])
            rows.append([Icon(int(first) + n, drawing, badge, len(badges) > 1, meaning)
                         for n, badge in enumerate(badges)])
    number(icon for row in rows for icon in row)
    return rows


def number(icons):
    """Windows counts by ascending identifier."""
    last = 0
    for index, icon in enumerate(icons):
        if icon.identifier <= last:
            raise SystemExit(f"icons.txt: {icon.identifier} stands behind {last}")
        icon.index, last = index, icon.identifier
