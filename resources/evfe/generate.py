#!/usr/bin/env python3
"""Draws the pictures of the EV/FE page: the buttons of an action's range row and the plot
button.

Every icon is a small SVG written here by hand and rendered to a 32 x 32 PNG with
rsvg-convert (Debian package librsvg2-bin, through ../svgtools.py). Run from anywhere:

    python3 resources/evfe/generate.py

The PNGs are committed; run the script again only after changing a drawing.
"""

import os
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.dirname(HERE))
from svgtools import (ACCENT, GREEN, INDIGO, INK, LINE, MUTED, PAPER, RED, TEAL,  # noqa: E402
                      TEAL_LIGHT, render, svg)


def icon(body):
    return svg(32, 32, body)


def grid(fills, x0=4, y0=4, step=8.4, cell=7):
    """A 3 by 3 block of the hand table, row by row."""
    return "".join(
        f'<rect x="{x0 + step * c:.1f}" y="{y0 + step * r:.1f}" width="{cell}" height="{cell}" '
        f'rx="1.2" fill="{fill}"/>'
        for r, row in enumerate(fills) for c, fill in enumerate(row))


GRAY = "#c9d1d6"

ICONS = {
    # Copy a group of the player's range into this action: a group's colour stripe over an
    # arrow pointing down into the row.
    "downArrow": icon(
        f'<rect x="5" y="3.5" width="22" height="8" rx="2" fill="{TEAL_LIGHT}" '
        f'stroke="{TEAL}" stroke-width="1.4"/>'
        f'<rect x="8" y="6" width="9" height="3" rx="1" fill="{TEAL}"/>'
        f'<path d="M16 13.5v9" stroke="{INK}" stroke-width="3" stroke-linecap="round"/>'
        f'<path d="M9.5 19.5L16 27l6.5-7.5z" fill="{INK}"/>'),
    # What is left of the parent: the full block with the other groups' cells taken out.
    "determineRange": icon(
        grid([[TEAL, TEAL, GRAY], [TEAL, GRAY, ACCENT], [GRAY, ACCENT, ACCENT]])
        + f'<circle cx="24" cy="24" r="6.5" fill="{INDIGO}" stroke="{PAPER}" stroke-width="1.5"/>'
        f'<path d="M20.5 24h7" stroke="{PAPER}" stroke-width="2.4" stroke-linecap="round"/>'),
    # A curve over two axes.
    "plot": icon(
        f'<path d="M5 4v23h23" fill="none" stroke="{MUTED}" stroke-width="2" '
        f'stroke-linecap="round" stroke-linejoin="round"/>'
        f'<path d="M8 23c4-1 5-9 9-10s6 3 10-7" fill="none" stroke="{GREEN}" stroke-width="2.4" '
        f'stroke-linecap="round"/>'
        f'<path d="M8 18c5 0 8 4 12 4s5-2 7-3" fill="none" stroke="{RED}" stroke-width="1.8" '
        f'stroke-linecap="round" stroke-dasharray="3 2"/>'
        f'<path d="M5 27h23" stroke="{LINE}" stroke-width="0.8"/>'),
}

# Resource names whose file name differs in case from the icon's name.
FILE_NAMES = {"determineRange": "determineRange.PNG"}


def main():
    for name, text in ICONS.items():
        render(text, os.path.join(HERE, FILE_NAMES.get(name, name + ".png")))
    print(f"{len(ICONS)} icons written to {HERE}")


if __name__ == "__main__":
    main()
