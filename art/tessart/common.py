"""Shared drawing kit for the Tessuma Sudoku art generators.

Everything is drawn with cairo (shapes) and Pango (text), at the exact pixel
sizes the game uses, and written out as PNG. Fonts come only from
resources/fonts (see make_art.sh, which points fontconfig there), so the
pictures look the same on every machine that regenerates them.
"""
import math
import os

import cairo
import gi
import numpy as np

gi.require_version("Pango", "1.0")
gi.require_version("PangoCairo", "1.0")
from gi.repository import Pango, PangoCairo  # noqa: E402

ROOT = os.path.normpath(os.path.join(os.path.dirname(__file__), "..", ".."))
RES = os.path.join(ROOT, "resources")


def rgb(r, g, b, a=1.0):
    return (r / 255.0, g / 255.0, b / 255.0, a)


def mix(c1, c2, t):
    """Blend two rgb() tuples; t=0 gives c1, t=1 gives c2."""
    return tuple(c1[i] + (c2[i] - c1[i]) * t for i in range(4))


def lighter(c, t):
    return mix(c, WHITE, t)


def darker(c, t):
    return mix(c, BLACK, t)


def alpha(c, a):
    return (c[0], c[1], c[2], a)


# ---------------------------------------------------------------------------
# Palette of the game
WHITE = rgb(255, 255, 255)
BLACK = rgb(0, 0, 0)
RED = rgb(192, 0, 38)          # given digits, score
BLUE = rgb(11, 94, 181)        # hinted digits, marks, option labels
MAGENTA = rgb(192, 0, 192)     # "auto-mark", answers, page shown
GREYED = rgb(220, 124, 200)    # greyed "auto-mark"
GREEN = rgb(89, 181, 11)       # clock, "pause"
CREAM = rgb(245, 245, 212)     # check boxes and side buttons sit on this
STEEL = rgb(133, 174, 198)     # option decoration
LEAF = rgb(172, 218, 113)      # option decoration
INK = rgb(46, 52, 64)          # body text
ORANGE = rgb(247, 148, 29)
SUN = rgb(255, 206, 48)
TEAL = rgb(0, 163, 163)
PURPLE = rgb(122, 63, 191)
SKY = rgb(41, 171, 226)
PAPER = rgb(255, 253, 244)

CREAM_RGB = (245, 245, 212)

# ---------------------------------------------------------------------------
# Geometry of the main form (pixels)
FORM_W, FORM_H = 638, 478
BOARD_X, BOARD_Y = 120, 64
CELL = 41
GAP = 8
BOX = 3 * CELL          # 123
BOARD_SPAN = 9 * CELL + 2 * GAP   # 385
FRAME = 392             # help pages and frames
BORDER = 6              # board frame around the cells


def cell_pos(row, col):
    return (BOARD_X + GAP * (col // 3) + CELL * col,
            BOARD_Y + GAP * (row // 3) + CELL * row)


def box_pos(br, bc):
    return (BOARD_X + (BOX + GAP) * bc, BOARD_Y + (BOX + GAP) * br)


# ---------------------------------------------------------------------------
# Surfaces
def surface(w, h):
    s = cairo.ImageSurface(cairo.FORMAT_ARGB32, w, h)
    c = cairo.Context(s)
    return s, c


def _to_array(s):
    s.flush()
    w, h = s.get_width(), s.get_height()
    buf = np.ndarray((h, s.get_stride() // 4, 4), np.uint8, s.get_data())[:, :w, :]
    b, g, r, a = (buf[..., i].astype(np.float64) for i in range(4))
    return r, g, b, a


def to_image(s, mode="RGB", background=(255, 255, 255)):
    """cairo surface -> PIL image; RGB mode flattens over background."""
    from PIL import Image
    r, g, b, a = _to_array(s)
    if mode == "RGB":
        # premultiplied: out = c + bg * (1 - a)
        inv = 1.0 - a / 255.0
        out = np.stack([r + background[0] * inv, g + background[1] * inv,
                        b + background[2] * inv], axis=-1)
        return Image.fromarray(np.clip(np.rint(out), 0, 255).astype(np.uint8), "RGB")
    with np.errstate(divide="ignore", invalid="ignore"):
        k = np.where(a > 0, 255.0 / a, 0)
    out = np.stack([r * k, g * k, b * k, a], axis=-1)
    return Image.fromarray(np.clip(np.rint(out), 0, 255).astype(np.uint8), "RGBA")


def save(s, relpath, mode="RGB", background=(255, 255, 255)):
    path = os.path.join(RES, relpath)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    img = to_image(s, mode, background)
    img.save(path, optimize=True)
    return img


def save_svg(paint, relpath, w, h):
    """Draws with paint(context) into an SVG file of w by h pixels."""
    path = os.path.join(RES, relpath)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    s = cairo.SVGSurface(path, w, h)
    paint(cairo.Context(s))
    s.finish()


def save_image(img, relpath):
    path = os.path.join(RES, relpath)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    img.save(path, optimize=True)


# ---------------------------------------------------------------------------
# Paths and paint
def rounded_rect(c, x, y, w, h, r):
    r = min(r, w / 2.0, h / 2.0)
    c.new_sub_path()
    c.arc(x + w - r, y + r, r, -math.pi / 2, 0)
    c.arc(x + w - r, y + h - r, r, 0, math.pi / 2)
    c.arc(x + r, y + h - r, r, math.pi / 2, math.pi)
    c.arc(x + r, y + r, r, math.pi, 3 * math.pi / 2)
    c.close_path()


def rounded_rect_corners(c, x, y, w, h, tl, tr, br, bl):
    c.new_sub_path()
    if tr:
        c.arc(x + w - tr, y + tr, tr, -math.pi / 2, 0)
    else:
        c.move_to(x + w, y)
    if br:
        c.arc(x + w - br, y + h - br, br, 0, math.pi / 2)
    else:
        c.line_to(x + w, y + h)
    if bl:
        c.arc(x + bl, y + h - bl, bl, math.pi / 2, math.pi)
    else:
        c.line_to(x, y + h)
    if tl:
        c.arc(x + tl, y + tl, tl, math.pi, 3 * math.pi / 2)
    else:
        c.line_to(x, y)
    c.close_path()


def vgrad(y0, y1, stops):
    g = cairo.LinearGradient(0, y0, 0, y1)
    for off, col in stops:
        g.add_color_stop_rgba(off, *col)
    return g


def hgrad(x0, x1, stops):
    g = cairo.LinearGradient(x0, 0, x1, 0)
    for off, col in stops:
        g.add_color_stop_rgba(off, *col)
    return g


def lgrad(x0, y0, x1, y1, stops):
    g = cairo.LinearGradient(x0, y0, x1, y1)
    for off, col in stops:
        g.add_color_stop_rgba(off, *col)
    return g


def rgrad(cx, cy, r0, r1, stops, fx=None, fy=None):
    g = cairo.RadialGradient(cx if fx is None else fx, cy if fy is None else fy, r0, cx, cy, r1)
    for off, col in stops:
        g.add_color_stop_rgba(off, *col)
    return g


def _blur(a, radius):
    """Three box blurs approximate a gaussian of about the given radius."""
    if radius <= 0:
        return a
    r = max(1, int(round(radius / 1.7)))
    out = a
    for _ in range(3):
        for axis in (0, 1):
            pad = [(0, 0), (0, 0)]
            pad[axis] = (r + 1, r)
            p = np.pad(out, pad, mode="constant")
            cs = np.cumsum(p, axis=axis)
            if axis == 0:
                out = (cs[2 * r + 1:, :] - cs[:-2 * r - 1, :]) / (2 * r + 1)
            else:
                out = (cs[:, 2 * r + 1:] - cs[:, :-2 * r - 1]) / (2 * r + 1)
    return out


def shadow(c, w, h, path_fn, color=(0, 0, 0, 0.35), blur=4, dx=0, dy=2):
    """Paints a soft shadow of the shape drawn by path_fn(ctx) onto c."""
    ms, mc = surface(w, h)
    mc.translate(dx, dy)
    path_fn(mc)
    mc.set_source_rgba(1, 1, 1, 1)
    mc.fill()
    ms.flush()
    stride = ms.get_stride()
    buf = np.ndarray((h, stride // 4, 4), np.uint8, ms.get_data())[:, :w, :]
    a = buf[..., 3].astype(np.float64) / 255.0
    a = _blur(a, blur) * color[3]
    out = np.zeros((h, stride // 4, 4), np.uint8)
    pa = np.clip(a * 255.0, 0, 255)
    out[:, :w, 0] = np.rint(pa * color[2]).astype(np.uint8)
    out[:, :w, 1] = np.rint(pa * color[1]).astype(np.uint8)
    out[:, :w, 2] = np.rint(pa * color[0]).astype(np.uint8)
    out[:, :w, 3] = np.rint(pa).astype(np.uint8)
    ss = cairo.ImageSurface.create_for_data(memoryview(out), cairo.FORMAT_ARGB32, w, h, stride)
    c.save()
    c.set_source_surface(ss, 0, 0)
    c.paint()
    c.restore()


def glow_text(c, w, h, draw_fn, color, blur):
    """Soft halo around whatever draw_fn(ctx) fills (used for titles)."""
    ms, mc = surface(w, h)
    draw_fn(mc)
    ms.flush()
    stride = ms.get_stride()
    buf = np.ndarray((h, stride // 4, 4), np.uint8, ms.get_data())[:, :w, :]
    a = buf[..., 3].astype(np.float64) / 255.0
    a = np.clip(_blur(a, blur) * 2.2, 0, 1) * color[3]
    out = np.zeros((h, stride // 4, 4), np.uint8)
    pa = a * 255.0
    out[:, :w, 0] = np.rint(pa * color[2]).astype(np.uint8)
    out[:, :w, 1] = np.rint(pa * color[1]).astype(np.uint8)
    out[:, :w, 2] = np.rint(pa * color[0]).astype(np.uint8)
    out[:, :w, 3] = np.rint(pa).astype(np.uint8)
    ss = cairo.ImageSurface.create_for_data(memoryview(out), cairo.FORMAT_ARGB32, w, h, stride)
    c.save()
    c.set_source_surface(ss, 0, 0)
    c.paint()
    c.restore()


# ---------------------------------------------------------------------------
# Text
DISPLAY = "Dosis ExtraBold"      # stands in for "Japan"
SLAB = "Roboto Slab Bold"        # stands in for "AmerType Md BT"
SANS = "DejaVu Sans"             # stands in for "Verdana"
SANS_BOLD = "DejaVu Sans Bold"
MONO = "Liberation Mono Bold"    # stands in for "Courier New" bold
ARIAL = "Liberation Sans"


def _font_options(hint=True):
    fo = cairo.FontOptions()
    fo.set_antialias(cairo.ANTIALIAS_GRAY)
    fo.set_hint_style(cairo.HINT_STYLE_SLIGHT if hint else cairo.HINT_STYLE_NONE)
    fo.set_hint_metrics(cairo.HINT_METRICS_ON if hint else cairo.HINT_METRICS_OFF)
    return fo


def layout(c, text, font, px, width=None, align="left", markup=False,
           spacing=0, line_height=None, hint=True, letter_spacing=0):
    lay = PangoCairo.create_layout(c)
    PangoCairo.context_set_font_options(lay.get_context(), _font_options(hint))
    lay.context_changed()
    desc = Pango.FontDescription.from_string(font)
    desc.set_absolute_size(px * Pango.SCALE)
    lay.set_font_description(desc)
    if width is not None:
        lay.set_width(int(width * Pango.SCALE))
        lay.set_wrap(Pango.WrapMode.WORD)
    lay.set_alignment({"left": Pango.Alignment.LEFT, "center": Pango.Alignment.CENTER,
                       "right": Pango.Alignment.RIGHT}[align])
    if spacing:
        lay.set_spacing(int(spacing * Pango.SCALE))
    if line_height:
        lay.set_line_spacing(line_height)
    if letter_spacing:
        attrs = Pango.AttrList()
        attrs.insert(Pango.attr_letter_spacing_new(int(letter_spacing * Pango.SCALE)))
        lay.set_attributes(attrs)
    if markup:
        lay.set_markup(text, -1)
    else:
        lay.set_text(text, -1)
    return lay


def text_size(c, text, font, px, **kw):
    lay = layout(c, text, font, px, **kw)
    ink, log = lay.get_pixel_extents()
    return log.width, log.height


def ink_extents(c, text, font, px, **kw):
    lay = layout(c, text, font, px, **kw)
    ink, log = lay.get_pixel_extents()
    return ink


def draw_text(c, text, font, px, x, y, color=INK, width=None, align="left",
              markup=False, spacing=0, line_height=None, hint=True, path_only=False,
              letter_spacing=0):
    """Draws text with its layout box at (x, y); returns the layout height."""
    lay = layout(c, text, font, px, width=width, align=align, markup=markup,
                 spacing=spacing, line_height=line_height, hint=hint,
                 letter_spacing=letter_spacing)
    c.save()
    c.move_to(x, y)
    if path_only:
        PangoCairo.layout_path(c, lay)
    else:
        c.set_source_rgba(*color)
        PangoCairo.show_layout(c, lay)
    c.restore()
    if not path_only:
        c.new_path()
    ink, log = lay.get_pixel_extents()
    return log.height


def text_centered(c, text, font, px, cx, cy, color=INK, path_only=False, hint=True,
                  letter_spacing=0):
    """Centres the ink of a single line of text on (cx, cy)."""
    lay = layout(c, text, font, px, hint=hint, letter_spacing=letter_spacing)
    ink, log = lay.get_pixel_extents()
    x = cx - (ink.x + ink.width / 2.0)
    y = cy - (ink.y + ink.height / 2.0)
    c.save()
    c.move_to(round(x), round(y))
    if path_only:
        PangoCairo.layout_path(c, lay)
    else:
        c.set_source_rgba(*color)
        PangoCairo.show_layout(c, lay)
    c.restore()
    if not path_only:
        c.new_path()
    return ink


def esc(s):
    return s.replace("&", "&amp;").replace("<", "&lt;").replace(">", "&gt;")
