"""The ten help pages, BITMAP 201..210 (392x392 each).

The page text lives here, in the game's own cheerful voice, and is set with
Pango onto the paper of frames.paper(); small diagrams are drawn with the same
kit as the game's pictures (ring glyphs, mark picker, button colours).
"""
import math

from . import buttons, controls, icons
from . import monkey as M
from .common import (BLUE, DISPLAY, GREEN, INK, MAGENTA, MONO, PURPLE, RED, SANS,
                     SANS_BOLD, SKY, STEEL, TEAL, WHITE, alpha, darker, draw_text,
                     lighter, rgb, rounded_rect, surface, text_centered, vgrad, layout)
from .frames import INNER, paper, paper_path

BODY_PX = 12          # body text: DejaVu Sans 12 px
HEAD_PX = 16          # section heads: the display face
MARGIN = 14
TEXT_W = INNER - 2 * MARGIN

ACCENTS = [BLUE, rgb(70, 172, 38), rgb(242, 132, 18), MAGENTA, PURPLE, TEAL,
           rgb(214, 36, 56), SKY, rgb(206, 30, 164), BLUE]


def hexcol(col):
    return "#%02x%02x%02x" % tuple(int(round(v * 255)) for v in col[:3])


def B(text, col=None):
    """Bold run, optionally coloured, for Pango markup."""
    if col is None:
        return "<b>%s</b>" % text
    return '<span foreground="%s"><b>%s</b></span>' % (hexcol(col), text)


# ---------------------------------------------------------------------------
# Page skeleton
class Page:
    def __init__(self, index, title):
        self.s, self.c = paper()
        self.accent = ACCENTS[index]
        self.index = index
        self.y = 0
        self._header(title)

    def _header(self, title):
        c = self.c
        acc = self.accent
        # coloured band with a wavy lower edge
        c.save()
        paper_path(c)
        c.clip()
        c.move_to(0, 0)
        c.line_to(INNER, 0)
        c.line_to(INNER, 36)
        for k in range(12, -1, -1):
            x = k * INNER / 12.0
            c.line_to(x, 38 + 2.2 * math.sin(k * 1.4))
        c.close_path()
        c.set_source(vgrad(0, 40, [(0, lighter(acc, 0.86)), (1, lighter(acc, 0.78))]))
        c.fill()
        c.restore()
        text_centered(c, title, DISPLAY, 27, INNER / 2.0, 19, darker(acc, 0.05))
        # page number badge
        c.arc(INNER - 20, 19, 11, 0, 2 * math.pi)
        c.set_source_rgba(*acc)
        c.fill()
        text_centered(c, str(self.index + 1), DISPLAY, 13, INNER - 20, 19, WHITE)
        self.y = 48

    def head(self, text, x=MARGIN, col=None, y=None):
        y = self.y if y is None else y
        draw_text(self.c, text, DISPLAY, HEAD_PX, x, y - 1, col or darker(self.accent, 0.1))
        self.y = y + HEAD_PX + 3
        return self.y

    def para(self, markup, x=MARGIN, w=TEXT_W, y=None, px=BODY_PX, col=INK, gap=7,
             align="left"):
        y = self.y if y is None else y
        h = draw_text(self.c, markup, SANS, px, x, y, col, width=w, markup=True,
                      align=align)
        self.y = y + h + gap
        return self.y

    def save(self, relpath):
        from .common import save
        save(self.s, relpath)


# ---------------------------------------------------------------------------
# Diagram helpers
def cell_box(c, x, y, size, fill=WHITE, line=rgb(170, 190, 215), r=3):
    rounded_rect(c, x + 0.5, y + 0.5, size - 1, size - 1, r)
    c.set_source_rgba(*fill)
    c.fill_preserve()
    c.set_source_rgba(*line)
    c.set_line_width(1)
    c.stroke()


def big_digit(c, x, y, size, d, col):
    text_centered(c, d, DISPLAY, size * 0.66, x + size / 2.0, y + size / 2.0, col)


def marks(c, x, y, size, digits, struck="", kept_col=BLUE):
    """Small marks in the 3x3 places of a cell; struck digits are crossed."""
    step = size / 3.0
    px = max(11, size * 0.3)
    for d in digits:
        k = int(d) - 1
        cx = x + step * (k % 3) + step / 2.0
        cy = y + step * (k // 3) + step / 2.0 + 0.5
        if d in struck:
            text_centered(c, d, MONO, px, cx, cy, alpha(STEEL, 0.9))
            c.move_to(cx - step * 0.38, cy + step * 0.36)
            c.line_to(cx + step * 0.38, cy - step * 0.36)
            c.set_source_rgba(*RED)
            c.set_line_width(1.6)
            c.set_line_cap(1)
            c.stroke()
        else:
            text_centered(c, d, MONO, px, cx, cy, kept_col)


def row_of_cells(c, x, y, size, cells, gap=2, box_gap=5):
    """cells: list of dicts {digit, col} or {marks, struck, fill}."""
    xx = x
    for i, cell in enumerate(cells):
        if i and i % 3 == 0:
            xx += box_gap
        cell_box(c, xx, y, size, fill=cell.get("fill", WHITE))
        if "digit" in cell:
            big_digit(c, xx, y, size, cell["digit"], cell.get("col", RED))
        elif "marks" in cell:
            marks(c, xx, y, size, cell["marks"], cell.get("struck", ""))
        xx += size + gap
    return xx


def badge(c, cx, cy, glyph, col, r=12):
    c.arc(cx, cy, r, 0, 2 * math.pi)
    c.set_source(vgrad(cy - r, cy + r, [(0, lighter(col, 0.25)), (1, darker(col, 0.08))]))
    c.fill()
    gs, gc = surface(INNER + 7, INNER + 7)
    gc.set_source_rgba(1, 1, 1, 1)
    icons.draw_glyph(gc, glyph, cx, cy, r / 13.0)
    c.set_source_surface(gs, 0, 0)
    c.paint()


def paste(c, surf, x, y, scale=1.0):
    c.save()
    c.translate(x, y)
    c.scale(scale, scale)
    c.set_source_surface(surf, 0, 0)
    c.paint()
    c.restore()


def keycap(c, x, y, text, w=None):
    lay = layout(c, text, SANS_BOLD, 10.5)
    ink, log = lay.get_pixel_extents()
    w = w or log.width + 10
    rounded_rect(c, x + 0.5, y + 0.5, w, 16, 4)
    c.set_source(vgrad(y, y + 16, [(0, WHITE), (1, rgb(232, 236, 242))]))
    c.fill_preserve()
    c.set_source_rgba(*rgb(150, 160, 175))
    c.set_line_width(1)
    c.stroke()
    text_centered(c, text, SANS_BOLD, 10.5, x + 0.5 + w / 2.0, y + 8.5, INK)
    return w


# ---------------------------------------------------------------------------
def page_how_to():
    p = Page(0, "How to play")
    c = p.c
    p.para("Fill the board so every row, every column and every 3×3 box have the "
           "digits 1 to 9, each only one time. " + B("Red", RED) + " digits are given "
           "and never move. Sound easy? Ha!")
    # New puzzle, with the real Create button
    y0 = p.y
    create = buttons.side_face(*buttons.SIDE[0], hover=False, word_px=17.5, back=None)
    paste(c, create, MARGIN - 3, y0 - 2, 0.9)
    p.head("New puzzle", x=96, y=y0)
    p.para("Click " + B("Create") + " and pick level: Easy, Intermediate, Advanced "
           "or Genius. Bigger level, bigger score!", x=96, w=INNER - 96 - MARGIN)
    p.y = max(p.y, y0 + 52)
    # typing
    p.head("Put a digit")
    p.para("Click empty square and type digit 1 to 9. Arrow keys walk to next empty "
           "square. Wrong digit? Monkey say " + B("Whoops!") + " and take it back. "
           "Typing wrong cost nothing.")
    # click ring, with a drawn ring around a cell
    y0 = p.y
    p.head("Click ring", y=y0)
    p.para("Option " + B("click ring", BLUE) + " on? Then a click on empty square open "
           "ring of digits around it. Click the digit you want, or × to close. "
           "Careful: wrong digit from ring cost " + B("5 minutes") + "!",
           w=TEXT_W - 118)
    L, T = INNER - 100, y0 + 34
    cell_box(c, L, T, 41, fill=rgb(236, 246, 255), line=rgb(120, 160, 210))
    offs = [(13, -28), (33, -19), (50, 1), (50, 23), (33, 43), (13, 52), (-7, 43),
            (-24, 23), (-24, 1), (-7, -19)]
    for k, (dx, dy) in enumerate(offs):
        paste(c, controls.ring_glyph(k), L + dx, T + dy)
    p.para(B("Stuck?", GREEN) + " Turn the page: monkey show you his tricks.",
           w=TEXT_W - 118, y=p.y + 2)
    return p


def page_how2():
    p = Page(1, "Clock and score")
    c = p.c
    p.para("Clock start when puzzle start. Score start at level points and fall "
           "down with the clock: after " + B("one hour") + " it is zero.", gap=6)
    # score chart + level table side by side
    y0 = p.y
    levels = [("Easy", "25000"), ("Intermediate", "50000"), ("Advanced", "100000"),
              ("Genius", "200000"), ("Own puzzle", "25000")]
    for i, (name, pts) in enumerate(levels):
        yy = y0 + 2 + 16 * i
        draw_text(c, name, SANS, 11.5, MARGIN + 4, yy, INK)
        draw_text(c, pts, SANS_BOLD, 11.5, MARGIN + 4, yy, RED, width=150, align="right")
    # chart
    cx, cy, cw, ch = 200, y0 + 2, 166, 76
    rounded_rect(c, cx, cy, cw, ch, 6)
    c.set_source_rgba(*rgb(246, 250, 255))
    c.fill_preserve()
    c.set_source_rgba(*alpha(STEEL, 0.7))
    c.set_line_width(1)
    c.stroke()
    c.move_to(cx + 12, cy + 12)
    c.line_to(cx + cw - 12, cy + ch - 16)
    c.line_to(cx + 12, cy + ch - 16)
    c.close_path()
    c.set_source(vgrad(cy + 12, cy + ch - 16, [(0, alpha(RED, 0.35)), (1, alpha(RED, 0.05))]))
    c.fill()
    c.move_to(cx + 12, cy + 12)
    c.line_to(cx + cw - 12, cy + ch - 16)
    c.set_source_rgba(*RED)
    c.set_line_width(2)
    c.stroke()
    draw_text(c, "0:00", SANS, 10, cx + 6, cy + ch - 14, alpha(INK, 0.8))
    draw_text(c, "1:00:00", SANS, 10, cx + cw - 48, cy + ch - 14, alpha(INK, 0.8))
    draw_text(c, "score", DISPLAY, 12, cx + 40, cy + 6, RED)
    p.y = y0 + ch + 10
    p.head("Pause")
    p.para("Click " + B("pause", GREEN) + " under the clock: curtain close, clock stop "
           "and board hide. Click the curtain and play go on.")
    p.head("Help cost time")
    p.para("Each help put " + B("5 minutes") + " on the clock: " + B("Fill a Random Square")
           + ", " + B("auto-mark", MAGENTA) + ", and a wrong digit from the click ring.")
    p.head("SOLVED! or solved?")
    p.para("No random square and no ring mistake: you get big " + B("SOLVED!", GREEN)
           + " Else only small " + B("solved", GREEN) + ". " + B("Solve Puzzle")
           + " show every answer, but score go to zero.")
    return p


def page_how3():
    p = Page(2, "More buttons")
    c = p.c
    rows = [
        ("bulb", buttons.SIDE[4][2], "Solve",
         B("Fill a Random Square") + ": monkey put one right digit, in " + B("blue", BLUE)
         + ". " + B("Clear Solved Squares") + ": blue digits go away again. "
         + B("Solve Puzzle") + ": whole answer."),
        ("sparkle", buttons.SIDE[0][2], "Own puzzle",
         "Create → " + B("Enter My Own Puzzle") + ". Type puzzle from newspaper, then "
         + B("Finish") + ". Monkey check it: 17 digits or more, no digit two "
         "times, and it must have an answer. " + B("Cancel") + " throw it away."),
        ("disk", buttons.SIDE[2][2], "Save and Load",
         B("Save") + " keep digits, marks and clock in a .tsm file. " + B("Load")
         + " bring it back and you play on."),
        ("printer", buttons.SIDE[3][2], "Print",
         "Send the board to your printer: only digits, no marks."),
        ("trophy", buttons.SIDE[5][2], "Highs!",
         "Finish with points left and write your name. Best ten stay in "
         + B("Score Highs!", MAGENTA)),
    ]
    for glyph, col, head, text in rows:
        y0 = p.y
        badge(c, MARGIN + 13, y0 + 12, glyph, col, 13)
        p.head(head, x=MARGIN + 34, y=y0, col=darker(col, 0.1))
        p.para(text, x=MARGIN + 34, w=TEXT_W - 34, gap=8)
    return p


def page_solving():
    p = Page(3, "Solving basics")
    c = p.c
    p.para("Every row, column and box need all nine digits. So each digit you see "
           "tell you where the same digit " + B("cannot") + " go. Monkey tip: start "
           "with the digit that stand on the board most times.")
    p.head("Only one place")
    p.para("Pick one digit, say " + B("5", RED) + ", and one box. Which rows and columns "
           "have a 5 already? Their squares in the box are closed. Only one square "
           "left open? The 5 go there!")
    # diagram: a band of three boxes; the right box is the one we look at
    size = 19
    band_w = 9 * size + 2 * 6
    gx, gy = (INNER - band_w) / 2.0 - 20, p.y + 2

    def cpos(r, col):
        return gx + col * size + (col // 3) * 6, gy + r * size

    closed = {(0, 6), (0, 7), (0, 8), (2, 6), (2, 7), (2, 8), (1, 7), (1, 6)}
    for r in range(3):
        for col in range(9):
            x, y = cpos(r, col)
            fill = WHITE
            if (r, col) in closed:
                fill = rgb(255, 228, 228)
            if (r, col) == (1, 8):
                fill = rgb(214, 246, 200)
            cell_box(c, x, y, size, fill=fill, line=rgb(170, 190, 215), r=2)
    # one more square far below in column 7, holding a 5
    x7, _ = cpos(0, 7)
    yb = gy + 3 * size + 14
    cell_box(c, x7, yb, size, line=rgb(170, 190, 215), r=2)
    draw_text(c, "⋮", SANS, 11, x7 + 6, gy + 3 * size - 1, alpha(INK, 0.6))
    for (r, col, d, colr) in ((0, 1, "5", RED), (2, 4, "5", RED), (1, 6, "2", RED),
                              (1, 8, "5", GREEN)):
        x, y = cpos(r, col)
        text_centered(c, d, DISPLAY, 14, x + size / 2.0, y + size / 2.0, colr)
    text_centered(c, "5", DISPLAY, 14, x7 + size / 2.0, yb + size / 2.0, RED)
    c.set_source_rgba(*alpha(RED, 0.65))
    c.set_line_width(1.6)
    c.set_dash([3, 2.5])
    for (r, col) in ((0, 1), (2, 4)):
        x, y = cpos(r, col)
        c.move_to(x + size - 2, y + size / 2.0)
        c.line_to(gx + band_w + 2, y + size / 2.0)
        c.stroke()
    c.move_to(x7 + size / 2.0, yb + 2)
    c.line_to(x7 + size / 2.0, gy - 2)
    c.stroke()
    c.set_dash([])
    draw_text(c, "← 5 go here!", DISPLAY, 13, gx + band_w + 8, gy + size + 1,
              darker(GREEN, 0.1))
    p.y = yb + size + 10
    y0 = p.y
    p.head("Only one digit", y=y0)
    p.para("Look at one square: which digits stand in its row, its column and its box? "
           "Eight different ones? The ninth is the answer.", w=TEXT_W - 118)
    # a row and a column meeting at the square we look at
    size = 16
    ox, oy = INNER - MARGIN - 5 * size - 4, y0 + 2
    cells_r = [(0, "3"), (1, "9"), (3, "1"), (4, "4")]
    cells_c = [(0, "2"), (1, "8"), (3, "5"), (4, "6")]
    for i in range(5):
        cell_box(c, ox + i * size, oy + 2 * size, size, r=2)
        cell_box(c, ox + 2 * size, oy + i * size, size, r=2)
    for i, d in cells_r:
        text_centered(c, d, DISPLAY, 12, ox + i * size + size / 2.0, oy + 2.5 * size, RED)
    for i, d in cells_c:
        text_centered(c, d, DISPLAY, 12, ox + 2.5 * size, oy + i * size + size / 2.0, RED)
    cell_box(c, ox + 2 * size, oy + 2 * size, size, fill=rgb(214, 246, 200), r=2)
    text_centered(c, "7", DISPLAY, 12, ox + 2.5 * size, oy + 2.5 * size, GREEN)
    return p


def page_marks():
    p = Page(4, "Pencil marks")
    c = p.c
    p.para("Marks are small " + B("blue", BLUE) + " digits in an empty square, to "
           "remember what still can go there. Game never check them: they are for your "
           "head only.")
    y0 = p.y
    p.head("Set marks", y=y0)
    p.para(B("Right click") + " an empty square, or press " + B("Space") + " in it: "
           "the mark picker open over the square. Click digits to mark or unmark, many "
           "in a row. Close with the red ×.", w=TEXT_W - 96)
    # the mark picker as it stands over a cell, scaled up
    k = 1.6
    px0, py0 = INNER - MARGIN - 48 * k + 2 * k, y0 + 22
    c.save()
    c.translate(px0, py0)
    c.scale(k, k)
    cell_box(c, 0, 0, 41, fill=rgb(236, 246, 255), line=rgb(120, 160, 210))
    on = {0, 4, 8}
    for q in range(9):
        dx = [-2, 13, 28][q % 3]
        dy = [-2, 13, 28][q // 3]
        c.set_source_surface(controls.mark_choice(q, q in on), dx, dy)
        c.paint()
    c.set_source_surface(controls.mark_close(), 28, -17)
    c.paint()
    c.restore()
    p.y = max(p.y, py0 + 46 * k - 20)
    p.head("Keys in the picker")
    y = p.y
    w = keycap(c, MARGIN, y, "1")
    draw_text(c, "…", SANS, 12, MARGIN + w + 3, y + 1, INK)
    w2 = keycap(c, MARGIN + w + 16, y, "9")
    draw_text(c, "mark or unmark", SANS, 12, MARGIN + w + w2 + 24, y + 1, INK)
    x = 190
    w = keycap(c, x, y, "0")
    draw_text(c, "or", SANS, 12, x + w + 5, y + 1, INK)
    w2 = keycap(c, x + w + 22, y, "X")
    draw_text(c, "back into square", SANS, 12, x + w + w2 + 28, y + 1, INK)
    p.y = y + 25
    p.head("auto-mark", col=MAGENTA)
    p.para("Click " + B("auto-mark", MAGENTA) + " and monkey write all possible digits "
           "in every empty square. Fast! But it cost " + B("5 minutes") + " and write "
           "over your own marks.")
    p.para("Marks not change by themselves when you put a digit: click auto-mark again "
           "for fresh ones.", col=alpha(INK, 0.85))
    return p


def page_eliminate():
    p = Page(5, "Eliminate")
    c = p.c
    p.para("When a digit stand in a square, no other square of the same row, column "
           "or box can have it. So cross it out from their marks!")
    size = 37
    x0 = (INNER - (9 * size + 8 * 2 + 2 * 5)) / 2.0
    cells = [{"marks": "1247", "struck": "7"}, {"marks": "27", "struck": "7"},
             {"digit": "7", "col": RED}, {"marks": "148"}, {"marks": "4789", "struck": "7"},
             {"marks": "5"}, {"marks": "36"}, {"marks": "1378", "struck": "7"},
             {"marks": "369"}]
    y = p.y + 2
    row_of_cells(c, x0, y, size, cells)
    # highlight the naked single that appears
    p.y = y + size + 4
    draw_text(c, "One 7 in the row: all other 7 marks go.", SANS, 11, 0, p.y,
              alpha(INK, 0.75), width=INNER, align="center")
    p.y += 22
    p.head("Naked single")
    y0 = p.y
    p.para("A square with only " + B("one mark") + " left: that is its digit. "
           "Put it in, and eliminate again from its row, column and box.",
           w=TEXT_W - 60)
    cell_box(c, INNER - MARGIN - 40, y0 - 16, 40, fill=rgb(214, 246, 200))
    marks(c, INNER - MARGIN - 40, y0 - 16, 40, "5")
    p.y = max(p.y, y0 + 30)
    p.head("Hidden single")
    p.para("Now look at one digit in one row, column or box. Only one square still "
           "have it in its marks? It go there, even if that square have more marks.")
    p.head("Monkey tip")
    p.para(B("auto-mark", MAGENTA) + " do the first eliminating for you, for 5 minutes. "
           "After that you keep the marks fresh by hand, and the puzzle melt like "
           "ice cream.")
    return p


def page_pairs():
    p = Page(6, "Naked pairs")
    c = p.c
    p.para("Two squares in one row, column or box with exactly the " + B("same two")
           + " marks, like " + B("3 8", BLUE) + " and " + B("3 8", BLUE) + ". One must "
           "be 3, the other must be 8. Which one? Nobody know yet. But 3 and 8 cannot "
           "go anywhere else in that row!")
    size = 37
    x0 = (INNER - (9 * size + 8 * 2 + 2 * 5)) / 2.0
    hl = rgb(255, 240, 180)
    cells = [{"marks": "138", "struck": "38"}, {"marks": "38", "fill": hl},
             {"digit": "5", "col": RED}, {"marks": "2389", "struck": "38"},
             {"marks": "38", "fill": hl}, {"digit": "6", "col": RED},
             {"marks": "1249"}, {"marks": "479"}, {"marks": "3479", "struck": "3"}]
    y = p.y + 2
    row_of_cells(c, x0, y, size, cells)
    p.y = y + size + 4
    draw_text(c, "The pair 3 8 (yellow) clean the rest of the row.", SANS, 11, 0, p.y,
              alpha(INK, 0.75), width=INNER, align="center")
    p.y += 22
    p.head("What to do")
    p.para("Cross out 3 and 8 from all " + B("other") + " squares of that row. Maybe a "
           "single pop up: the first square above is now " + B("1", BLUE) + "!")
    p.head("Double luck")
    p.para("The pair stand in the same box too? Then clean that box as well.")
    p.head("Hidden pair")
    p.para("Two digits that fit only in the same two squares of a row: those squares "
           "keep only these two marks, the others go.")
    return p


def page_triples():
    p = Page(7, "Naked triples")
    c = p.c
    p.para("Three squares in one row, column or box that together have only "
           + B("three digits") + " in their marks: for example " + B("1 4", BLUE) + ", "
           + B("4 9", BLUE) + " and " + B("1 4 9", BLUE) + ". These three squares take "
           "1, 4 and 9 between them.")
    size = 37
    x0 = (INNER - (9 * size + 8 * 2 + 2 * 5)) / 2.0
    hl = rgb(226, 240, 255)
    cells = [{"marks": "14", "fill": hl}, {"marks": "1267", "struck": "1"},
             {"marks": "49", "fill": hl}, {"digit": "3", "col": RED},
             {"marks": "4567", "struck": "4"}, {"marks": "149", "fill": hl},
             {"digit": "8", "col": RED}, {"marks": "2569", "struck": "9"},
             {"marks": "267"}]
    y = p.y + 2
    row_of_cells(c, x0, y, size, cells)
    p.y = y + size + 4
    draw_text(c, "Triple 1 4 9 (blue) clean the rest of the row.", SANS, 11, 0, p.y,
              alpha(INK, 0.75), width=INNER, align="center")
    p.y += 22
    p.head("Not all three in each")
    p.para("A square of the triple not need all three digits: " + B("1 4", BLUE) + ", "
           + B("4 9", BLUE) + " and " + B("1 9", BLUE) + " make a triple too. Only rule: "
           "three squares, three digits, no more.")
    p.head("What to do")
    p.para("Cross out 1, 4 and 9 from all other squares of the same row, column or box.")
    p.head("And four?")
    p.para("Same trick work with four squares and four digits. But monkey get headache, "
           "so he eat a banana first.")
    return p


KEYS = [
    ("Alt+C", "Create (Cancel)"), ("Alt+F", "Finish own puzzle"), ("Alt+L", "Load"),
    ("Alt+S", "Save"), ("Alt+P", "Print"), ("Alt+O", "Solve (OK in help)"),
    ("Alt+G", "Highs!"), ("Alt+H", "Help"), ("Alt+E", "pause / resume"),
    ("Alt+M", "auto-mark"),
    ("Alt+R", "click ring on/off"), ("Alt+K", "skin on/off"),
    ("Alt+N", "sounds on/off"), ("Alt+-", "music softer"), ("Alt+=", "music louder"),
    ("Alt+U", "update?"), ("Alt+D", "lucky donation"), ("Alt+A", "first empty square"),
    ("Alt+,", "show options"), ("Alt+.", "hide options"),
]


def page_tips():
    p = Page(8, "Tess-tips")
    c = p.c
    p.para("Monkey like keyboard. Hold " + B("Alt") + " and press a letter:", gap=4)
    y0 = p.y
    colw = (TEXT_W - 8) / 2.0
    for i, (key, what) in enumerate(KEYS):
        col, row = divmod(i, 10)
        x = MARGIN + col * (colw + 8)
        y = y0 + row * 18
        if row % 2 == 0:
            rounded_rect(c, x - 3, y - 1, colw + 4, 18, 4)
            c.set_source_rgba(*alpha(lighter(p.accent, 0.85), 1))
            c.fill()
        keycap(c, x, y, key, w=44)
        draw_text(c, what, SANS, 11.5, x + 50, y + 1.5, INK)
    p.y = y0 + 10 * 18 + 7
    p.head("In a square")
    y = p.y
    x = MARGIN
    for key, what in (("← → ↑ ↓", "walk to empty squares"), ("Space", "mark picker"),
                      ("Esc", "leave square"), ("Del", "erase digit")):
        w = keycap(c, x, y, key)
        wt = draw_text(c, what, SANS, 11.5, x + w + 6, y + 1.5, INK)
        lay = layout(c, what, SANS, 11.5)
        x += w + 6 + lay.get_pixel_extents()[1].width + 14
        if x > INNER - 150:
            x = MARGIN
            y += 21
        del wt
    p.y = y + 23
    p.para(B("More tips:") + " drag the window by its background. Music slider at left "
           "end is quiet. Little tab on the right edge fold the options away.")
    return p


def page_support():
    p = Page(9, "Support")
    c = p.c
    p.y = 60
    p.para("Problem? Idea? Puzzle too hard? Monkey read every letter and answer "
           "quick quick. Write to us:", w=TEXT_W, y=60)
    # soft pill behind the live link the view draws at (84,120) 222x23
    rounded_rect(c, 74, 114, 242, 35, 17)
    c.set_source_rgba(*rgb(236, 246, 255))
    c.fill_preserve()
    c.set_source_rgba(*alpha(BLUE, 0.45))
    c.set_line_width(1.2)
    c.stroke()
    c.set_source_rgba(*alpha(BLUE, 0.8))
    # little envelope at the left of the pill
    ex, ey = 52, 121
    rounded_rect(c, ex, ey, 18, 13, 2)
    c.set_source_rgba(*alpha(BLUE, 0.85))
    c.fill()
    c.move_to(ex + 1, ey + 1.5)
    c.line_to(ex + 9, ey + 8)
    c.line_to(ex + 17, ey + 1.5)
    c.set_source_rgba(1, 1, 1, 1)
    c.set_line_width(1.3)
    c.stroke()
    p.para("Want to know more about Sudoku: where it come from, big tricks, famous "
           "puzzles? The big free encyclopedia tell all:", w=TEXT_W, y=190)
    # pill behind the second link at (18,248) 355x23
    rounded_rect(c, 8, 242, 369, 35, 17)
    c.set_source_rgba(*rgb(236, 246, 255))
    c.fill_preserve()
    c.set_source_rgba(*alpha(BLUE, 0.45))
    c.set_line_width(1.2)
    c.stroke()
    # thank you with the monkey
    M.draw(c, "wave", 60, 322, 0.5, "grin")
    draw_text(c, "Thank you for play " + B("Tessuma Sudoku") + "! Tell your friends: "
              "monkey love friends.", SANS, 12, 108, 306, INK, width=INNER - 108 - MARGIN,
              markup=True)
    return p


PAGES = [page_how_to, page_how2, page_how3, page_solving, page_marks, page_eliminate,
         page_pairs, page_triples, page_tips, page_support]


def make_all():
    written = []
    for i, fn in enumerate(PAGES):
        name = "bitmap/%d.png" % (201 + i)
        fn().save(name)
        written.append(name)
    return written
