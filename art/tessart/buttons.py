"""Button faces: the nine side buttons, OK, the window buttons and the option
tabs, each with its hover face.

The game's button draws its picture with the picture's top-left pixel colour
keyed out over its back colour: cream (245,245,212) for the side buttons and
OK, white for the window buttons and option tabs. So every face here has
exactly that back colour in its corners and around the shape, which makes the
keying invisible whatever the button does.
"""
import math

from . import icons
from .common import (BLUE, CREAM, CREAM_RGB, DISPLAY, PURPLE, SKY, SUN, TEAL, WHITE,
                     alpha, darker, lighter, rgb, rounded_rect, rounded_rect_corners,
                     save, save_image, shadow, surface, text_centered, vgrad,
                     ink_extents)

SIDE = [
    # word, glyph, colour
    ("Create", "sparkle", rgb(70, 172, 38)),
    ("Load", "folder", SKY),
    ("Save", "disk", TEAL),
    ("Print", "printer", PURPLE),
    ("Solve", "bulb", rgb(242, 132, 18)),
    ("Highs!", "trophy", rgb(206, 30, 164)),
    ("Help", "question", BLUE),
    ("Finish", "check", rgb(70, 172, 38)),
    ("Cancel", "cross", rgb(214, 36, 56)),
]
OK = ("OK", "check", rgb(70, 172, 38))

W, H = 86, 54
FACE = (3.5, 3.0, 79.0, 44.0)   # x, y, w, h of the candy face
RADIUS = 13


def _glyph_surface(w, h, name, cx, cy, scale, color):
    s, c = surface(w, h)
    c.set_source_rgba(*color)
    icons.draw_glyph(c, name, cx, cy, scale)
    return s


def _word_size(words, max_px, room):
    """Largest pixel size (in half steps) at which every word fits in room."""
    s, c = surface(4, 4)
    px = max_px
    while px > 10:
        if all(ink_extents(c, w, DISPLAY, px).width <= room for w in words):
            return px
        px -= 0.5
    return px


def side_face(word, glyph, base, hover, word_px, back=CREAM):
    s, c = surface(W, H)
    if back is not None:
        c.set_source_rgba(*back)
        c.paint()
    x, y, w, h = FACE
    if hover:
        # lift: the face rises by one pixel and casts a wider shadow
        y -= 1

    def face_path(cc):
        rounded_rect(cc, x, y, w, h, RADIUS)

    shadow(c, W, H, face_path, color=(*darker(base, 0.55)[:3], 0.55 if hover else 0.45),
           blur=3.5 if hover else 2.5, dy=3 if hover else 2.5)
    top = lighter(base, 0.42 if hover else 0.28)
    mid = lighter(base, 0.12) if hover else base
    bot = darker(base, 0.10 if hover else 0.18)
    face_path(c)
    c.set_source(vgrad(y, y + h, [(0, top), (0.55, mid), (1, bot)]))
    c.fill()
    # glossy top half
    c.save()
    rounded_rect(c, x + 3, y + 2, w - 6, h * 0.46, RADIUS - 3)
    c.set_source(vgrad(y + 2, y + 2 + h * 0.46, [(0, rgb(255, 255, 255, 0.55 if hover else 0.45)),
                                                 (1, rgb(255, 255, 255, 0.06))]))
    c.fill()
    c.restore()
    # rims: dark outline, then a light inner line
    rounded_rect(c, x + 0.5, y + 0.5, w - 1, h - 1, RADIUS - 0.5)
    c.set_source_rgba(*darker(base, 0.35))
    c.set_line_width(1)
    c.stroke()
    rounded_rect(c, x + 1.5, y + 1.5, w - 3, h - 3, RADIUS - 1.5)
    c.set_source_rgba(1, 1, 1, 0.35)
    c.set_line_width(1)
    c.stroke()
    if hover:
        # sunny ring
        rounded_rect(c, x - 1.0, y - 1.0, w + 2, h + 2, RADIUS + 1)
        c.set_source_rgba(*alpha(SUN, 0.95))
        c.set_line_width(2)
        c.stroke()

    # content: glyph then word, centred as a group
    s2, c2 = surface(4, 4)
    ink = ink_extents(c2, word, DISPLAY, word_px)
    gw = 17
    gap = 4
    total = gw + gap + ink.width
    cx0 = x + (w - total) / 2.0
    cy = y + h / 2.0
    gscale = 0.9 if not hover else 0.98
    dark = darker(base, 0.45)
    gs = _glyph_surface(W, H, glyph, cx0 + gw / 2.0, cy, gscale, alpha(dark, 0.55))
    c.set_source_surface(gs, 0, 1)
    c.paint()
    gs = _glyph_surface(W, H, glyph, cx0 + gw / 2.0, cy - (0.5 if hover else 0), gscale, WHITE)
    if hover:
        c.save()
        c.translate(cx0 + gw / 2.0, cy)
        c.rotate(-0.12)
        c.translate(-(cx0 + gw / 2.0), -cy)
        c.set_source_surface(gs, 0, 0)
        c.paint()
        c.restore()
    else:
        c.set_source_surface(gs, 0, 0)
        c.paint()
    tx = cx0 + gw + gap + ink.width / 2.0
    text_centered(c, word, DISPLAY, word_px, tx, cy + 1.2, alpha(dark, 0.6))
    text_centered(c, word, DISPLAY, word_px, tx, cy, rgb(255, 255, 255) if not hover else rgb(255, 255, 236))
    if hover:
        # two small sparkles at the top right corner
        c.set_source_rgba(*SUN)
        icons.draw_glyph(c, "sparkle", x + w - 6, y + 6, 0.42)
    return s


def make_side_buttons():
    written = []
    words = [w for w, _, _ in SIDE]
    px = _word_size(words, 20, FACE[2] - 10 - 17 - 4)
    for i, (word, glyph, base) in enumerate(SIDE):
        for hover in (False, True):
            name = "buttons/sidenav%d%s.png" % (i, "_hover" if hover else "")
            save(side_face(word, glyph, base, hover, px), name, background=CREAM_RGB)
            written.append(name)
    word, glyph, base = OK
    for hover in (False, True):
        name = "buttons/ok%s.png" % ("_hover" if hover else "")
        save(side_face(word, glyph, base, hover, px + 2), name, background=CREAM_RGB)
        written.append(name)
    return written


# ---------------------------------------------------------------------------
# Window buttons: 28x16, 27x16 (maximise, restore), 42x16 close; white back.
GLYPH_GREY = rgb(70, 84, 100)


def window_face(kind, w, h, hover):
    s, c = surface(w, h)
    c.set_source_rgba(1, 1, 1, 1)
    c.paint()
    if hover:
        col = rgb(214, 36, 56) if kind == "close" else SKY
        rounded_rect_corners(c, 1, 0, w - 2, h - 1, 0, 0, 6, 6)
        c.set_source(vgrad(0, h, [(0, lighter(col, 0.15)), (1, darker(col, 0.08))]))
        c.fill()
        fg = WHITE
    else:
        fg = GLYPH_GREY
    cx, cy = w / 2.0, h / 2.0 - 0.5
    c.set_source_rgba(*fg)
    c.set_line_width(1.6)
    c.set_line_cap(1)
    if kind == "minimize":
        c.move_to(cx - 4.5, cy + 3.5)
        c.line_to(cx + 4.5, cy + 3.5)
        c.set_line_width(2)
        c.stroke()
    elif kind == "maximize":
        rounded_rect(c, cx - 4.5, cy - 4, 9, 8, 1.5)
        c.set_line_width(1.5)
        c.stroke()
        c.rectangle(cx - 4.5, cy - 4, 9, 2)
        c.fill()
    elif kind == "restore":
        c.set_line_width(1.3)
        rounded_rect(c, cx - 2.5, cy - 5, 7.5, 6.5, 1.2)
        c.stroke()
        c.set_source_rgba(*(rgb(255, 255, 255) if not hover else rgb(90, 180, 235)))
        rounded_rect(c, cx - 5.5, cy - 1.5, 7.5, 6.5, 1.2)
        c.fill()
        c.set_source_rgba(*fg)
        rounded_rect(c, cx - 5.5, cy - 1.5, 7.5, 6.5, 1.2)
        c.stroke()
    elif kind == "close":
        c.set_line_width(2)
        r = 3.6
        c.move_to(cx - r, cy - r)
        c.line_to(cx + r, cy + r)
        c.move_to(cx + r, cy - r)
        c.line_to(cx - r, cy + r)
        c.stroke()
    return s


def make_window_buttons():
    written = []
    for kind, w in (("minimize", 28), ("maximize", 27), ("restore", 27), ("close", 42)):
        for hover in (False, True):
            name = "buttons/%s%s.png" % (kind, "_hover" if hover else "")
            save(window_face(kind, w, 16, hover), name)
            written.append(name)
    return written


# ---------------------------------------------------------------------------
# Option tabs 16x42 on the right edge; white back.
def tab_face(show, hover):
    w, h = 16, 42
    s, c = surface(w, h)
    # The tab stands on the cream option panel: paint cream around the shape,
    # and give the keyed top-left pixel a colour used nowhere else, so that
    # only that one pixel turns into the white back colour.
    c.set_source_rgba(*CREAM)
    c.paint()
    base = lighter(rgb(70, 172, 38), 0.1) if hover else rgb(70, 172, 38)

    def path(cc):
        rounded_rect_corners(cc, 2, 1, w - 2, h - 2, 7, 0, 0, 7)
    path(c)
    c.set_source(vgrad(0, h, [(0, lighter(base, 0.35)), (1, darker(base, 0.12))]))
    c.fill()
    rounded_rect_corners(c, 2.5, 1.5, w - 2.5, h - 3, 6.5, 0, 0, 6.5)
    c.set_source_rgba(*darker(base, 0.3))
    c.set_line_width(1)
    c.stroke()
    if hover:
        rounded_rect_corners(c, 3.5, 2.5, w - 4, h - 5, 5.5, 0, 0, 5.5)
        c.set_source_rgba(*alpha(SUN, 0.9))
        c.set_line_width(1.2)
        c.stroke()
    # chevron: "show" points left (the panel comes out), "hide" points right;
    # grip dots above and below
    cx, cy = 9.0, h / 2.0
    d = -1 if show else 1
    c.set_source_rgba(1, 1, 1, 1)
    c.move_to(cx - 2.0 * d, cy - 5.0)
    c.line_to(cx + 2.4 * d, cy)
    c.line_to(cx - 2.0 * d, cy + 5.0)
    c.set_line_width(2.2)
    c.set_line_cap(1)
    c.set_line_join(1)
    c.stroke()
    for yy in (7.5, 11.0, h - 11.0, h - 7.5):
        c.arc(cx, yy, 1.1, 0, 2 * math.pi)
        c.set_source_rgba(1, 1, 1, 0.8)
        c.fill()
    return s


TAB_KEY = (246, 246, 214)


def make_tabs():
    written = []
    for show in (True, False):
        for hover in (False, True):
            name = "buttons/%s%s.png" % ("showoptions" if show else "hideoptions",
                                         "_hover" if hover else "")
            img = save(tab_face(show, hover), name)
            img.putpixel((0, 0), TAB_KEY)
            save_image(img, name)
            written.append(name)
    return written


def make_all():
    return make_side_buttons() + make_window_buttons() + make_tabs()
