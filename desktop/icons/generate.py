#!/usr/bin/env python3
"""Draws the icons that the desktop shows for Quorvane and renders them into the hicolor
theme layout beside this script:

    hicolor/<n>x<n>/apps/com.quorvane.Quorvane.png          the program, n = 16 ... 512
    hicolor/<n>x<n>/mimetypes/application-x-quorvane-*.png   analysis and range tree files
    hicolor/scalable/...                                     the same drawings as SVG

The program's icon is the logo of resources/images/generate.py (the one drawing of it),
with a bolder variant for 16 to 24 pixels, where the thin ring and the spade would blur.
The file icons are a sheet of paper with a folded corner and the mark of their content:
the logo for an analysis, a small tree of folders and ranges for a range tree.

Needs rsvg-convert (Debian package librsvg2-bin, through ../../resources/svgtools.py). The
rendered files are committed, so building and installing never run this script. Run it
after changing a drawing:  python3 desktop/icons/generate.py
"""

import importlib.util
import os
import shutil
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
RESOURCES = os.path.join(HERE, "..", "..", "resources")
sys.path.insert(0, RESOURCES)
from svgtools import ACCENT, INDIGO, LINE, MUTED, TEAL, TEAL_LIGHT, render  # noqa: E402


def load_logo_drawing():
    """logo_svg of resources/images/generate.py, loaded by path (both scripts are called
    generate.py)."""
    found = importlib.util.spec_from_file_location(
        "quorvane_images", os.path.join(RESOURCES, "images", "generate.py"))
    module = importlib.util.module_from_spec(found)
    found.loader.exec_module(module)
    return module.logo_svg


logo_svg = load_logo_drawing()

APP_ID = "com.quorvane.Quorvane"
SIZES = (16, 22, 24, 32, 48, 64, 128, 256, 512)
MIME_ICONS = ("application-x-quorvane-analysis", "application-x-quorvane-tree")


def small_logo_svg(size):
    """The logo for 16 to 24 pixels: the same tile, ring and tail, drawn bolder and without
    the gloss, and a plain spade that still reads as one at this size."""
    return f"""<svg xmlns="http://www.w3.org/2000/svg" width="{size}" height="{size}"
     viewBox="0 0 256 256">
  <defs>
    <linearGradient id="tile" x1="0" y1="0" x2="1" y2="1">
      <stop offset="0" stop-color="{TEAL}"/>
      <stop offset="1" stop-color="{INDIGO}"/>
    </linearGradient>
  </defs>
  <rect x="0" y="0" width="256" height="256" rx="52" fill="url(#tile)"/>
  <circle cx="124" cy="124" r="80" fill="none" stroke="#ffffff" stroke-width="32"/>
  <path d="M176 176 L 220 220" stroke="{ACCENT}" stroke-width="36" stroke-linecap="round"/>
  <path d="M124 76 C 108 98, 84 110, 84 134 C 84 156, 108 162, 118 150 L 104 178 L 144 178
           L 130 150 C 140 162, 164 156, 164 134 C 164 110, 140 98, 124 76 Z" fill="#ffffff"/>
</svg>
"""


def app_icon_svg(size):
    return small_logo_svg(size) if size <= 24 else logo_svg(size)


def sheet(body, size):
    """A sheet of paper with a folded upper right corner, `body` drawn on it; 256 grid."""
    return f"""<svg xmlns="http://www.w3.org/2000/svg" width="{size}" height="{size}"
     viewBox="0 0 256 256">
  <defs>
    <linearGradient id="paper" x1="0" y1="0" x2="0" y2="1">
      <stop offset="0" stop-color="#ffffff"/>
      <stop offset="1" stop-color="#eef1f4"/>
    </linearGradient>
  </defs>
  <path d="M44 12 H 164 L 212 60 V 236 A 8 8 0 0 1 204 244 H 52 A 8 8 0 0 1 44 236 V 20
           A 8 8 0 0 1 52 12 Z" fill="url(#paper)" stroke="{LINE}" stroke-width="6"
           transform="translate(0 0)"/>
  <path d="M164 12 V 52 A 8 8 0 0 0 172 60 H 212" fill="{TEAL_LIGHT}" stroke="{LINE}"
        stroke-width="6" stroke-linejoin="round"/>
  {body}
</svg>
"""


def analysis_file_svg(size):
    """An analysis: text lines at the top and the logo's tile, ring and tail below."""
    lines = "".join(
        f'<rect x="68" y="{y}" width="{w}" height="10" rx="5" fill="{LINE}"/>'
        for y, w in ((44, 80), (66, 104), (88, 92)))
    mark = f"""
  <rect x="72" y="120" width="112" height="112" rx="26" fill="{TEAL}"/>
  <rect x="72" y="120" width="112" height="112" rx="26" fill="{INDIGO}" opacity="0.45"/>
  <circle cx="128" cy="176" r="34" fill="none" stroke="#ffffff" stroke-width="11"/>
  <path d="M148 196 L 166 214" stroke="{ACCENT}" stroke-width="12" stroke-linecap="round"/>"""
    return sheet(lines + mark, size)


def tree_file_svg(size):
    """A range tree: two folders, each with ranges below it, joined by the tree's lines."""
    folder = f'fill="{TEAL}"'
    range_fill = f'fill="{ACCENT}"'
    parts = [
        f'<path d="M84 64 V 214 M84 108 H 112 M84 146 H 112" fill="none" '
        f'stroke="{MUTED}" stroke-width="6"/>',
        f'<path d="M84 184 V 214 H 112" fill="none" stroke="{MUTED}" stroke-width="6"/>',
        # folders
        f'<path d="M64 40 H 88 L 96 48 H 124 V 76 H 64 Z" {folder}/>',
        f'<path d="M64 168 H 88 L 96 176 H 124 V 204 H 64 Z" {folder}/>',
        # ranges: small cards
        f'<rect x="112" y="94" width="72" height="28" rx="6" {range_fill}/>',
        f'<rect x="112" y="132" width="72" height="28" rx="6" {range_fill}/>',
        f'<rect x="112" y="200" width="72" height="28" rx="6" {range_fill}/>',
    ]
    return sheet("".join(parts), size)


def write_text(path, text):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="utf-8") as stream:
        stream.write(text)


def main():
    theme = os.path.join(HERE, "hicolor")
    if os.path.isdir(theme):
        shutil.rmtree(theme)
    drawings = {
        ("apps", APP_ID): app_icon_svg,
        ("mimetypes", MIME_ICONS[0]): analysis_file_svg,
        ("mimetypes", MIME_ICONS[1]): tree_file_svg,
    }
    for (context, name), draw in drawings.items():
        write_text(os.path.join(theme, "scalable", context, name + ".svg"), draw(256))
        for size in SIZES:
            folder = os.path.join(theme, f"{size}x{size}", context)
            os.makedirs(folder, exist_ok=True)
            render(draw(size), os.path.join(folder, name + ".png"))


if __name__ == "__main__":
    main()
