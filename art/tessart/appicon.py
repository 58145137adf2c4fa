"""The application icon: the monkey over a little Sudoku board on a sky tile.

Written as SVG (cairo's SVG surface, plain paths and gradients only, so that
Qt's SVG renderer shows it) and as a 256x256 PNG.
"""
import os

import cairo

from . import monkey as M
from .common import RES, RED, rgb, rounded_rect, save, lgrad

SIZE = 256


def draw_icon(c):
    # tile
    rounded_rect(c, 8, 8, 240, 240, 54)
    c.set_source(lgrad(0, 8, 0, 248, [(0, rgb(104, 210, 240)), (1, rgb(18, 100, 190))]))
    c.fill()
    rounded_rect(c, 12, 12, 232, 232, 50)
    c.set_source_rgba(1, 1, 1, 0.35)
    c.set_line_width(3)
    c.stroke()
    # little board: 3x3 rounded tiles
    x0, y0, t, g = 59, 104, 42, 6
    for r in range(3):
        for col in range(3):
            rounded_rect(c, x0 + col * (t + g), y0 + r * (t + g), t, t, 8)
            c.set_source_rgba(1, 1, 1, 0.95 if (r + col) % 2 == 0 else 0.84)
            c.fill()

    def digit_seven(cx, cy, col):
        c.move_to(cx - 10, cy - 12)
        c.line_to(cx + 10, cy - 12)
        c.line_to(cx - 3, cy + 13)
        c.set_source_rgba(*col)
        c.set_line_width(7)
        c.set_line_cap(1)
        c.set_line_join(1)
        c.stroke()

    def digit_one(cx, cy, col):
        c.move_to(cx - 6, cy - 7)
        c.line_to(cx + 2, cy - 13)
        c.line_to(cx + 2, cy + 13)
        c.set_source_rgba(*col)
        c.set_line_width(7)
        c.set_line_cap(1)
        c.set_line_join(1)
        c.stroke()
    digit_seven(x0 + 2 * (t + g) + t / 2.0, y0 + 2 * (t + g) + t / 2.0, RED)
    digit_one(x0 + t / 2.0, y0 + 2 * (t + g) + t / 2.0, rgb(11, 94, 181))
    # the monkey, big, peeking over the board
    M.draw(c, "face", 128, 90, 1.85, "happy")


def _tidy_svg(path):
    """Plain hex colours and pixel sizes: friendlier to every SVG reader."""
    import re
    with open(path) as f:
        text = f.read()

    def hexcol(m):
        vals = [float(v) * 2.55 for v in m.groups()]
        return "#%02x%02x%02x" % tuple(int(round(v)) for v in vals)
    text = re.sub(r"rgb\(([\d.]+)%,([\d.]+)%,([\d.]+)%\)", hexcol, text)
    text = text.replace('width="256pt" height="256pt"', 'width="256" height="256"')
    with open(path, "w") as f:
        f.write(text)


def make_all():
    written = []
    path = os.path.join(RES, "icons", "tessuma.svg")
    os.makedirs(os.path.dirname(path), exist_ok=True)
    surf = cairo.SVGSurface(path, SIZE, SIZE)
    surf.restrict_to_version(cairo.SVG_VERSION_1_1)
    c = cairo.Context(surf)
    draw_icon(c)
    surf.finish()
    _tidy_svg(path)
    written.append("icons/tessuma.svg")
    # The window's own icon, as a bitmap: window managers show it at 16 to
    # 64 pixels, and a larger one would be held decoded for the whole game.
    s = cairo.ImageSurface(cairo.FORMAT_ARGB32, 64, 64)
    c = cairo.Context(s)
    c.scale(64 / SIZE, 64 / SIZE)
    draw_icon(c)
    save(s, "icons/tessuma-64.png", mode="RGBA")
    written.append("icons/tessuma-64.png")
    return written
