"""Small glyphs for the buttons, drawn in a 20x20 box centred on (0, 0).

Each function fills/strokes with the current source; callers set colour,
translate and scale.
"""
import math

from .common import rounded_rect


def sparkle(c):
    def star(x, y, r, k=0.28):
        c.move_to(x, y - r)
        c.curve_to(x + r * k, y - r * k, x + r * k, y - r * k, x + r, y)
        c.curve_to(x + r * k, y + r * k, x + r * k, y + r * k, x, y + r)
        c.curve_to(x - r * k, y + r * k, x - r * k, y + r * k, x - r, y)
        c.curve_to(x - r * k, y - r * k, x - r * k, y - r * k, x, y - r)
        c.close_path()
        c.fill()
    star(-1.5, 1.5, 8.5)
    star(6.5, -6.0, 3.8)


def folder(c):
    c.set_line_join(1)
    # back
    c.move_to(-9, -6)
    c.line_to(-3.5, -6)
    c.line_to(-1.5, -3.8)
    c.line_to(8, -3.8)
    c.line_to(8, 7)
    c.line_to(-9, 7)
    c.close_path()
    c.fill()
    # open front flap, a shade darker via alpha cut
    c.save()
    c.set_operator(0)  # CLEAR a gap line
    c.move_to(-9.8, -0.6)
    c.line_to(9.8, -0.6)
    c.set_line_width(1.6)
    c.stroke()
    c.restore()
    c.move_to(-7.2, 0.3)
    c.line_to(10.2, 0.3)
    c.line_to(7.9, 7)
    c.line_to(-9.2, 7)
    c.close_path()
    c.fill()


def disk(c):
    rounded_rect(c, -8, -8, 16, 16, 2.5)
    c.fill()
    c.save()
    c.set_operator(0)
    rounded_rect(c, -4.6, -8, 9.2, 5.6, 0.8)   # shutter
    c.fill()
    rounded_rect(c, -5.2, 1.2, 10.4, 6.8, 1)   # label
    c.fill()
    c.restore()
    c.rectangle(1.2, -7.1, 2.2, 3.8)
    c.fill()
    c.save()
    c.set_line_width(1)
    c.move_to(-3.5, 3.6)
    c.line_to(3.5, 3.6)
    c.move_to(-3.5, 5.6)
    c.line_to(3.5, 5.6)
    c.stroke()
    c.restore()


def printer(c):
    # paper in
    c.rectangle(-5, -9, 10, 6)
    c.fill()
    # body
    rounded_rect(c, -9.5, -3.5, 19, 9.5, 2.5)
    c.fill()
    c.save()
    c.set_operator(0)
    c.rectangle(-6, 1.5, 12, 2)
    c.fill()
    c.restore()
    # paper out
    c.rectangle(-5.5, 2.5, 11, 7.2)
    c.fill()
    c.save()
    c.set_operator(0)
    c.set_line_width(1)
    for y in (5.0, 7.2):
        c.move_to(-3.5, y)
        c.line_to(3.5, y)
    c.stroke()
    c.arc(6.6, -0.8, 1.1, 0, 2 * math.pi)
    c.fill()
    c.restore()


def bulb(c):
    c.arc(0, -2.6, 6.6, math.radians(140), math.radians(40))
    c.line_to(3.2, 4.2)
    c.line_to(-3.2, 4.2)
    c.close_path()
    c.fill()
    rounded_rect(c, -3.3, 5.2, 6.6, 1.8, 0.9)
    c.fill()
    rounded_rect(c, -2.5, 7.6, 5, 1.8, 0.9)
    c.fill()
    # shine
    c.save()
    c.set_operator(0)
    c.set_line_width(1.5)
    c.set_line_cap(1)
    c.arc(0, -2.6, 3.8, math.radians(195), math.radians(255))
    c.stroke()
    c.restore()


def trophy(c):
    c.move_to(-6.5, -8)
    c.line_to(6.5, -8)
    c.curve_to(6.5, -1, 4, 2.5, 0, 2.5)
    c.curve_to(-4, 2.5, -6.5, -1, -6.5, -8)
    c.close_path()
    c.fill()
    c.set_line_width(1.8)
    for s in (-1, 1):
        c.move_to(6.2 * s, -6.2)
        c.curve_to(10.5 * s, -6.2, 10.5 * s, -0.5, 4.4 * s, 0.2)
        c.stroke()
    c.rectangle(-1.4, 2, 2.8, 3.6)
    c.fill()
    rounded_rect(c, -5, 5.2, 10, 3.6, 1)
    c.fill()


def question(c):
    c.arc(0, 0, 9, 0, 2 * math.pi)
    c.fill()
    c.save()
    c.set_operator(0)
    c.set_line_width(2.6)
    c.set_line_cap(1)
    c.arc(0, -2.6, 3.4, math.radians(200), math.radians(410))
    c.curve_to(0, 0.5, 0, 1, 0, 2.4)
    c.stroke()
    c.arc(0, 5.8, 1.6, 0, 2 * math.pi)
    c.fill()
    c.restore()


def check(c):
    c.set_line_width(3.6)
    c.set_line_cap(1)
    c.set_line_join(1)
    c.move_to(-7.5, 0.5)
    c.line_to(-2.5, 5.5)
    c.line_to(7.5, -6)
    c.stroke()


def cross(c, r=6.0, w=3.4):
    c.set_line_width(w)
    c.set_line_cap(1)
    c.move_to(-r, -r)
    c.line_to(r, r)
    c.move_to(r, -r)
    c.line_to(-r, r)
    c.stroke()


GLYPHS = {
    "sparkle": sparkle, "folder": folder, "disk": disk, "printer": printer,
    "bulb": bulb, "trophy": trophy, "question": question, "check": check,
    "cross": cross,
}


def draw_glyph(c, name, cx, cy, scale=1.0):
    c.save()
    c.translate(cx, cy)
    c.scale(scale, scale)
    GLYPHS[name](c)
    c.restore()
