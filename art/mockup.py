#!/usr/bin/env python3
"""Composes a mock-up of the whole 640x480 window from the committed art, the
way the game's view puts it together: background, side buttons keyed over
cream, window buttons, option tab, digits and marks at the cell positions,
the right panel's labels, check boxes and the volume slider.

    art/make_art.sh --mockup            # writes /tmp/mockup*.png

Scenes: "play" (skin on, a game under way, ring open), "plain" (skin off),
"help" (help page 0), "highs" (high score page), "pause", "message".
Pass scene names as arguments to make only those.
"""
import os
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from PIL import Image  # noqa: E402

from tessart.common import (ARIAL, BLUE, DISPLAY, GREEN, GREYED, MAGENTA, MONO,  # noqa: E402
                            RED, RES, SANS, SANS_BOLD, SLAB, STEEL, LEAF, cell_pos,
                            rgb, surface, to_image, layout)

PUZZLE = ("8E6217C94B4GI356HA9136DHGE25FD1832G9C2879416E7I1562DC8"
          "6HICB1547AC547IH2F47B8569A3")
FORM_W, FORM_H = 640, 480


def res(path):
    p = os.path.join(RES, path)
    return Image.open(p).convert("RGBA") if os.path.exists(p) else None


def keyed(img, back):
    """The button's rule: the top-left pixel's colour is transparent, and the
    control's back colour shows there."""
    if img is None:
        return None
    img = img.convert("RGB")
    key = img.getpixel((0, 0))
    out = Image.new("RGB", img.size, back)
    px = img.load()
    m = Image.new("L", img.size, 255)
    mp = m.load()
    for y in range(img.size[1]):
        for x in range(img.size[0]):
            if px[x, y] == key:
                mp[x, y] = 0
    out.paste(img, (0, 0), m)
    return out


def pt(points):
    return points * 96.0 / 72.0


def draw_label(c, text, font, points, x, y, w, h, color, align="left", underline=False):
    px = pt(points)
    lay = layout(c, text, font, px, width=w, align=align)
    if underline:
        from gi.repository import Pango
        attrs = Pango.AttrList()
        attrs.insert(Pango.attr_underline_new(Pango.Underline.SINGLE))
        lay.set_attributes(attrs)
    from gi.repository import PangoCairo
    c.save()
    c.rectangle(x, y, w, h + 6)
    c.clip()
    c.move_to(x, y)
    c.set_source_rgba(*color)
    PangoCairo.show_layout(c, lay)
    c.restore()


def checkbox(c, x, y, on, back):
    # a plain box in the platform's way: white square with a tick
    c.rectangle(x, y, 14, 19)
    c.set_source_rgba(*back)
    c.fill()
    c.rectangle(x + 0.5, y + 2.5, 13, 13)
    c.set_source_rgba(1, 1, 1, 1)
    c.fill_preserve()
    c.set_source_rgba(0.35, 0.35, 0.4, 1)
    c.set_line_width(1)
    c.stroke()
    if on:
        c.move_to(x + 3, y + 9)
        c.line_to(x + 6, y + 12.5)
        c.line_to(x + 11, y + 5)
        c.set_source_rgba(*BLUE)
        c.set_line_width(2)
        c.stroke()


def compose(scene="play"):
    skin = scene != "plain"
    bg = res("bitmap/101.png" if skin or scene == "help" else "bitmap/102.png")
    if scene == "plain":
        bg = res("bitmap/102.png")
    base = Image.new("RGB", (FORM_W, FORM_H), (255, 255, 255))
    if bg:
        base.paste(bg.convert("RGB"), (0, 0))
    cream = (245, 245, 212)

    side_visible = scene in ("play", "plain", "highs", "message")
    if side_visible:
        tops = [26, 88, 150, 212, 274, 336, 398]
        for i, top in enumerate(tops):
            left = 24 if i in (5, 6) else 25
            name = "sidenav%d%s.png" % (i, "_hover" if (scene == "play" and i == 4) else "")
            b = keyed(res("buttons/" + name), cream)
            if b:
                base.paste(b, (left, top))
    wb = [("minimize", 528, 0), ("maximize", 556, 0), ("close", 583, 0)]
    for name, x, y in wb:
        hov = "_hover" if (scene == "play" and name == "close") else ""
        b = keyed(res("buttons/%s%s.png" % (name, hov)), (255, 255, 255))
        if b:
            base.paste(b, (x, y))
    if scene in ("play", "plain"):
        b = keyed(res("buttons/hideoptions.png"), (255, 255, 255))
        if b:
            base.paste(b, (624, 219))
    if scene == "help":
        nav = res("controls/helpnav.png")
        if nav:
            base.paste(nav.convert("RGB"), (512, 101))
        ok = keyed(res("buttons/ok.png"), cream)
        if ok:
            base.paste(ok, (512 + 16, 101 + 296))
        mk = res("controls/monkey.png")
        if mk:
            base.paste(mk, (8, 56), mk)
        page = res("bitmap/201.png")
        if page:
            base.paste(page.convert("RGB"), (120, 64))
    if scene == "highs":
        f = res("bitmap/150.png")
        if f:
            base.paste(f.convert("RGB"), (120, 64))
    if scene == "pause":
        f = res("bitmap/175.png")
        if f:
            base.paste(f.convert("RGB"), (120, 64))

    s, c = surface(FORM_W, FORM_H)
    from tessart.common import PangoCairo  # noqa: F401

    if scene in ("play", "plain", "message"):
        for i, ch in enumerate(PUZZLE):
            r, col = divmod(i, 9)
            x, y = cell_pos(r, col)
            code = ord(ch)
            if 65 <= code <= 73:
                d, colr = chr(code - 16), RED
            elif i in (3, 14, 40, 41, 60):
                d, colr = ch, rgb(0, 0, 0)
            elif i in (22, 70):
                d, colr = ch, BLUE
            else:
                d = None
            if d:
                lay = layout(c, d, DISPLAY, pt(20.25))
                ink, log = lay.get_pixel_extents()
                c.move_to(x + (41 - log.width) / 2.0, y + (41 - log.height) / 2.0)
                c.set_source_rgba(*colr)
                PangoCairo.show_layout(c, lay)
            elif scene != "plain":
                marks = {2: ["1  ", " 5 ", "  9"], 11: [" 2 ", "4  ", "7 9"], 29: ["123", "   ", "  9"]}
                if i in marks:
                    for k, line in enumerate(marks[i]):
                        lay = layout(c, line, MONO, pt(12))
                        ink, log = lay.get_pixel_extents()
                        c.move_to(x + 1 + (40 - log.width) / 2.0, y + 1 + 13 * k - 3)
                        c.set_source_rgba(*BLUE)
                        PangoCairo.show_layout(c, lay)

    if scene in ("play", "plain", "message"):
        draw_label(c, "24576", SLAB, 15.75, 518, 104, 96, 21, RED, "right")
        draw_label(c, "beginner", DISPLAY, 12, 521, 125, 93, 19, RED, "right")
        draw_label(c, "1:00", SLAB, 15.75, 518, 144, 96, 21, rgb(89, 181, 11), "right")
        draw_label(c, "pause", DISPLAY, 14.25, 566, 165, 48, 19, rgb(89, 181, 11))
        draw_label(c, "_", ARIAL, 14.25, 603, 163, 12, 22, LEAF)
        draw_label(c, "auto-mark", DISPLAY, 14.25, 518, 200, 96, 17, MAGENTA, "right")
        draw_label(c, "_", ARIAL, 14.25, 570, 198, 12, 22, GREYED)
        draw_label(c, "click ring", DISPLAY, 14.25, 510, 238, 96, 17, BLUE, "right")
        draw_label(c, "_", ARIAL, 14.25, 568, 236, 12, 22, STEEL)
        draw_label(c, "skin", DISPLAY, 14.25, 510, 266, 96, 17, BLUE, "right")
        draw_label(c, "_", ARIAL, 14.25, 578, 264, 12, 22, STEEL)
        draw_label(c, "sounds", DISPLAY, 14.25, 510, 304, 96, 17, BLUE, "right")
        draw_label(c, "_", ARIAL, 14.25, 576, 302, 12, 22, STEEL)
        draw_label(c, "music", DISPLAY, 14.25, 570, 332, 50, 19, BLUE, "right")
        draw_label(c, "-               +", ARIAL + " Bold", 14.25, 528, 368, 92, 22, STEEL, "right")
        draw_label(c, "v2.0", DISPLAY, 12, 516, 394, 31, 16, BLUE, "right")
        draw_label(c, "update?", DISPLAY, 14.25, 552, 393, 68, 19, MAGENTA, "right", True)
        draw_label(c, "_", ARIAL, 14.25, 552, 392, 12, 22, GREYED)
    if scene in ("play", "plain", "highs", "pause", "message"):
        draw_label(c, "make lucky donation!", DISPLAY, 12, 524, 422, 87, 32, GREEN, "center", True)
        draw_label(c, "_", ARIAL, 14.25, 536, 435, 12, 22, LEAF)

    if scene == "help":
        pages = ["How to", "How2", "How3", "solving", "marks", "eliminate", "pairs",
                 "triples", "tess-tips", "support"]
        for i, p in enumerate(pages):
            draw_label(c, p, DISPLAY, 14.25, 512 + 6, 101 + 16 + 24 * i, 104, 19,
                       MAGENTA if i == 0 else BLUE, "right")
    if scene == "highs":
        draw_label(c, "Score Highs!", DISPLAY, 20.25, 120 + 116, 64 + 48, 161, 28, MAGENTA, "center")
        rows = [("funkalicious", "12000"), ("shikamoo", "4500"), ("bombastic", "1250")]
        for i, (n, sc) in enumerate(rows):
            draw_label(c, n, SANS, 14.25, 120 + 32, 64 + 80 + 28 * i, 222, 23, BLUE)
            draw_label(c, sc, SANS, 14.25, 120 + 264, 64 + 80 + 28 * i, 91, 23, BLUE, "right")
    if scene == "pause":
        draw_label(c, "and now a word from our sponsor", DISPLAY, 14.25, 120, 64 + 300, 392, 24,
                   rgb(255, 250, 230), "center")

    over = to_image(s, "RGBA")
    base.paste(over, (0, 0), over)

    if scene in ("play", "plain", "message"):
        s2, c2 = surface(FORM_W, FORM_H)
        back = (245 / 255.0, 245 / 255.0, 212 / 255.0, 1) if skin else (1, 1, 1, 1)
        checkbox(c2, 608, 238, True, back)
        checkbox(c2, 608, 266, skin, back)
        checkbox(c2, 608, 304, True, back)
        over = to_image(s2, "RGBA")
        base.paste(over, (0, 0), over)
        vol = res("bitmap/103.png") if skin else None
        if vol:
            base.paste(vol.convert("RGB"), (530, 355))
        th = res("controls/volume_thumb.png")
        if th:
            base.paste(th, (530 + 50, 355), th)

    if scene == "play":
        # ring open around cell (4, 2)
        L, T = cell_pos(4, 2)
        offs = [(13, -28), (33, -19), (50, 1), (50, 23), (33, 43), (13, 52), (-7, 43),
                (-24, 23), (-24, 1), (-7, -19)]
        for k, (dx, dy) in enumerate(offs):
            g = res("controls/ring%d.png" % k)
            if g:
                base.paste(g.convert("RGB"), (L + dx, T + dy))
        # mark picker open on cell (6, 7)
        L, T = cell_pos(7, 7)
        for p in range(9):
            dx = [-2, 13, 28][p % 3]
            dy = [-2, 13, 28][p // 3]
            g = res("controls/markchoice%d.png" % (p if p in (0, 4, 8) else p + 9))
            if g:
                base.paste(g.convert("RGB"), (L + dx, T + dy))
        g = res("controls/markclose.png")
        if g:
            base.paste(g.convert("RGB"), (L + 28, T - 17))
        hand = res("controls/hand.png")
        if hand:
            base.paste(hand, (300, 300), hand)

    if scene == "message":
        dim = Image.new("RGBA", base.size, (0, 0, 0, 70))
        base = Image.alpha_composite(base.convert("RGBA"), dim).convert("RGB")
        mb = res("controls/message_bg.png")
        if mb:
            mx, my = (640 - 392) // 2, (480 - 160) // 2
            base.paste(mb.convert("RGB"), (mx, my))
            s3, c3 = surface(FORM_W, FORM_H)
            draw_label(c3, "Say goodbye to puzzle now?", SANS_BOLD, 11.25, mx + 104, my + 32 + 24,
                       265, 81, rgb(0, 0, 0), "center")
            draw_label(c3, "yes", DISPLAY, 20.25, mx + 184, my + 116, 41, 28, MAGENTA, "center", True)
            draw_label(c3, "no", DISPLAY, 20.25, mx + 263, my + 116, 27, 28, MAGENTA, "center", True)
            over = to_image(s3, "RGBA")
            base.paste(over, (0, 0), over)
    return base


def main(argv):
    scenes = argv or ["play", "plain", "help", "highs", "pause", "message"]
    for sc in scenes:
        img = compose(sc)
        out = "/tmp/mockup.png" if sc == "play" else "/tmp/mockup-%s.png" % sc
        img.save(out)
        print("wrote", out)


if __name__ == "__main__":
    main(sys.argv[1:])
