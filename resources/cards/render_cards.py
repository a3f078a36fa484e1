#!/usr/bin/env python3
"""Renders the card pictures of the card pickers from scratch.

Outputs (next to this script), all drawn here, nothing taken from elsewhere:
  cards.png       sheet of the 52 cards, 13 columns by 4 rows, 72 x 100 pixels per card,
                  used for the card icons of the card fields.
  cardTable.png   the same layout at 22 x 29 pixels per cell, rank and suit only on a
                  transparent background: the face of the card selection table, which
                  paints its own cell backgrounds.
  newCards.png    32 x 32 picture of the shuffle buttons.

Layout of both sheets: column = value number (A, K, Q, ..., 2 from left to right), row =
suit in the order d, h, s, c. The deck has four colours: diamonds blue, hearts red, spades
black, clubs green.

Needs python3, rsvg-convert (Debian package librsvg2-bin, through ../svgtools.py) and the
DejaVu fonts.
Run again after changing it:  python3 render_cards.py
"""

import os
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.dirname(HERE))
from svgtools import render as render_svg, svg  # noqa: E402

RANKS = "AKQJT98765432"
SUITS = "dhsc"
RANK_LABEL = {"T": "10"}
COLOURS = {"d": "#1f5fd0", "h": "#d3121c", "s": "#161616", "c": "#15913a"}
DARKER = {"d": "#143f8c", "h": "#8e0b12", "s": "#000000", "c": "#0d5f25"}

# Suit symbols in a box from -1 to 1 in both directions, drawn for this program.
PIPS = {
    "d": "M0,-1 L0.78,0 L0,1 L-0.78,0 Z",
    "h": ("M0,0.98 C-0.32,0.66 -1,0.24 -1,-0.34 C-1,-0.76 -0.72,-1 -0.44,-1 "
          "C-0.2,-1 -0.05,-0.85 0,-0.66 C0.05,-0.85 0.2,-1 0.44,-1 "
          "C0.72,-1 1,-0.76 1,-0.34 C1,0.24 0.32,0.66 0,0.98 Z"),
    "s": ("M0,-1 C0.34,-0.62 1,-0.26 1,0.2 C1,0.56 0.74,0.74 0.47,0.74 "
          "C0.3,0.74 0.14,0.66 0.07,0.52 C0.1,0.76 0.2,0.92 0.38,1 L-0.38,1 "
          "C-0.2,0.92 -0.1,0.76 -0.07,0.52 C-0.14,0.66 -0.3,0.74 -0.47,0.74 "
          "C-0.74,0.74 -1,0.56 -1,0.2 C-1,-0.26 -0.34,-0.62 0,-1 Z"),
    "c": ("M0,-1 A0.43,0.43 0 1 1 0,-0.14 A0.43,0.43 0 1 1 0,-1 Z "
          "M-0.5,-0.2 A0.43,0.43 0 1 1 -0.5,0.66 A0.43,0.43 0 1 1 -0.5,-0.2 Z "
          "M0.5,-0.2 A0.43,0.43 0 1 1 0.5,0.66 A0.43,0.43 0 1 1 0.5,-0.2 Z "
          "M-0.2,0.05 L0.2,0.05 L0.2,0.4 Z M-0.2,0.05 L0.2,0.4 L-0.2,0.4 Z "
          "M-0.08,0.3 C-0.08,0.72 -0.2,0.9 -0.38,1 L0.38,1 C0.2,0.9 0.08,0.72 0.08,0.3 Z"),
}


def pip(suit, cx, cy, half, colour=None):
    """A suit symbol centred at (cx, cy), `half` pixels from centre to edge."""
    fill = colour or COLOURS[suit]
    return (f'<path d="{PIPS[suit]}" fill="{fill}" '
            f'transform="translate({cx:.2f},{cy:.2f}) scale({half:.3f})"/>')


def text(x, y, size, label, colour, anchor="start", condensed=False, weight="bold"):
    family = "DejaVu Sans Condensed" if condensed else "DejaVu Sans"
    return (f'<text x="{x:.2f}" y="{y:.2f}" font-family="{family}" font-size="{size}" '
            f'font-weight="{weight}" fill="{colour}" text-anchor="{anchor}">{label}</text>')


def card(rank, suit, ox, oy):
    """One 72 x 100 card face with its top left corner at (ox, oy)."""
    label = RANK_LABEL.get(rank, rank)
    colour = COLOURS[suit]
    parts = [
        f'<g transform="translate({ox},{oy})">',
        '<rect x="1" y="1" width="70" height="98" rx="7" ry="7" fill="url(#face)" '
        'stroke="#8f949a" stroke-width="1.4"/>',
        '<rect x="3.5" y="3.5" width="65" height="93" rx="5" ry="5" fill="none" '
        f'stroke="{colour}" stroke-opacity="0.18" stroke-width="1"/>',
    ]
    if len(label) == 2:
        parts.append(text(5.5, 33, 29, label, colour, condensed=True))
    else:
        parts.append(text(7, 33, 31, label, colour))
    parts.append(pip(suit, 15.5, 46, 7.5))
    parts.append(pip(suit, 46, 71, 19))
    parts.append("</g>")
    return "\n".join(parts)


def glyph(rank, suit, ox, oy):
    """Rank and suit centred in a 22 x 29 cell of the selection table."""
    label = RANK_LABEL.get(rank, rank)
    colour = COLOURS[suit]
    cx = ox + 11
    parts = []
    if len(label) == 2:
        parts.append(text(cx, oy + 13.5, 12.5, label, colour, "middle", condensed=True))
    else:
        parts.append(text(cx, oy + 13.5, 13.5, label, colour, "middle"))
    parts.append(pip(suit, cx, oy + 21.5, 5.2))
    return "\n".join(parts)


FACE = ('<linearGradient id="face" x1="0" y1="0" x2="0" y2="1">'
        '<stop offset="0" stop-color="#ffffff"/><stop offset="1" stop-color="#eef0f3"/>'
        '</linearGradient>')


def render(svg_text, name):
    render_svg(svg_text, os.path.join(HERE, name))


def new_cards_icon():
    """Two fanned cards and a turning arrow: "deal new cards"."""
    back = ('<g transform="rotate(-14 14 13)">'
            '<rect x="5" y="3" width="13" height="18" rx="2" fill="#ffffff" stroke="#5c6470" '
            'stroke-width="1.1"/>' + pip("d", 11.5, 12, 3.8) + "</g>")
    front = ('<g transform="rotate(10 18 13)">'
             '<rect x="13" y="3" width="13" height="18" rx="2" fill="#ffffff" '
             'stroke="#5c6470" stroke-width="1.1"/>' + pip("s", 19.5, 12, 3.8) + "</g>")
    arrow = ('<path d="M4.5,22.5 A12,6.5 0 0 0 25,26.5" fill="none" stroke="#2b7bd8" '
             'stroke-width="2.2" stroke-linecap="round"/>'
             '<path d="M28.6,22.6 L27.6,29.4 L21.8,26.4 Z" fill="#2b7bd8"/>')
    return svg(32, 32, back + front + arrow)


def main():
    cards = [card(r, s, c * 72, row * 100)
             for row, s in enumerate(SUITS) for c, r in enumerate(RANKS)]
    render(svg(13 * 72, 4 * 100, "\n".join(cards), FACE), "cards.png")
    glyphs = [glyph(r, s, c * 22, row * 29)
              for row, s in enumerate(SUITS) for c, r in enumerate(RANKS)]
    render(svg(13 * 22, 4 * 29, "\n".join(glyphs)), "cardTable.png")
    render(new_cards_icon(), "newCards.png")


if __name__ == "__main__":
    main()
