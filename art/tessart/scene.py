"""The main form's background: backdrop, panels, title and the board grid.

The same drawing code makes BITMAP 101 (skin on), BITMAP 102 (skin off and
printing) and the parts of the frames that must line up with the board.
"""
import math

from . import monkey as M
from .common import (BLUE, BOARD_X, BOARD_Y, BORDER, BOX, CELL, CREAM, DISPLAY, FORM_H,
                     FORM_W, FRAME, GAP, GREEN, LEAF, MAGENTA, ORANGE, PURPLE, RED,
                     STEEL, TEAL, alpha, box_pos, darker, glow_text, lighter, lgrad,
                     mix, rgb, rgrad, rounded_rect, rounded_rect_corners, shadow,
                     surface, vgrad, layout)

# Board frame: the cells plus a BORDER-pixel rim (x 114..511, y 58..455)
BF_X, BF_Y = BOARD_X - BORDER, BOARD_Y - BORDER
BF_W = BF_H = 9 * CELL + 2 * GAP + 2 * BORDER   # 397
BF_R = 11
TILE_R = 5

# Card of the whole window (2 px white rim at left and top; the form adds
# its own 2 px strip of window colour at right and bottom)
CARD = (2, 2, FORM_W - 2, FORM_H - 2)
CARD_R = 12

# Side column panel (buttons at x 24/25..111, y 26..452)
LEFT_PANEL = (10, 14, 112, 452)     # x, y, w, h  (right part hides behind board)
# Right panel (labels x 510..622, y 98..456); runs to the card's right edge
RIGHT_PANEL = (500, 92, FORM_W - 500, 372)
SCORE_CARD = (513, 99, 107, 90)

# Window buttons 528..625 x 0..16 sit on a white notch
NOTCH_X = 519
NOTCH_H = 21

BOARD_FILL_TOP = rgb(23, 110, 196)
BOARD_FILL_BOT = rgb(12, 78, 160)

SKY_TOP = rgb(92, 204, 235)
SKY_MID = rgb(130, 220, 226)
SKY_BOT = rgb(150, 214, 120)


def board_frame_path(c):
    rounded_rect(c, BF_X, BF_Y, BF_W, BF_H, BF_R)


def tile_path(c, br, bc, inset=0.0):
    x, y = box_pos(br, bc)
    rounded_rect(c, x + inset, y + inset, BOX - 2 * inset, BOX - 2 * inset, TILE_R)


def paint_backdrop(c):
    """Sky-to-leaf gradient with soft bubbles and a few jungle leaves."""
    c.save()
    rounded_rect(c, *CARD, CARD_R)
    c.clip()
    c.set_source(lgrad(0, 0, 200, FORM_H, [(0, SKY_TOP), (0.55, SKY_MID), (1, SKY_BOT)]))
    c.paint()
    # sunny glow behind the title
    c.set_source(rgrad(312, 10, 0, 260, [(0, rgb(255, 255, 235, 0.55)), (1, rgb(255, 255, 235, 0))]))
    c.paint()
    # bubbles (confetti of light)
    bubbles = [(40, 468, 26, 0.16), (150, 470, 14, 0.20), (300, 472, 20, 0.14),
               (470, 468, 16, 0.18), (600, 40, 22, 0.14), (110, 8, 14, 0.20),
               (488, 20, 12, 0.22), (140, 36, 6, 0.35), (486, 48, 5, 0.35),
               (5, 300, 12, 0.15), (630, 470, 18, 0.16), (230, 466, 8, 0.3),
               (395, 470, 9, 0.3), (540, 62, 7, 0.3), (620, 84, 5, 0.35)]
    for x, y, r, a in bubbles:
        c.arc(x, y, r, 0, 2 * math.pi)
        c.set_source(rgrad(x, y, 0, r, [(0, rgb(255, 255, 255, a * 0.4)), (0.85, rgb(255, 255, 255, a)),
                                        (1, rgb(255, 255, 255, a * 1.6))]))
        c.fill()
    c.restore()


def paint_leaves(c):
    """Two jungle leaves peeking in at the lower corners."""
    def leaf(cx, cy, length, angle, col):
        c.save()
        c.translate(cx, cy)
        c.rotate(angle)
        c.move_to(0, 0)
        c.curve_to(length * 0.3, -length * 0.28, length * 0.75, -length * 0.22, length, 0)
        c.curve_to(length * 0.75, length * 0.22, length * 0.3, length * 0.28, 0, 0)
        c.close_path()
        c.set_source(lgrad(0, 0, length, 0, [(0, col), (1, lighter(col, 0.25))]))
        c.fill()
        c.move_to(0, 0)
        c.line_to(length * 0.95, 0)
        c.set_source_rgba(*lighter(col, 0.45))
        c.set_line_width(1.2)
        c.stroke()
        c.restore()
    c.save()
    rounded_rect(c, *CARD, CARD_R)
    c.clip()
    dark = rgb(58, 150, 70)
    mid = rgb(84, 176, 84)
    leaf(0, 478, 70, -0.9, dark)
    leaf(0, 478, 60, -0.35, mid)
    leaf(638, 478, 64, math.pi + 0.75, dark)
    leaf(638, 478, 54, math.pi + 0.3, mid)
    c.restore()


def paint_notch(c):
    """White tab at the top right that carries the window buttons."""
    c.save()
    c.move_to(NOTCH_X - 12, 0)
    c.line_to(FORM_W, 0)
    c.line_to(FORM_W, NOTCH_H)
    c.line_to(NOTCH_X + 10, NOTCH_H)
    c.arc(NOTCH_X + 10, NOTCH_H - 10, 10, math.pi / 2, math.pi)
    c.line_to(NOTCH_X, 12)
    c.arc_negative(NOTCH_X - 10, 12, 10, 0, -math.pi / 2)
    c.close_path()
    c.set_source_rgba(1, 1, 1, 1)
    c.fill()
    c.restore()


def paint_panel(c, x, y, w, h, r=14, corners=None):
    def path(cc):
        if corners:
            rounded_rect_corners(cc, x, y, w, h, *corners)
        else:
            rounded_rect(cc, x, y, w, h, r)
    shadow(c, FORM_W, FORM_H, path, color=(0.05, 0.2, 0.3, 0.35), blur=6, dy=3)
    path(c)
    c.set_source_rgba(*CREAM)
    c.fill()
    # a thin leaf-green rim drawn just inside the edge
    c.save()
    if corners:
        rounded_rect_corners(c, x + 1.5, y + 1.5, w - 3, h - 3, *[max(0, k - 1.5) for k in corners])
    else:
        rounded_rect(c, x + 1.5, y + 1.5, w - 3, h - 3, r - 1.5)
    c.set_source_rgba(*alpha(darker(LEAF, 0.1), 0.9))
    c.set_line_width(2)
    c.stroke()
    c.restore()


def paint_left_panel(c):
    x, y, w, h = LEFT_PANEL
    paint_panel(c, x, y, w, h, 14)


def paint_right_panel(c):
    x, y, w, h = RIGHT_PANEL
    paint_panel(c, x, y, w, h, corners=(14, 0, 0, 14))
    # score card: white, with a soft inner border
    sx, sy, sw, sh = SCORE_CARD
    rounded_rect(c, sx, sy, sw, sh, 9)
    c.set_source(vgrad(sy, sy + sh, [(0, rgb(255, 255, 255)), (1, rgb(252, 252, 240))]))
    c.fill_preserve()
    c.set_source_rgba(*alpha(STEEL, 0.8))
    c.set_line_width(1.5)
    c.stroke()
    # dotted separators between option groups
    def dots(y0, x0=518, x1=618, col=STEEL):
        xx = x0
        while xx <= x1:
            c.arc(xx, y0, 1.1, 0, 2 * math.pi)
            c.set_source_rgba(*alpha(col, 0.75))
            c.fill()
            xx += 5
    dots(226)
    dots(326)
    dots(416)


def paint_score_monkey(c):
    """The mascot peeking over the right panel."""
    sx, sy, sw, sh = SCORE_CARD
    c.save()
    # clip so the monkey sits behind the panel (only the part above shows)
    c.rectangle(0, 0, FORM_W, RIGHT_PANEL[1] + 1)
    c.clip()
    M.draw(c, "face", sx + sw / 2 + 1, 70, 0.8, "happy")
    c.restore()


def paint_monkey_hands(c):
    sx, sy, sw, sh = SCORE_CARD
    # two hands holding the rim of the panel
    for hx in (sx + sw / 2 - 21, sx + sw / 2 + 23):
        c.save()
        c.translate(hx, RIGHT_PANEL[1] + 1)
        c.scale(0.78, 0.78)
        c.new_path()
        for i in (-1, 0, 1):
            c.save()
            c.translate(i * 3.6, 0)
            c.scale(2.4, 3.6)
            c.arc(0, 0, 1, 0, 2 * math.pi)
            c.restore()
            c.set_source_rgba(*M.SKIN)
            c.fill_preserve()
            c.set_source_rgba(*M.LINE)
            c.set_line_width(1.4)
            c.stroke()
        c.restore()


def paint_board_base(c, skinned=True):
    if skinned:
        shadow(c, FORM_W, FORM_H, board_frame_path, color=(0.0, 0.12, 0.3, 0.45), blur=7, dy=4)
        board_frame_path(c)
        c.set_source(vgrad(BF_Y, BF_Y + BF_H, [(0, BOARD_FILL_TOP), (1, BOARD_FILL_BOT)]))
        c.fill()
        # fine highlight on the rim
        rounded_rect(c, BF_X + 0.5, BF_Y + 0.5, BF_W - 1, BF_H - 1, BF_R - 0.5)
        c.set_source_rgba(1, 1, 1, 0.35)
        c.set_line_width(1)
        c.stroke()


def paint_tiles(c, skinned=True):
    """The nine boxes with their cell lines."""
    for br in range(3):
        for bc in range(3):
            x, y = box_pos(br, bc)
            if skinned:
                tint = rgb(255, 255, 255) if (br + bc) % 2 == 0 else rgb(241, 248, 255)
                tile_path(c, br, bc)
                c.set_source(vgrad(y, y + BOX, [(0, tint), (1, mix(tint, rgb(232, 242, 252), 0.5))]))
                c.fill()
                line = rgb(176, 198, 224)
            else:
                tile_path(c, br, bc)
                c.set_source_rgba(1, 1, 1, 1)
                c.fill()
                line = rgb(150, 150, 150)
            # thin lines on the last pixel of the first two cells of the box
            c.set_source_rgba(*line)
            for k in (1, 2):
                lx = x + k * CELL - 1
                c.rectangle(lx, y + 3, 1, BOX - 6)
                c.fill()
                ly = y + k * CELL - 1
                c.rectangle(x + 3, ly, BOX - 6, 1)
                c.fill()
            if not skinned:
                tile_path(c, br, bc, inset=0.75)
                c.set_source_rgba(0.12, 0.12, 0.12, 1)
                c.set_line_width(1.5)
                c.stroke()


def paint_title(c, skinned=True):
    cx, cy = (BOARD_X + BOARD_X + 9 * CELL + 2 * GAP) / 2.0, 29
    px = 35
    word1, word2 = "Tessuma", "Sudoku"
    lay1 = layout(c, word1, DISPLAY, px, letter_spacing=0.5)
    lay2 = layout(c, word2, DISPLAY, px, letter_spacing=0.5)
    i1, _ = lay1.get_pixel_extents()
    i2, _ = lay2.get_pixel_extents()
    space = 12
    total = i1.width + space + i2.width
    x1 = cx - total / 2.0 - i1.x
    x2 = cx - total / 2.0 + i1.width + space - i2.x
    base_y = cy - (i1.y + i1.height / 2.0)
    from gi.repository import PangoCairo

    def word_path(cc, lay, x):
        cc.move_to(round(x), round(base_y))
        PangoCairo.layout_path(cc, lay)

    if skinned:
        # halo + sticker outline + coloured letters
        def all_paths(cc):
            word_path(cc, lay1, x1)
            word_path(cc, lay2, x2)
            cc.set_source_rgba(1, 1, 1, 1)
            cc.fill()
        glow_text(c, FORM_W, FORM_H, all_paths, rgb(10, 70, 140, 0.45), 5)
        c.save()
        word_path(c, lay1, x1)
        word_path(c, lay2, x2)
        c.set_line_join(1)
        c.set_line_width(7)
        c.set_source_rgba(*rgb(11, 70, 150))
        c.stroke()
        c.restore()
        c.save()
        word_path(c, lay1, x1)
        word_path(c, lay2, x2)
        c.set_line_join(1)
        c.set_line_width(4)
        c.set_source_rgba(1, 1, 1, 1)
        c.stroke()
        c.restore()
        # "Tessuma" in warm sun colours, "Sudoku" letter by letter
        c.save()
        word_path(c, lay1, x1)
        c.set_source(vgrad(base_y + i1.y, base_y + i1.y + i1.height,
                           [(0, rgb(255, 120, 40)), (1, RED)]))
        c.fill()
        c.restore()
        colours = [BLUE, GREEN, MAGENTA, ORANGE, TEAL, PURPLE]
        # draw "Sudoku" glyph by glyph for the rainbow
        x = x2
        for ch, col in zip(word2, colours):
            lay = layout(c, ch, DISPLAY, px)
            ink, log = lay.get_pixel_extents()
            c.save()
            c.move_to(round(x), round(base_y))
            PangoCairo.layout_path(c, lay)
            c.set_source(vgrad(base_y + i2.y, base_y + i2.y + i2.height,
                               [(0, lighter(col, 0.2)), (1, darker(col, 0.1))]))
            c.fill()
            c.restore()
            x += log.width + 0.5
    else:
        c.save()
        word_path(c, lay1, x1)
        word_path(c, lay2, x2)
        c.set_source_rgba(0.15, 0.15, 0.15, 1)
        c.fill()
        c.restore()


def paint_skinned(c, with_tiles=True, with_monkey=True):
    c.set_source_rgba(1, 1, 1, 1)
    c.paint()
    paint_backdrop(c)
    paint_leaves(c)
    paint_left_panel(c)
    if with_monkey:
        paint_score_monkey(c)
    paint_right_panel(c)
    if with_monkey:
        paint_monkey_hands(c)
    paint_board_base(c, True)
    if with_tiles:
        paint_tiles(c, True)
    paint_title(c, True)
    paint_notch(c)
    # a fine rim around the card gives the borderless window its edge
    rounded_rect(c, CARD[0] + 0.5, CARD[1] + 0.5, CARD[2] - 1, CARD[3] - 1, CARD_R)
    c.set_source_rgba(*rgb(60, 120, 150, 0.35))
    c.set_line_width(1)
    c.stroke()


def paint_plain(c):
    c.set_source_rgba(1, 1, 1, 1)
    c.paint()
    paint_tiles(c, False)
    paint_title(c, False)


def make_skinned():
    s, c = surface(FORM_W, FORM_H)
    paint_skinned(c)
    return s


def make_plain():
    s, c = surface(FORM_W, FORM_H)
    paint_plain(c)
    return s


def frame_base():
    """The skinned background cropped to the 392x392 frame at (120, 64),
    without cells: what a frame picture must continue at its right and
    bottom edge so that it sits seamlessly inside the board's rim."""
    s, c = surface(FORM_W, FORM_H)
    paint_skinned(c, with_tiles=False)
    fs, fc = surface(FRAME, FRAME)
    fc.set_source_surface(s, -BOARD_X, -BOARD_Y)
    fc.paint()
    return fs, fc
