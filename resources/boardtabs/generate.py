#!/usr/bin/env python3
"""Draws the small pictures of the board evaluation tables: the tick boxes of the custom sum,
the expand and collapse markers of a row with children, the corner that leads into a
sub-row, and a transparent spacer that keeps the click zones of a caption in place.

Each picture is an SVG written here by hand and rendered with rsvg-convert (Debian package
librsvg2-bin, through ../svgtools.py). The PNGs are committed; run again only after changing
a drawing:

    python3 resources/boardtabs/generate.py

Sizes matter: the caption's click zones are x 0-18 for the tick box (18 px wide picture)
and 16 px for the tree marker.
"""

import os
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.dirname(HERE))
from svgtools import LINE, MUTED, PAPER, TEAL, TEAL_LIGHT, render, svg  # noqa: E402


def box(fill, stroke):
    # A 12 px box centred in the 18 x 16 picture.
    return (f'<rect x="3.5" y="2.5" width="11" height="11" rx="2.5" fill="{fill}" '
            f'stroke="{stroke}" stroke-width="1.2"/>')


PICTURES = {
    "handStrengthChecked.PNG": svg(18, 16, box(TEAL, TEAL) +
                                   '<path d="M6 8.2l2.2 2.2L12.3 5.8" fill="none" '
                                   f'stroke="{PAPER}" stroke-width="1.8" '
                                   'stroke-linecap="round" stroke-linejoin="round"/>'),
    "handStrengthMixedChecked.PNG": svg(18, 16, box(TEAL_LIGHT, TEAL) +
                                        f'<rect x="6" y="7.1" width="6" height="1.8" rx="0.9" '
                                        f'fill="{TEAL}"/>'),
    "handStrengthUnchecked.PNG": svg(18, 16, box(PAPER, LINE)),
    # Collapsed: a chevron pointing right; expanded: pointing down.
    "treeClose.PNG": svg(16, 16, f'<path d="M6 4l4 4-4 4" fill="none" stroke="{MUTED}" '
                                 'stroke-width="1.8" stroke-linecap="round" '
                                 'stroke-linejoin="round"/>'),
    "treeOpen.PNG": svg(16, 16, f'<path d="M4 6l4 4 4-4" fill="none" stroke="{TEAL}" '
                                'stroke-width="1.8" stroke-linecap="round" '
                                'stroke-linejoin="round"/>'),
    # The corner in front of a sub-row: a line down from the parent, then right.
    "roundCorner.PNG": svg(12, 16, f'<path d="M3 0v6.5a3 3 0 0 0 3 3h6" fill="none" '
                                   f'stroke="{LINE}" stroke-width="1.2"/>'),
    "boardTabsSpacer.png": svg(1, 1, ""),
}


def main():
    for name, text in PICTURES.items():
        render(text, os.path.join(HERE, name))
    return 0


if __name__ == "__main__":
    sys.exit(main())
