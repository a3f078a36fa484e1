"""Helpers shared by the resource scripts (resources/*/generate.py, cards/render_cards.py).

Every picture of the program is an SVG written by hand in one of those scripts and rendered
to PNG with rsvg-convert (Debian package librsvg2-bin). A script imports this module after
putting the resources folder on its path:

    sys.path.insert(0, os.path.dirname(HERE))
    from svgtools import svg, render
"""

import shutil
import subprocess
import sys

# The program's palette.
INK = "#2a2f36"
MUTED = "#5b6470"
LINE = "#9aa6ae"
TEAL = "#17808f"
TEAL_LIGHT = "#d7ecef"
INDIGO = "#283c72"
ACCENT = "#f2b134"
RED = "#c8423b"
GREEN = "#2e9a58"
PAPER = "#ffffff"


def svg(width, height, body, defs=None):
    """An SVG document of `width` x `height` pixels, user units equal to pixels. `defs`, when
    given, becomes the <defs> element in front of `body` (gradients and the like)."""
    head = (f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" '
            f'viewBox="0 0 {width} {height}">')
    if defs is not None:
        head += f"<defs>{defs}</defs>"
    return head + body + "</svg>"


def render(svg_text, target):
    """Renders `svg_text` to the PNG file `target` at the document's own size. Exits the
    script with a message when rsvg-convert is missing or fails."""
    if shutil.which("rsvg-convert") is None:
        sys.exit("rsvg-convert is missing (apt-get install librsvg2-bin)")
    result = subprocess.run(["rsvg-convert", "-f", "png", "-o", target],
                            input=svg_text.encode("utf-8"))
    if result.returncode != 0:
        sys.exit(f"rsvg-convert failed for {target}")
