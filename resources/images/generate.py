#!/usr/bin/env python3
"""Draws the program's own images as SVG and renders them, beside this script, to the PNG,
ICO and GIF files that resources/app.qrc compiles in (under the names the program asks for).

Needs only the Python standard library plus two command line tools:
  rsvg-convert  (Debian package librsvg2-bin)  SVG -> PNG, through ../svgtools.py
  convert       (ImageMagick)                   PNG frames -> ICO and animated GIF
The rendered files are committed, so building the program never runs this script.
Run it again after changing a drawing:  python3 resources/images/generate.py
"""

import math
import os
import shutil
import subprocess
import sys
import tempfile

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.dirname(HERE))
# Brand colours: a deep teal running into indigo, with a warm accent.
from svgtools import ACCENT, INDIGO, TEAL, render  # noqa: E402


def logo_svg(size):
    """The logo: a rounded tile with a white ring (the Q) whose tail cuts out to the lower
    right, holding a spade. Drawn on a 256 grid and scaled to `size`."""
    # Spade: two lobes and a point, built from cubic curves, plus a flared stem.
    spade = (
        "M128 84 "
        "C 116 100, 92 114, 92 134 "
        "C 92 150, 108 158, 122 150 "
        "C 120 160, 114 168, 106 172 "
        "L 150 172 "
        "C 142 168, 136 160, 134 150 "
        "C 148 158, 164 150, 164 134 "
        "C 164 114, 140 100, 128 84 Z"
    )
    return f"""<svg xmlns="http://www.w3.org/2000/svg" width="{size}" height="{size}"
     viewBox="0 0 256 256">
  <defs>
    <linearGradient id="tile" x1="0" y1="0" x2="1" y2="1">
      <stop offset="0" stop-color="{TEAL}"/>
      <stop offset="1" stop-color="{INDIGO}"/>
    </linearGradient>
    <linearGradient id="gloss" x1="0" y1="0" x2="0" y2="1">
      <stop offset="0" stop-color="#ffffff" stop-opacity="0.22"/>
      <stop offset="0.55" stop-color="#ffffff" stop-opacity="0"/>
    </linearGradient>
  </defs>
  <rect x="8" y="8" width="240" height="240" rx="56" fill="url(#tile)"/>
  <rect x="8" y="8" width="240" height="240" rx="56" fill="url(#gloss)"/>
  <circle cx="128" cy="128" r="78" fill="none" stroke="#ffffff" stroke-width="20"/>
  <path d="M170 170 L 206 206" stroke="{ACCENT}" stroke-width="22" stroke-linecap="round"/>
  <path d="{spade}" fill="#ffffff"/>
</svg>
"""


def mix(colour, background, strength):
    """`colour` laid over `background` with the given strength (0..1), as #rrggbb."""
    a = [int(colour[i:i + 2], 16) for i in (1, 3, 5)]
    b = [int(background[i:i + 2], 16) for i in (1, 3, 5)]
    return "#" + "".join(f"{round(x * strength + y * (1 - strength)):02x}" for x, y in zip(a, b))


def spinner_frame_svg(size, frame, frames):
    """One frame of the loading spinner: a ring of dots whose brightest dot walks clockwise."""
    dots = 10
    parts = []
    centre = size / 2.0
    radius = size * 0.36
    dot = size * 0.1
    for i in range(dots):
        angle = 2 * math.pi * i / dots - math.pi / 2
        x = centre + radius * math.cos(angle)
        y = centre + radius * math.sin(angle)
        age = (frame * dots // frames - i) % dots
        # GIF has one-bit transparency, so the fading tail is drawn by mixing the colour
        # towards a pale grey instead of by alpha.
        strength = max(0.15, 1.0 - age * 0.13)
        scale = 1.0 if age else 1.2
        parts.append(
            f'<circle cx="{x:.2f}" cy="{y:.2f}" r="{dot * scale:.2f}" '
            f'fill="{mix(TEAL, "#d9e2e5", strength)}"/>'
        )
    return (
        f'<svg xmlns="http://www.w3.org/2000/svg" width="{size}" height="{size}">'
        + "".join(parts)
        + "</svg>"
    )


def chevron_svg(size, direction):
    """A small chevron for combo boxes and spin boxes in the style sheet."""
    points = "3,6 8,11 13,6" if direction == "down" else "3,10 8,5 13,10"
    return (
        f'<svg xmlns="http://www.w3.org/2000/svg" width="{size}" height="{size}" '
        f'viewBox="0 0 16 16"><polyline points="{points}" fill="none" stroke="#5b6470" '
        f'stroke-width="2" stroke-linecap="round" stroke-linejoin="round"/></svg>'
    )


def run(*command):
    subprocess.run(command, check=True)


def main():
    for tool in ("rsvg-convert", "convert"):
        if shutil.which(tool) is None:
            sys.exit(f"{tool} is missing (rsvg-convert: apt-get install librsvg2-bin; "
                     "convert: apt-get install imagemagick)")
    work = tempfile.mkdtemp(prefix="quorvane-images-")
    try:
        render(logo_svg(256), os.path.join(HERE, "QV-Logo-Big.png"))
        small = os.path.join(HERE, "quorvane-Logo-small.png")
        render(logo_svg(64), small)
        # Both spellings are asked for by the program; keep them byte-identical.
        shutil.copyfile(small, os.path.join(HERE, "quorvane-Logo-Small.png"))

        for direction in ("down", "up"):
            render(chevron_svg(12, direction), os.path.join(HERE, f"chevron-{direction}.png"))

        icon_sizes = []
        for size in (16, 32, 48, 64):
            path = os.path.join(work, f"icon-{size}.png")
            render(logo_svg(size), path)
            icon_sizes.append(path)
        run("convert", *icon_sizes, os.path.join(HERE, "favicon.ico"))

        frames = 10
        frame_paths = []
        for frame in range(frames):
            path = os.path.join(work, f"spinner-{frame:02d}.png")
            render(spinner_frame_svg(20, frame, frames), path)
            frame_paths.append(path)
        # 9 centiseconds a frame, forever; fully transparent background so it sits on any row.
        run("convert", "-dispose", "background", "-delay", "9", "-loop", "0",
            "-background", "none", *frame_paths, os.path.join(HERE, "loading.gif"))
    finally:
        shutil.rmtree(work)


if __name__ == "__main__":
    main()
