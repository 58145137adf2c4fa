"""Small controls: ring glyphs, mark picker pictures, volume track and thumb,
help navigation background, the monkey, message and update backgrounds, the
hand cursor."""
import math

from . import icons
from . import monkey as M
from .common import (BLUE, CREAM, CREAM_RGB, DISPLAY, GREEN, LEAF, MAGENTA, RED, SKY,
                     STEEL, SUN, WHITE, alpha, darker, hgrad, lighter, rgb, rgrad,
                     rounded_rect, save, shadow, surface, text_centered, vgrad)

RING_BLUE = rgb(11, 94, 181)


# ---------------------------------------------------------------------------
def ring_glyph(k):
    """16x18: white glyph on a square of RGB(11, 94, 181)."""
    w, h = 16, 18
    s, c = surface(w, h)
    c.set_source_rgba(*RING_BLUE)
    c.paint()
    # a hint of bevel: lighter top row, darker bottom row
    c.rectangle(0, 0, w, 1)
    c.set_source_rgba(*lighter(RING_BLUE, 0.25))
    c.fill()
    c.rectangle(0, h - 1, w, 1)
    c.set_source_rgba(*darker(RING_BLUE, 0.2))
    c.fill()
    c.set_source_rgba(1, 1, 1, 1)
    if k < 9:
        text_centered(c, str(k + 1), DISPLAY, 16, w / 2.0, h / 2.0, WHITE)
    else:
        icons.draw_glyph(c, "cross", w / 2.0, h / 2.0, 0.62)
    return s


def mark_choice(p, marked):
    """16x16: the picker toggle; marked shows digit p+1 on white."""
    w = h = 16
    s, c = surface(w, h)
    c.set_source_rgba(1, 1, 1, 1)
    c.paint()
    rounded_rect(c, 0.5, 0.5, w - 1, h - 1, 3)
    c.set_source_rgba(*(BLUE if marked else STEEL))
    c.set_line_width(1)
    c.stroke()
    if marked:
        text_centered(c, str(p + 1), DISPLAY, 14, w / 2.0, h / 2.0, BLUE)
    else:
        c.arc(w / 2.0, h / 2.0, 1.2, 0, 2 * math.pi)
        c.set_source_rgba(*alpha(STEEL, 0.7))
        c.fill()
    return s


def mark_close():
    w = h = 16
    s, c = surface(w, h)
    c.set_source_rgba(1, 1, 1, 1)
    c.paint()
    c.arc(8, 8, 7.3, 0, 2 * math.pi)
    c.set_source(vgrad(0, 16, [(0, lighter(RED, 0.2)), (1, darker(RED, 0.05))]))
    c.fill()
    c.set_source_rgba(1, 1, 1, 1)
    icons.draw_glyph(c, "cross", 8, 8, 0.55)
    return s


# ---------------------------------------------------------------------------
def volume_track():
    """89x14 (BITMAP 103): a groove with a rising wedge, on cream."""
    w, h = 89, 14
    s, c = surface(w, h)
    c.set_source_rgba(*CREAM)
    c.paint()
    # groove
    rounded_rect(c, 1, 3.5, w - 2, 7, 3.5)
    c.set_source(vgrad(3.5, 10.5, [(0, rgb(206, 214, 200)), (1, rgb(236, 238, 226))]))
    c.fill()
    # rising wedge: quiet on the left, loud on the right
    c.move_to(4, 8.8)
    c.line_to(w - 4, 5.0)
    c.line_to(w - 4, 8.8)
    c.close_path()
    c.set_source(hgrad(4, w - 4, [(0, LEAF), (0.6, rgb(89, 181, 11)), (1, MAGENTA)]))
    c.fill()
    rounded_rect(c, 1.5, 4, w - 3, 6, 3)
    c.set_source_rgba(*rgb(150, 165, 150, 0.8))
    c.set_line_width(1)
    c.stroke()
    return s


def volume_thumb():
    """14x14 knob with transparent corners."""
    w = h = 14
    s, c = surface(w, h)
    c.arc(7, 7, 6.3, 0, 2 * math.pi)
    c.set_source(rgrad(7, 7, 0, 7, [(0, lighter(MAGENTA, 0.45)), (0.7, MAGENTA), (1, darker(MAGENTA, 0.2))],
                       fx=5, fy=4.5))
    c.fill_preserve()
    c.set_source_rgba(*darker(MAGENTA, 0.4))
    c.set_line_width(1)
    c.stroke()
    c.arc(5.3, 4.8, 1.9, 0, 2 * math.pi)
    c.set_source_rgba(1, 1, 1, 0.8)
    c.fill()
    return s


# ---------------------------------------------------------------------------
HELP_LABEL_TOPS = [16 + 24 * i for i in range(10)]


def help_nav():
    """112x361 background of the help page list and the OK button."""
    w, h = 112, 361
    s, c = surface(w, h)
    c.set_source_rgba(*CREAM)
    c.paint()
    # a leafy rule at the top
    c.move_to(8, 6.5)
    c.line_to(w - 4, 6.5)
    c.set_source_rgba(*alpha(LEAF, 0.9))
    c.set_line_width(2)
    c.set_line_cap(1)
    c.stroke()
    # page numbers in small dots at the left; labels are right-aligned to x=110
    for i, top in enumerate(HELP_LABEL_TOPS):
        cy = top + 10
        c.arc(13, cy, 7, 0, 2 * math.pi)
        col = [SKY, rgb(70, 172, 38), rgb(242, 132, 18), MAGENTA, rgb(122, 63, 191)][i % 5]
        c.set_source_rgba(*lighter(col, 0.15))
        c.fill()
        text_centered(c, str(i + 1), DISPLAY, 11 if i < 9 else 10, 13, cy, WHITE)
        if i < 9:
            c.move_to(24, top + 22.5)
            c.line_to(w - 8, top + 22.5)
            c.set_source_rgba(*alpha(STEEL, 0.35))
            c.set_line_width(1)
            c.set_dash([1.5, 2.5])
            c.stroke()
            c.set_dash([])
    # hint under the list: the arrow keys turn the page
    y0 = 262
    for x, ang in ((4, math.pi), (w - 22, 0)):
        rounded_rect(c, x + 0.5, y0 + 0.5, 17, 16, 4)
        c.set_source_rgba(1, 1, 1, 1)
        c.fill_preserve()
        c.set_source_rgba(*STEEL)
        c.set_line_width(1)
        c.stroke()
        c.save()
        c.translate(x + 9, y0 + 8.5)
        c.rotate(ang)
        c.move_to(-2.5, -4)
        c.line_to(3, 0)
        c.line_to(-2.5, 4)
        c.close_path()
        c.set_source_rgba(*BLUE)
        c.fill()
        c.restore()
    text_centered(c, "turn page", DISPLAY, 12, w / 2.0, y0 + 8.5, alpha(BLUE, 0.9))
    return s


def monkey_picture():
    """110x110 waving monkey with a transparent background."""
    s, c = surface(110, 110)
    M.draw(c, "wave", 48, 44, 0.8)
    return s


# ---------------------------------------------------------------------------
def _paper(c, w, h, rim):
    c.set_source(vgrad(0, h, [(0, rgb(255, 254, 246)), (1, rgb(250, 248, 226))]))
    c.paint()
    # soft dots pattern in the corners
    for x, y, r, col in ((372, 146, 26, LEAF), (384, 12, 14, SKY), (10, 150, 16, SUN)):
        c.arc(x, y, r, 0, 2 * math.pi)
        c.set_source_rgba(*alpha(col, 0.22))
        c.fill()
    rounded_rect(c, 2, 2, w - 4, h - 4, 12)
    c.set_source_rgba(*rim)
    c.set_line_width(3)
    c.stroke()
    rounded_rect(c, 5.5, 5.5, w - 11, h - 11, 9)
    c.set_source_rgba(*alpha(rim, 0.35))
    c.set_line_width(1)
    c.set_dash([3, 3])
    c.stroke()
    c.set_dash([])


def _bubble(c, w, h, x, y, bw, bh, tail_y, fill=WHITE, line=STEEL):
    def path(cc):
        r = 14
        cc.new_sub_path()
        cc.arc(x + bw - r, y + r, r, -math.pi / 2, 0)
        cc.arc(x + bw - r, y + bh - r, r, 0, math.pi / 2)
        cc.arc(x + r, y + bh - r, r, math.pi / 2, math.pi)
        # tail on the left side pointing at the monkey
        cc.line_to(x, tail_y + 9)
        cc.line_to(x - 13, tail_y + 2)
        cc.line_to(x, tail_y - 4)
        cc.arc(x + r, y + r, r, math.pi, 3 * math.pi / 2)
        cc.close_path()
    shadow(c, w, h, path, color=(0.2, 0.25, 0.2, 0.25), blur=4, dy=2)
    path(c)
    c.set_source_rgba(*fill)
    c.fill_preserve()
    c.set_source_rgba(*line)
    c.set_line_width(1.5)
    c.stroke()


def message_bg():
    """392x160: pale paper, the monkey at the left speaking in a bubble.
    lblMessage (104,32) 265x81 and txtName (152,72) 169x25 fall inside the
    bubble; the answers (y 116..144) stand on the paper below it."""
    w, h = 392, 160
    s, c = surface(w, h)
    _paper(c, w, h, alpha(MAGENTA, 0.55))
    _bubble(c, w, h, 98, 16, 280, 96, 62)
    M.draw(c, "wave", 48, 62, 0.74, "happy")
    return s


def update_bg():
    """392x160: pale paper with a cheering monkey and a 'new!' burst at the
    left; everything right of x=100 is calm for the labels."""
    w, h = 392, 160
    s, c = surface(w, h)
    _paper(c, w, h, alpha(GREEN, 0.6))
    x, y, bw, bh = 100, 12, 280, 136
    rounded_rect(c, x, y, bw, bh, 14)
    c.set_source_rgba(1, 1, 1, 0.85)
    c.fill_preserve()
    c.set_source_rgba(*alpha(STEEL, 0.8))
    c.set_line_width(1.2)
    c.stroke()
    # burst
    cx, cy, n = 34, 34, 14
    c.save()
    c.translate(cx, cy)
    c.rotate(-0.2)
    for i in range(2 * n):
        r = 26 if i % 2 == 0 else 19
        a = math.pi * i / n
        (c.move_to if i == 0 else c.line_to)(r * math.cos(a), r * math.sin(a))
    c.close_path()
    c.set_source(rgrad(0, 0, 0, 26, [(0, lighter(SUN, 0.3)), (1, rgb(255, 170, 20))]))
    c.fill()
    text_centered(c, "new!", DISPLAY, 17, 0, 0, RED)
    c.restore()
    M.draw(c, "cheer", 52, 92, 0.58, "grin")
    return s


# ---------------------------------------------------------------------------
def hand_cursor():
    """32x32 pointing hand; hotspot at the fingertip (11, 1)."""
    s, c = surface(32, 32)

    def hand_path(cc):
        # index finger
        cc.move_to(9, 4)
        cc.curve_to(9, 0.8, 13.5, 0.8, 13.5, 4)
        cc.line_to(13.5, 12.5)
        # middle finger knuckle
        cc.curve_to(13.8, 10.3, 18, 10.3, 18, 12.8)
        # ring finger knuckle
        cc.curve_to(18.4, 11.0, 22.3, 11.0, 22.3, 13.6)
        # little finger knuckle
        cc.curve_to(22.8, 12.1, 26.5, 12.4, 26.5, 15.0)
        cc.line_to(26.5, 21.5)
        cc.curve_to(26.5, 26.5, 23, 29.5, 18.5, 29.5)
        cc.line_to(15.0, 29.5)
        cc.curve_to(12.5, 29.5, 11.0, 28.5, 9.5, 26.5)
        # thumb
        cc.line_to(4.0, 19.5)
        cc.curve_to(2.4, 17.3, 5.0, 14.8, 7.2, 16.6)
        cc.line_to(9, 18.2)
        cc.close_path()

    shadow(c, 32, 32, hand_path, color=(0, 0, 0, 0.35), blur=1.5, dx=1, dy=1)
    hand_path(c)
    c.set_source_rgba(1, 1, 1, 1)
    c.fill_preserve()
    c.set_source_rgba(0, 0, 0, 1)
    c.set_line_width(1.3)
    c.set_line_join(1)
    c.stroke()
    c.set_line_width(1)
    c.set_line_cap(1)
    for x, y0, y1 in ((13.5, 12.5, 17), (18, 12.8, 17.5), (22.3, 13.6, 18)):
        c.move_to(x, y0)
        c.line_to(x, y1)
        c.stroke()
    # a cuff in the game's magenta
    c.move_to(12.0, 29.0)
    c.line_to(23.5, 29.0)
    c.set_source_rgba(*MAGENTA)
    c.set_line_width(2)
    c.stroke()
    return s


HAND_HOTSPOT = (11, 1)


def make_all():
    written = []
    for k in range(10):
        name = "controls/ring%d.png" % k
        save(ring_glyph(k), name)
        written.append(name)
    for p in range(9):
        name = "controls/markchoice%d.png" % p
        save(mark_choice(p, True), name)
        written.append(name)
        name = "controls/markchoice%d.png" % (p + 9)
        save(mark_choice(p, False), name)
        written.append(name)
    save(mark_close(), "controls/markclose.png")
    save(volume_track(), "bitmap/103.png", background=CREAM_RGB)
    save(volume_thumb(), "controls/volume_thumb.png", mode="RGBA")
    save(help_nav(), "controls/helpnav.png")
    save(monkey_picture(), "controls/monkey.png", mode="RGBA")
    save(message_bg(), "controls/message_bg.png")
    save(update_bg(), "controls/update_bg.png")
    save(hand_cursor(), "controls/hand.png", mode="RGBA")
    written += ["controls/markclose.png", "bitmap/103.png", "controls/volume_thumb.png",
                "controls/helpnav.png", "controls/monkey.png", "controls/message_bg.png",
                "controls/update_bg.png", "controls/hand.png"]
    return written
