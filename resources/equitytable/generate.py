#!/usr/bin/env python3
"""Draws the icon of the equity table tab's "Copy Range to Clipboard" button.

A small SVG written here by hand, rendered to a 32 x 32 PNG with rsvg-convert (Debian
package librsvg2-bin, through ../svgtools.py). Run from anywhere:

    python3 resources/equitytable/generate.py

The PNG is committed; run the script again only after changing the drawing.
"""

import os
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.dirname(HERE))
from svgtools import MUTED, PAPER, TEAL, TEAL_LIGHT, render, svg  # noqa: E402

# Two sheets, the front one with three lines of text.
COPY = svg(32, 32,
           f'<rect x="4" y="3.5" width="16" height="20" rx="2" fill="{TEAL_LIGHT}" '
           f'stroke="{MUTED}" stroke-width="1.5"/>'
           f'<rect x="11" y="8.5" width="17" height="20" rx="2" fill="{PAPER}" '
           f'stroke="{TEAL}" stroke-width="1.8"/>'
           f'<path d="M14.5 14h10M14.5 18.5h10M14.5 23h6.5" stroke="{TEAL}" stroke-width="1.6" '
           'stroke-linecap="round"/>')


def main():
    render(COPY, os.path.join(HERE, "copy.png"))


if __name__ == "__main__":
    main()
