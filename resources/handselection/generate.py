#!/usr/bin/env python3
"""Draws the suit pictures of the suit pen and the suit hover of the hand selection dialog.

Each picture is one half of a suit pair cell (a cell is 50 x 30 pixels, two pictures side by
side): a small white tile with the suit symbol, in the colours of the card pictures. The
"transparent" variants are the same tiles faded, for suits in a state of fading.

Needs rsvg-convert (Debian package librsvg2-bin, through ../svgtools.py). The rendered files
are committed, so building the program never runs this script. Run it after changing a drawing:
    python3 resources/handselection/generate.py
"""

import os
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.dirname(HERE))
sys.path.insert(0, os.path.join(HERE, "..", "cards"))
from render_cards import COLOURS, PIPS  # noqa: E402  (the card pictures' own suit symbols)
from svgtools import render, svg  # noqa: E402

WIDTH, HEIGHT = 25, 30
NAMES = {"d": "Diamond", "h": "Heart", "s": "Spade", "c": "Club"}

GROUND = ('<linearGradient id="g" x1="0" y1="0" x2="0" y2="1">'
          '<stop offset="0" stop-color="#ffffff"/><stop offset="1" stop-color="#e9ecf0"/>'
          '</linearGradient>')


def tile(suit, opacity):
    return svg(WIDTH, HEIGHT,
               f'<g opacity="{opacity}">'
               f'<rect x="1.5" y="1.5" width="{WIDTH - 3}" height="{HEIGHT - 3}" rx="3.5" '
               f'fill="url(#g)" stroke="#8f949a" stroke-width="1"/>'
               f'<path d="{PIPS[suit]}" fill="{COLOURS[suit]}" '
               f'transform="translate({WIDTH / 2:.2f},{HEIGHT / 2:.2f}) scale(7.2)"/>'
               f'</g>', GROUND)


def main():
    for suit, name in NAMES.items():
        render(tile(suit, 1.0), os.path.join(HERE, name.lower() + ".png"))
        render(tile(suit, 0.3), os.path.join(HERE, "transparent" + name + ".png"))


if __name__ == "__main__":
    main()
