#!/usr/bin/env python3
"""Draws the pictures of the schema dialogs: the group folder and the hand strength entry of
the schema tree, and the icons of the dialogs' buttons (add a group, add a hand strength,
edit, view, delete; move a hand strength into or out of a key).

The folder and the entry are shared with the other trees of the program, which show groups
and ranges the same way.

Each picture is an SVG written here by hand and rendered to a 16 x 16 PNG with rsvg-convert
(Debian package librsvg2-bin, through ../svgtools.py). The PNGs are committed; run again only
after changing a drawing:

    python3 resources/schemadialogs/generate.py
"""

import os
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.dirname(HERE))
from svgtools import (ACCENT, GREEN, INDIGO, LINE, MUTED, PAPER, RED, TEAL,  # noqa: E402
                      TEAL_LIGHT, render, svg)

FOLDER_DARK = "#d99a22"
FOLDER_EDGE = "#b9821c"


def icon(body):
    return svg(16, 16, body)


def folder():
    # The back with its tab, then the front leaning over it.
    return (f'<path d="M1.5 4a1 1 0 0 1 1-1h3.6l1.5 1.5h5.9a1 1 0 0 1 1 1v1H1.5z" '
            f'fill="{FOLDER_DARK}"/>'
            f'<path d="M1.5 6.5h13l-1.1 6.6a0.8 0.8 0 0 1-0.8 0.7H2.3a0.8 0.8 0 0 1-0.8-0.8z" '
            f'fill="{ACCENT}" stroke="{FOLDER_EDGE}" stroke-width="0.8" '
            f'stroke-linejoin="round"/>')


def range_grid():
    # A corner of the hand matrix: nine cells, the ones of the range filled.
    cells = ""
    filled = {(0, 0), (0, 1), (1, 0), (1, 1), (0, 2), (2, 2)}
    for row in range(3):
        for column in range(3):
            x = 2 + column * 4.2
            y = 2 + row * 4.2
            fill = TEAL if (row, column) in filled else PAPER
            cells += (f'<rect x="{x:.1f}" y="{y:.1f}" width="3.6" height="3.6" rx="0.6" '
                      f'fill="{fill}" stroke="{TEAL if fill == TEAL else LINE}" '
                      f'stroke-width="0.6"/>')
    return cells


def plus_badge():
    return (f'<circle cx="11.8" cy="11.8" r="3.9" fill="{GREEN}" stroke="{PAPER}" '
            f'stroke-width="1"/>'
            f'<path d="M11.8 9.8v4M9.8 11.8h4" stroke="{PAPER}" stroke-width="1.4" '
            f'stroke-linecap="round"/>')


def arrow(direction, color):
    # A bold arrow across the picture, pointing left ("into the list") or right ("out").
    path = ("M13.5 8H3.5M7.5 4l-4 4 4 4" if direction == "left"
            else "M2.5 8h10M8.5 4l4 4-4 4")
    return (f'<path d="{path}" fill="none" stroke="{color}" stroke-width="2.2" '
            f'stroke-linecap="round" stroke-linejoin="round"/>')


PICTURES = {
    "folder.png": icon(folder()),
    "handSelectionTreeRange.PNG": icon(range_grid()),
    "schemaAddGroup.png": icon(folder() + plus_badge()),
    "schemaAddHandStrength.png": icon(range_grid() + plus_badge()),
    # A pencil lying from the lower left to the upper right.
    "schemaEdit.png": icon(
        f'<path d="M3 13l0.8-3.2 7.4-7.4 2.4 2.4-7.4 7.4z" fill="{ACCENT}" '
        f'stroke="{FOLDER_EDGE}" stroke-width="0.8" stroke-linejoin="round"/>'
        f'<path d="M9.6 4l2.4 2.4" stroke="{FOLDER_EDGE}" stroke-width="0.8"/>'
        f'<path d="M3 13l0.8-3.2 2.4 2.4z" fill="{INDIGO}"/>'),
    # An eye: reading, not writing.
    "schemaView.png": icon(
        f'<path d="M1.5 8c1.8-3 4-4.5 6.5-4.5s4.7 1.5 6.5 4.5c-1.8 3-4 4.5-6.5 4.5S3.3 11 1.5 8z" '
        f'fill="{TEAL_LIGHT}" stroke="{TEAL}" stroke-width="1" stroke-linejoin="round"/>'
        f'<circle cx="8" cy="8" r="2.4" fill="{TEAL}"/>'
        f'<circle cx="8.8" cy="7.2" r="0.7" fill="{PAPER}"/>'),
    # A cross in a red disc.
    "schemaDelete.png": icon(
        f'<circle cx="8" cy="8" r="6.3" fill="{RED}"/>'
        f'<path d="M5.5 5.5l5 5M10.5 5.5l-5 5" stroke="{PAPER}" stroke-width="1.7" '
        f'stroke-linecap="round"/>'),
    "handStrengthAdd.png": icon(arrow("left", TEAL)),
    "handStrengthRemove.png": icon(arrow("right", MUTED)),
}


def main():
    for name, text in PICTURES.items():
        render(text, os.path.join(HERE, name))
    return 0


if __name__ == "__main__":
    sys.exit(main())
