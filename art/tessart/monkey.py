"""The Tessuma monkey, drawn as vector shapes so that any size stays crisp.

All coordinates are in a design space where the head is a circle of radius 30
centred on (0, 0); callers translate and scale. Poses: "face" (head only),
"wave", "point", "sleep", "cheer".
"""
import math

from .common import rgb, rgrad, lgrad

FUR = rgb(156, 98, 56)
FUR_LIGHT = rgb(190, 128, 78)
FUR_DARK = rgb(112, 64, 34)
SKIN = rgb(252, 217, 176)
SKIN_SHADE = rgb(236, 188, 140)
LINE = rgb(74, 40, 20)
EYE = rgb(40, 24, 16)
CHEEK = rgb(255, 128, 128, 0.45)
MOUTH = rgb(150, 30, 40)
TONGUE = rgb(255, 120, 120)
BANANA = rgb(255, 214, 64)
BANANA_DARK = rgb(214, 160, 20)

OUT = 1.8   # outline width in design units


def _stroke_fill(c, fill, line=LINE, width=OUT):
    c.set_source(fill) if not isinstance(fill, tuple) else c.set_source_rgba(*fill)
    c.fill_preserve()
    c.set_source_rgba(*line)
    c.set_line_width(width)
    c.stroke()


def _fur(cx, cy, r):
    return rgrad(cx, cy, 0, r * 1.25, [(0, FUR_LIGHT), (0.55, FUR), (1, FUR_DARK)],
                 fx=cx - r * 0.35, fy=cy - r * 0.45)


def _ear(c, side):
    x = 31 * side
    c.arc(x, 3, 12, 0, 2 * math.pi)
    _stroke_fill(c, _fur(x, 0, 12))
    c.arc(x + 1.2 * side, 3.5, 7, 0, 2 * math.pi)
    c.set_source_rgba(*SKIN_SHADE)
    c.fill()


def _face_path(c):
    # eye area: two circles, muzzle: a wide ellipse; drawn as one filled union
    c.new_sub_path()
    c.arc(-10.5, -3, 13.5, 0, 2 * math.pi)
    c.new_sub_path()
    c.arc(10.5, -3, 13.5, 0, 2 * math.pi)
    c.new_sub_path()
    c.save()
    c.translate(0, 12)
    c.scale(23, 15)
    c.arc(0, 0, 1, 0, 2 * math.pi)
    c.restore()


def head(c, mood="happy", look=(0.0, 0.0)):
    """Head centred at (0,0). mood: happy, grin, sleep, wink, surprised."""
    for side in (-1, 1):
        _ear(c, side)
    # head
    c.arc(0, 0, 30, 0, 2 * math.pi)
    _stroke_fill(c, _fur(0, 0, 30))
    # tuft of hair
    c.move_to(-6, -28.5)
    c.curve_to(-5, -38, 3, -41, 6, -35)
    c.curve_to(2, -37, 0, -33, 3, -29)
    c.close_path()
    _stroke_fill(c, FUR, width=OUT * 0.9)
    # face
    c.save()
    _face_path(c)
    c.set_fill_rule(0)  # winding: union of the three shapes
    c.set_source(lgrad(0, -16, 0, 27, [(0, SKIN), (1, SKIN_SHADE)]))
    c.fill()
    c.restore()
    # cheeks
    for side in (-1, 1):
        c.save()
        c.translate(17.5 * side, 10)
        c.scale(5.2, 3.2)
        c.arc(0, 0, 1, 0, 2 * math.pi)
        c.restore()
        c.set_source_rgba(*CHEEK)
        c.fill()
    # eyes
    lx, ly = look
    if mood == "sleep":
        c.set_source_rgba(*EYE)
        c.set_line_width(2.2)
        c.set_line_cap(1)
        for side in (-1, 1):
            c.arc_negative(10 * side, -3, 4.5, math.pi * 0.95, math.pi * 0.05)
            c.stroke()
    else:
        for side in (-1, 1):
            if mood == "wink" and side == 1:
                c.set_source_rgba(*EYE)
                c.set_line_width(2.2)
                c.set_line_cap(1)
                c.arc(10 * side, -1.5, 4.5, math.pi * 1.1, math.pi * 1.9)
                c.stroke()
                continue
            ry = 6.6 if mood == "surprised" else 6.0
            c.save()
            c.translate(10 * side + lx, -3.5 + ly)
            c.scale(4.4, ry)
            c.arc(0, 0, 1, 0, 2 * math.pi)
            c.restore()
            c.set_source_rgba(*EYE)
            c.fill()
            c.arc(10 * side + lx + 1.5, -5.8 + ly, 1.7, 0, 2 * math.pi)
            c.set_source_rgba(1, 1, 1, 1)
            c.fill()
            c.arc(10 * side + lx - 1.3, -1.2 + ly, 0.8, 0, 2 * math.pi)
            c.fill()
    # brows
    c.set_source_rgba(*FUR_DARK)
    c.set_line_width(1.8)
    c.set_line_cap(1)
    for side in (-1, 1):
        lift = -1.5 if mood == "surprised" else 0
        c.move_to(6 * side, -12.5 + lift)
        c.curve_to(9 * side, -14.5 + lift, 12 * side, -14.5 + lift, 15 * side, -12.5 + lift)
        c.stroke()
    # nose
    c.set_source_rgba(*LINE)
    for side in (-1, 1):
        c.save()
        c.translate(2.8 * side, 6.5)
        c.scale(1.5, 1.1)
        c.arc(0, 0, 1, 0, 2 * math.pi)
        c.restore()
        c.fill()
    # mouth
    if mood in ("grin", "wink"):
        c.move_to(-10, 12)
        c.curve_to(-6, 13.5, 6, 13.5, 10, 12)
        c.curve_to(8, 22, -8, 22, -10, 12)
        c.close_path()
        c.set_source_rgba(*MOUTH)
        c.fill_preserve()
        c.save()
        c.clip()
        c.save()
        c.translate(0, 20.5)
        c.scale(6.5, 4)
        c.arc(0, 0, 1, 0, 2 * math.pi)
        c.restore()
        c.set_source_rgba(*TONGUE)
        c.fill()
        c.rectangle(-10, 11, 20, 2.6)
        c.set_source_rgba(1, 1, 1, 1)
        c.fill()
        c.restore()
        c.move_to(-10, 12)
        c.curve_to(-6, 13.5, 6, 13.5, 10, 12)
        c.curve_to(8, 22, -8, 22, -10, 12)
        c.close_path()
        c.set_source_rgba(*LINE)
        c.set_line_width(1.4)
        c.stroke()
    elif mood == "surprised":
        c.save()
        c.translate(0, 15.5)
        c.scale(3.2, 3.8)
        c.arc(0, 0, 1, 0, 2 * math.pi)
        c.restore()
        c.set_source_rgba(*MOUTH)
        c.fill()
    elif mood == "sleep":
        c.set_source_rgba(*LINE)
        c.set_line_width(1.6)
        c.move_to(-4, 15)
        c.curve_to(-2, 16.5, 2, 16.5, 4, 15)
        c.stroke()
    else:
        c.set_source_rgba(*LINE)
        c.set_line_width(1.9)
        c.set_line_cap(1)
        c.move_to(-9, 12.5)
        c.curve_to(-5, 19, 5, 19, 9, 12.5)
        c.stroke()


def _limb(c, pts, width=9.5):
    """A furry arm or leg along the points, with an outline."""
    c.set_line_cap(1)
    c.set_line_join(1)
    for w, col in ((width + OUT * 2, LINE), (width, FUR)):
        c.move_to(*pts[0])
        if len(pts) == 3:
            c.curve_to(pts[1][0], pts[1][1], pts[1][0], pts[1][1], pts[2][0], pts[2][1])
        else:
            for p in pts[1:]:
                c.line_to(*p)
        c.set_source_rgba(*col)
        c.set_line_width(w)
        c.stroke()


def _hand(c, x, y, r=6.2, open_hand=False, angle=0.0):
    if open_hand:
        c.save()
        c.translate(x, y)
        c.rotate(angle)
        for i, a in enumerate((-0.75, -0.25, 0.25, 0.75)):
            fx, fy = math.sin(a) * r * 1.15, -math.cos(a) * r * 1.15
            c.save()
            c.translate(fx, fy)
            c.rotate(a)
            c.scale(2.1, 3.2)
            c.arc(0, 0, 1, 0, 2 * math.pi)
            c.restore()
            _stroke_fill(c, SKIN, width=OUT * 0.8)
        c.restore()
    c.arc(x, y, r, 0, 2 * math.pi)
    _stroke_fill(c, SKIN)


def _tail(c, side=-1):
    c.set_line_cap(1)
    for w, col in ((6.5 + OUT * 2, LINE), (6.5, FUR)):
        c.move_to(14 * side, 66)
        c.curve_to(40 * side, 74, 52 * side, 50, 42 * side, 36)
        c.curve_to(36 * side, 28, 28 * side, 36, 34 * side, 42)
        c.set_source_rgba(*col)
        c.set_line_width(w)
        c.stroke()


def body(c):
    # torso
    c.save()
    c.translate(0, 48)
    c.scale(22, 24)
    c.arc(0, 0, 1, 0, 2 * math.pi)
    c.restore()
    _stroke_fill(c, _fur(0, 44, 24))
    c.save()
    c.translate(0, 51)
    c.scale(14, 17)
    c.arc(0, 0, 1, 0, 2 * math.pi)
    c.restore()
    c.set_source(lgrad(0, 34, 0, 68, [(0, SKIN), (1, SKIN_SHADE)]))
    c.fill()


def banana(c, x, y, s=1.0, angle=0.0):
    c.save()
    c.translate(x, y)
    c.rotate(angle)
    c.scale(s, s)
    c.move_to(-12, -2)
    c.curve_to(-8, 10, 8, 10, 13, -4)
    c.curve_to(8, 3, -6, 3, -12, -2)
    c.close_path()
    c.set_source(lgrad(0, -4, 0, 8, [(0, BANANA), (1, BANANA_DARK)]))
    c.fill_preserve()
    c.set_source_rgba(*LINE)
    c.set_line_width(OUT * 0.8)
    c.stroke()
    c.move_to(13, -4)
    c.line_to(15.5, -7)
    c.set_line_width(2.4)
    c.set_line_cap(1)
    c.stroke()
    c.restore()


def monkey(c, pose="wave", mood=None):
    """Draws the monkey in design space. Height of a full monkey: about
    -42 (tuft) to 74 (bottom); width about -45..55 with arms."""
    if pose == "face":
        head(c, mood or "happy")
        return
    if pose == "sleep":
        _tail(c, 1)
        body(c)
        # arms folded on the belly
        _limb(c, [(-18, 36), (-16, 54), (-2, 56)], 9)
        _limb(c, [(18, 36), (16, 54), (2, 56)], 9)
        _hand(c, -1, 55.5, 5.6)
        _hand(c, 3, 56.5, 5.6)
        # feet
        for side in (-1, 1):
            c.save()
            c.translate(12 * side, 71)
            c.scale(9, 5)
            c.arc(0, 0, 1, 0, 2 * math.pi)
            c.restore()
            _stroke_fill(c, SKIN)
        c.save()
        c.rotate(-0.18)
        head(c, mood or "sleep")
        c.restore()
        return
    _tail(c, -1)
    # feet
    for side in (-1, 1):
        c.save()
        c.translate(12 * side, 71)
        c.scale(9, 5)
        c.arc(0, 0, 1, 0, 2 * math.pi)
        c.restore()
        _stroke_fill(c, SKIN)
    body(c)
    if pose == "wave":
        _limb(c, [(-18, 38), (-30, 52), (-20, 62)])
        _hand(c, -19, 61)
        head(c, mood or "grin")
        _limb(c, [(19, 37), (46, 30), (50, -6)])
        _hand(c, 50, -9, 6.6, open_hand=True, angle=0.3)
    elif pose == "point":
        _limb(c, [(-18, 38), (-26, 54), (-16, 62)])
        _hand(c, -15, 61)
        _limb(c, [(18, 38), (34, 40), (50, 30)])
        # pointing finger
        c.save()
        c.translate(52, 29)
        c.rotate(-0.55)
        c.save()
        c.translate(8, 0)
        c.scale(6, 2.3)
        c.arc(0, 0, 1, 0, 2 * math.pi)
        c.restore()
        _stroke_fill(c, SKIN, width=OUT * 0.8)
        c.restore()
        _hand(c, 52, 29, 6)
        head(c, mood or "happy", look=(1.2, 0))
    elif pose == "cheer":
        _limb(c, [(-18, 36), (-40, 28), (-42, 4)])
        _hand(c, -42, 3, 6.4, open_hand=True, angle=-0.25)
        _limb(c, [(18, 36), (40, 28), (42, 4)])
        _hand(c, 42, 3, 6.4, open_hand=True, angle=0.25)
        head(c, mood or "grin")
    else:
        raise ValueError(pose)


def draw(c, pose, cx, cy, scale, mood=None):
    """Draws the monkey with its head centre at (cx, cy)."""
    c.save()
    c.translate(cx, cy)
    c.scale(scale, scale)
    monkey(c, pose, mood)
    c.restore()
