#!/usr/bin/env python3
"""Draws the icons of the main window's actions and range row buttons.

Every icon is a small SVG written here by hand and rendered to a 32 x 32 PNG with
rsvg-convert (Debian package librsvg2-bin, through ../svgtools.py). Run from anywhere:

    python3 resources/actions/generate.py

The PNGs are committed; run the script again only after changing a drawing.
"""

import os
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.dirname(HERE))
from svgtools import (ACCENT, GREEN, INDIGO, INK, MUTED, PAPER, RED, TEAL,  # noqa: E402
                      TEAL_LIGHT, render, svg)


def icon(body):
    return svg(32, 32, body)


def document(fold_fill=TEAL_LIGHT):
    return (f'<path d="M7 3.5h12l6 6v19H7z" fill="{PAPER}" stroke="{MUTED}" '
            f'stroke-width="1.5" stroke-linejoin="round"/>'
            f'<path d="M19 3.5v6h6" fill="{fold_fill}" stroke="{MUTED}" stroke-width="1.5" '
            f'stroke-linejoin="round"/>')


def clipboard(inner=""):
    return (f'<rect x="6" y="5" width="20" height="24" rx="2.5" fill="{ACCENT}" '
            f'stroke="#b9821c" stroke-width="1.2"/>'
            f'<rect x="9" y="8.5" width="14" height="18" rx="1" fill="{PAPER}"/>'
            f'<rect x="11.5" y="3" width="9" height="5" rx="1.5" fill="{MUTED}"/>' + inner)


def badge(color, symbol):
    return (f'<circle cx="24" cy="24" r="6.5" fill="{color}" stroke="{PAPER}" '
            f'stroke-width="1.5"/>' + symbol)


PLUS_BADGE = (f'<path d="M24 20.5v7M20.5 24h7" stroke="{PAPER}" stroke-width="2.2" '
              f'stroke-linecap="round"/>')

ICONS = {
    "actionNew": icon(document() + badge(TEAL, PLUS_BADGE)),
    "actionOpen": icon(
        f'<path d="M3.5 8.5a2 2 0 0 1 2-2h7l3 3h11a2 2 0 0 1 2 2v2H3.5z" fill="#d99a22"/>'
        f'<path d="M3.5 12.5h25l-2.5 14a1.5 1.5 0 0 1-1.5 1.2H5a1.5 1.5 0 0 1-1.5-1.5z" '
        f'fill="{ACCENT}" stroke="#b9821c" stroke-width="1" stroke-linejoin="round"/>'),
    "actionSave": icon(
        f'<path d="M5 6.5a2 2 0 0 1 2-2h15.5l4.5 4.5v16.5a2 2 0 0 1-2 2H7a2 2 0 0 1-2-2z" '
        f'fill="{INDIGO}"/>'
        f'<rect x="10" y="4.5" width="11" height="7.5" rx="0.8" fill="#dfe5f2"/>'
        f'<rect x="17" y="6" width="2.5" height="4.5" fill="{INDIGO}"/>'
        f'<rect x="9" y="16" width="14" height="9.5" rx="1" fill="{PAPER}"/>'
        f'<path d="M11.5 19.5h9M11.5 22.5h6" stroke="#9aa6c4" stroke-width="1.4" '
        f'stroke-linecap="round"/>'),
    "actionImport": icon(clipboard(
        f'<path d="M16 11v10" stroke="{TEAL}" stroke-width="2.6" stroke-linecap="round"/>'
        f'<path d="M11.5 17l4.5 4.5 4.5-4.5" fill="none" stroke="{TEAL}" stroke-width="2.6" '
        f'stroke-linecap="round" stroke-linejoin="round"/>')),
    "actionImportPlain": icon(clipboard(
        f'<path d="M12 14h8M12 18h8M12 22h5" stroke="{MUTED}" stroke-width="1.6" '
        f'stroke-linecap="round"/>')),
    "actionImportLines": icon(clipboard(
        f'<path d="M11.5 23l3.5-5 3 3 3.5-7" fill="none" stroke="{TEAL}" stroke-width="2" '
        f'stroke-linecap="round" stroke-linejoin="round"/>')),
    "actionScreenshot": icon(
        f'<path d="M4 11a2.5 2.5 0 0 1 2.5-2.5h3.5l2-3h8l2 3h3.5A2.5 2.5 0 0 1 28 11v13'
        f'a2.5 2.5 0 0 1-2.5 2.5h-19A2.5 2.5 0 0 1 4 24z" fill="{INK}"/>'
        f'<circle cx="16" cy="17" r="6" fill="{PAPER}"/>'
        f'<circle cx="16" cy="17" r="4" fill="{TEAL}"/>'
        f'<circle cx="14.6" cy="15.6" r="1.2" fill="{PAPER}" opacity="0.8"/>'
        f'<circle cx="24.5" cy="12" r="1.2" fill="{ACCENT}"/>'),
    "actionQuit": icon(
        f'<path d="M11 9.2a9 9 0 1 0 10 0" fill="none" stroke="{RED}" stroke-width="3" '
        f'stroke-linecap="round"/>'
        f'<path d="M16 4.5v10" stroke="{RED}" stroke-width="3" stroke-linecap="round"/>'),
    "actionInfo": icon(
        f'<circle cx="16" cy="16" r="12.5" fill="{INDIGO}"/>'
        f'<circle cx="16" cy="9.8" r="2" fill="{PAPER}"/>'
        f'<path d="M16 14.5v9" stroke="{PAPER}" stroke-width="3.2" stroke-linecap="round"/>'),
    "actionOnlineHelp": icon(
        f'<circle cx="16" cy="16" r="12.5" fill="{TEAL}"/>'
        f'<path d="M12.2 12.6a3.9 3.9 0 1 1 5.6 3.5c-1.2.6-1.8 1.4-1.8 2.7v.7" fill="none" '
        f'stroke="{PAPER}" stroke-width="2.8" stroke-linecap="round"/>'
        f'<circle cx="16" cy="23.4" r="1.8" fill="{PAPER}"/>'),
    "undo": icon(
        f'<path d="M9 13h11a6.5 6.5 0 0 1 0 13h-6" fill="none" stroke="{INDIGO}" '
        f'stroke-width="3" stroke-linecap="round" stroke-linejoin="round"/>'
        f'<path d="M13.5 7.5L8 13l5.5 5.5" fill="none" stroke="{INDIGO}" stroke-width="3" '
        f'stroke-linecap="round" stroke-linejoin="round"/>'),
    "redo": icon(
        f'<path d="M23 13H12a6.5 6.5 0 0 0 0 13h6" fill="none" stroke="{INDIGO}" '
        f'stroke-width="3" stroke-linecap="round" stroke-linejoin="round"/>'
        f'<path d="M18.5 7.5L24 13l-5.5 5.5" fill="none" stroke="{INDIGO}" stroke-width="3" '
        f'stroke-linecap="round" stroke-linejoin="round"/>'),
    "editVariant": icon(
        f'<path d="M6 26l1.5-6L21 6.5a2.1 2.1 0 0 1 3 0l1.5 1.5a2.1 2.1 0 0 1 0 3L12 24.5z" '
        f'fill="{ACCENT}" stroke="#b9821c" stroke-width="1.2" stroke-linejoin="round"/>'
        f'<path d="M19 8.5l4.5 4.5" stroke="#b9821c" stroke-width="1.2"/>'
        f'<path d="M6 26l1.5-6 4.5 4.5z" fill="{INK}"/>'),
    "addVariant": icon(
        f'<circle cx="16" cy="16" r="12" fill="{GREEN}"/>'
        f'<path d="M16 9.5v13M9.5 16h13" stroke="{PAPER}" stroke-width="3.2" '
        f'stroke-linecap="round"/>'),
    "deleteVariant": icon(
        f'<path d="M9 10h14l-1.3 16a2 2 0 0 1-2 1.8h-7.4a2 2 0 0 1-2-1.8z" fill="{RED}"/>'
        f'<rect x="6.5" y="6.5" width="19" height="3" rx="1.5" fill="{RED}"/>'
        f'<rect x="13" y="4" width="6" height="3" rx="1" fill="{RED}"/>'
        f'<path d="M13.5 13.5v10M18.5 13.5v10" stroke="{PAPER}" stroke-width="1.6" '
        f'stroke-linecap="round" opacity="0.85"/>'),
    "selectRange": icon(
        "".join(
            f'<rect x="{4 + 8.4 * c:.1f}" y="{4 + 8.4 * r:.1f}" width="7" height="7" rx="1.2" '
            f'fill="{fill}"/>'
            for r, row in enumerate([[TEAL, TEAL, TEAL], [TEAL, TEAL, "#c9d1d6"],
                                     [TEAL, "#c9d1d6", "#c9d1d6"]])
            for c, fill in enumerate(row))),
    "selectSingleCards": icon(
        f'<g transform="rotate(-12 12 18)"><rect x="4.5" y="7" width="13" height="19" rx="2" '
        f'fill="{PAPER}" stroke="{MUTED}" stroke-width="1.3"/>'
        f'<path d="M11 12.5l2.6 3.7-2.6 3.7-2.6-3.7z" fill="{RED}"/></g>'
        f'<g transform="rotate(10 20 16)"><rect x="13.5" y="5" width="13" height="19" rx="2" '
        f'fill="{PAPER}" stroke="{MUTED}" stroke-width="1.3"/>'
        f'<path d="M20 10.5c-1.7 2.3-4 3.5-4 5.5a2.2 2.2 0 0 0 3.6 1.7l-.8 2.8h2.4l-.8-2.8'
        f'a2.2 2.2 0 0 0 3.6-1.7c0-2-2.3-3.2-4-5.5z" fill="{INK}"/></g>'),
    "clearRange": icon(
        f'<path d="M4.5 20.5l11-11a2 2 0 0 1 2.8 0l6.2 6.2a2 2 0 0 1 0 2.8l-8 8H10.8z" '
        f'fill="#e98b86"/>'
        f'<path d="M4.5 20.5l5.7-5.7 9 9-2.7 2.7H10.8z" fill="{PAPER}" stroke="#e98b86" '
        f'stroke-width="1.2" stroke-linejoin="round"/>'
        f'<path d="M16.5 26.5H27" stroke="{MUTED}" stroke-width="1.6" stroke-linecap="round"/>'),
}

# Resource names whose file name differs in case from the icon's name.
FILE_NAMES = {"selectSingleCards": "selectSingleCards.png"}


def main():
    for name, text in ICONS.items():
        render(text, os.path.join(HERE, FILE_NAMES.get(name, name + ".png")))
    print(f"{len(ICONS)} icons written to {HERE}")


if __name__ == "__main__":
    main()
