"""The 392x392 pictures that lie over the board at (120, 64): the paper that
the help pages and the high score page are printed on, the high score page
(BITMAP 150) and the pause / loading curtain (BITMAP 175).

A frame covers the cells and the board's rim at its right and bottom; its
picture continues that rim (taken from the skinned background) so that the
frame looks set into the board.
"""
import math

from . import icons
from . import monkey as M
from .common import (BLUE, CELL, DISPLAY, FRAME, GAP, GREEN, MAGENTA, ORANGE, RED, SANS,
                     SKY, STEEL, SUN, alpha, darker, draw_text, hgrad, lighter, rgb,
                     rgrad, rounded_rect, shadow, text_centered, vgrad)
from .scene import frame_base

INNER = 9 * CELL + 2 * GAP      # 385: the part of the frame over the cells
PAPER_R = 6


def paper_path(c):
    rounded_rect(c, 0, 0, INNER, INNER, PAPER_R)


def paper(tint=None):
    """A blank page: the rim crop plus a sheet of warm white paper."""
    s, c = frame_base()
    paper_path(c)
    top = rgb(255, 255, 255)
    bot = rgb(253, 251, 238) if tint is None else tint
    c.set_source(vgrad(0, INNER, [(0, top), (1, bot)]))
    c.fill()
    return s, c


# ---------------------------------------------------------------------------
def _medal(c, cx, cy, rank):
    cols = {1: (rgb(255, 214, 64), rgb(214, 150, 10)),
            2: (rgb(226, 232, 240), rgb(150, 160, 175)),
            3: (rgb(238, 170, 110), rgb(176, 100, 45))}
    if rank in cols:
        hi, lo = cols[rank]
        # ribbon tails
        c.save()
        for d in (-1, 1):
            c.move_to(cx + 2.5 * d, cy + 4)
            c.line_to(cx + 6.5 * d, cy + 13)
            c.line_to(cx + 3.5 * d, cy + 11.5)
            c.line_to(cx + 1.5 * d, cy + 14)
            c.line_to(cx - 0.5 * d, cy + 5)
            c.close_path()
            c.set_source_rgba(*(RED if d < 0 else BLUE))
            c.fill()
        c.restore()
        c.arc(cx, cy, 9, 0, 2 * math.pi)
        c.set_source(rgrad(cx, cy, 0, 9, [(0, lighter(hi, 0.3)), (0.7, hi), (1, lo)], fx=cx - 3, fy=cy - 3))
        c.fill_preserve()
        c.set_source_rgba(*darker(lo, 0.2))
        c.set_line_width(1)
        c.stroke()
        text_centered(c, str(rank), DISPLAY, 12, cx, cy, darker(lo, 0.45))
    else:
        c.arc(cx, cy, 8, 0, 2 * math.pi)
        c.set_source_rgba(*alpha(STEEL, 0.22))
        c.fill()
        text_centered(c, str(rank), DISPLAY, 12, cx, cy, darker(STEEL, 0.25))


def trophy(c, cx, top, size):
    """A gold cup, size = its height."""
    k = size / 40.0
    c.save()
    c.translate(cx, top)
    c.scale(k, k)
    gold = rgb(255, 204, 40)
    gold_dk = rgb(206, 140, 0)
    # handles
    c.set_line_width(4)
    c.set_source_rgba(*gold_dk)
    for d in (-1, 1):
        c.move_to(11 * d, 4)
        c.curve_to(21 * d, 3, 21 * d, 17, 8 * d, 19)
        c.stroke()
    # cup
    c.move_to(-13, 1)
    c.line_to(13, 1)
    c.curve_to(13, 16, 7, 23, 0, 23)
    c.curve_to(-7, 23, -13, 16, -13, 1)
    c.close_path()
    c.set_source(hgrad(-13, 13, [(0, gold_dk), (0.35, lighter(gold, 0.45)), (0.6, gold), (1, gold_dk)]))
    c.fill()
    c.rectangle(-2.5, 22.5, 5, 6)
    c.set_source_rgba(*gold_dk)
    c.fill()
    rounded_rect(c, -10, 28, 20, 7, 2)
    c.set_source(vgrad(28, 35, [(0, rgb(150, 90, 50)), (1, rgb(110, 60, 30))]))
    c.fill()
    # star on the cup
    c.set_source_rgba(1, 1, 1, 0.95)
    icons.draw_glyph(c, "sparkle", 0, 10, 0.55)
    c.restore()


def confetti(c, rng_seed, area, n, colours):
    import random
    r = random.Random(rng_seed)
    x0, y0, x1, y1 = area
    for _ in range(n):
        x, y = r.uniform(x0, x1), r.uniform(y0, y1)
        col = r.choice(colours)
        c.save()
        c.translate(x, y)
        c.rotate(r.uniform(0, math.pi))
        if r.random() < 0.5:
            rounded_rect(c, -3, -1.2, 6, 2.4, 1)
        else:
            c.arc(0, 0, 1.8, 0, 2 * math.pi)
        c.set_source_rgba(*alpha(col, 0.85))
        c.fill()
        c.restore()


def high_scores():
    """BITMAP 150: the view draws "Score Highs!" at (116,48) 161x28 and ten
    rows of name (x 32, 222 wide) and score (x 264, 91 wide, right-aligned)
    from y 80, 28 apart, 23 high."""
    s, c = paper(rgb(255, 249, 228))
    # sunburst behind the cup
    c.save()
    paper_path(c)
    c.clip()
    cx, cy = 196, 20
    for i in range(16):
        a0 = i * math.pi / 8
        c.move_to(cx, cy)
        c.arc(cx, cy, 190, a0, a0 + math.pi / 16)
        c.close_path()
        c.set_source_rgba(*alpha(SUN, 0.10))
        c.fill()
    c.set_source(rgrad(cx, cy, 0, 150, [(0, rgb(255, 255, 255, 0.0)), (1, rgb(255, 253, 240, 0.85))]))
    c.paint()
    c.restore()
    confetti(c, 7, (10, 6, 375, 44), 26, [RED, BLUE, GREEN, MAGENTA, ORANGE, SKY])
    trophy(c, 196, 5, 40)
    # sparkles beside the title
    c.set_source_rgba(*rgb(255, 190, 20))
    for d in (-1, 1):
        icons.draw_glyph(c, "sparkle", 196 + d * 98, 61, 0.75)
    # rows
    for i in range(10):
        top = 80 + 28 * i
        rounded_rect(c, 4, top - 2.5, INNER - 8, 27, 8)
        if i < 3:
            tint = [rgb(255, 244, 196), rgb(240, 244, 250), rgb(252, 236, 222)][i]
        else:
            tint = rgb(244, 248, 253) if i % 2 else rgb(255, 255, 255, 0.0)
        c.set_source_rgba(*tint)
        c.fill()
        _medal(c, 18, top + 11, i + 1)
    draw_text(c, "Only best ten can stay in this list. Solve fast!", SANS, 11, 0, 362,
              alpha(darker(STEEL, 0.3), 1), width=INNER, align="center")
    return s


# ---------------------------------------------------------------------------
def _curtain_half(c, x0, x1, top, bottom):
    """A panel of velvet with folds."""
    c.save()
    c.rectangle(x0, top, x1 - x0, bottom - top)
    c.clip()
    base = rgb(184, 16, 60)
    c.set_source(cairo_folds(x0, x1, 5, base))
    c.paint()
    # shading from the top and bottom
    c.set_source(vgrad(top, bottom, [(0, rgb(60, 0, 20, 0.35)), (0.25, rgb(0, 0, 0, 0)),
                                     (0.8, rgb(0, 0, 0, 0)), (1, rgb(60, 0, 20, 0.35))]))
    c.paint()
    c.restore()


def cairo_folds(x0, x1, folds, base):
    import cairo
    g = cairo.LinearGradient(x0, 0, x1, 0)
    steps = folds * 8
    for i in range(steps + 1):
        t = i / float(steps)
        v = math.sin(t * folds * 2 * math.pi)
        col = lighter(base, 0.22 * v) if v > 0 else darker(base, -0.35 * v)
        g.add_color_stop_rgba(t, *col)
    return g


def curtain():
    """BITMAP 175: closed stage curtains with the monkey peeking out and a
    "paused" sign. The view's loading banner goes at y 292..324, centred, in
    a light colour; that band is plain velvet."""
    s, c = frame_base()
    c.save()
    paper_path(c)
    c.clip()
    # dark stage behind
    c.set_source_rgba(*rgb(60, 0, 25))
    c.paint()
    _curtain_half(c, 0, INNER / 2.0, 0, 352)
    _curtain_half(c, INNER / 2.0, INNER, 0, 352)
    # the seam where the two halves meet
    c.rectangle(INNER / 2.0 - 1, 0, 2, 352)
    c.set_source_rgba(*rgb(70, 0, 25, 0.8))
    c.fill()
    # stage floor and footlights
    c.rectangle(0, 346, INNER, INNER - 346)
    c.set_source(vgrad(346, INNER, [(0, rgb(196, 130, 70)), (1, rgb(140, 84, 40))]))
    c.fill()
    c.rectangle(0, 346, INNER, 3)
    c.set_source_rgba(*rgb(110, 60, 26))
    c.fill()
    for k in range(1, 12):
        x = k * INNER / 12.0
        c.arc(x, 367, 4.2, 0, 2 * math.pi)
        c.set_source(rgrad(x, 367, 0, 4.2, [(0, rgb(255, 255, 220)), (1, SUN)]))
        c.fill()
        c.arc(x, 367, 12, 0, 2 * math.pi)
        c.set_source(rgrad(x, 367, 0, 12, [(0, rgb(255, 240, 150, 0.5)), (1, rgb(255, 240, 150, 0))]))
        c.fill()
    # valance with scallops and a gold fringe
    c.rectangle(0, 0, INNER, 30)
    c.set_source(vgrad(0, 30, [(0, rgb(150, 0, 50)), (1, rgb(196, 20, 70))]))
    c.fill()
    n = 7
    for k in range(n):
        x = (k + 0.5) * INNER / n
        c.save()
        c.translate(x, 30)
        c.scale(INNER / n / 2.0, 14)
        c.arc(0, 0, 1, 0, math.pi)
        c.restore()
        c.set_source(vgrad(30, 44, [(0, rgb(196, 20, 70)), (1, rgb(150, 0, 50))]))
        c.fill()
        c.save()
        c.translate(x, 30)
        c.scale(INNER / n / 2.0, 14)
        c.arc(0, 0, 1, 0, math.pi)
        c.restore()
        c.set_source_rgba(*SUN)
        c.set_line_width(2.5)
        c.stroke()
    c.rectangle(0, 26, INNER, 4)
    c.set_source_rgba(*SUN)
    c.fill()
    c.restore()

    # the monkey peeking between the curtains, holding the sign
    cx = INNER / 2.0
    c.save()
    paper_path(c)
    c.clip()
    M.draw(c, "face", cx, 132, 1.25, "wink")
    # sign on two strings from the valance
    sx, sy, sw, sh = cx - 84, 188, 168, 66
    c.set_source_rgba(*rgb(120, 80, 40))
    c.set_line_width(1.5)
    for d in (-1, 1):
        c.move_to(cx + d * 70, 40)
        c.line_to(cx + d * 62, sy + 4)
        c.stroke()

    def sign_path(cc):
        rounded_rect(cc, sx, sy, sw, sh, 12)
    shadow(c, FRAME, FRAME, sign_path, color=(0.1, 0, 0, 0.5), blur=5, dy=4)
    sign_path(c)
    c.set_source(vgrad(sy, sy + sh, [(0, rgb(255, 252, 232)), (1, rgb(246, 236, 196))]))
    c.fill_preserve()
    c.set_source_rgba(*MAGENTA)
    c.set_line_width(3)
    c.stroke()
    text_centered(c, "paused", DISPLAY, 36, cx, sy + 26, MAGENTA)
    draw_text(c, "click me and game go on!", DISPLAY, 13, sx, sy + 44, alpha(BLUE, 0.95),
              width=sw, align="center")
    # two hands holding the sign
    for d in (-1, 1):
        hx = cx + d * 62
        c.save()
        c.translate(hx, sy + 2)
        c.scale(1.25, 1.25)
        c.new_path()
        for i in (-1, 0, 1):
            c.save()
            c.translate(i * 3.4, 0)
            c.scale(2.3, 3.4)
            c.arc(0, 0, 1, 0, 2 * math.pi)
            c.restore()
            c.set_source_rgba(*M.SKIN)
            c.fill_preserve()
            c.set_source_rgba(*M.LINE)
            c.set_line_width(1.2)
            c.stroke()
        c.restore()
    c.restore()
    return s
