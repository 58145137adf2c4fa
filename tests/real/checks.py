"""Checks of the real game in a real desktop session: `checks.py NAME`."""

import os
import pwd
import sys
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from rw import (World, Web, Failed, check, wait_until, cell_rect, ring_point, game_lines, send_text,  # noqa: E402
                send_endless, white, main, Image)

rw_image = Image.load

QUIET = "[Options]\nSounds=1\nVolume=0\n"
SILENT = "[Options]\nSounds=0\nVolume=0\n"

# Form points of the controls the checks use.
CREATE, LOAD, PRINT = (68, 53), (68, 115), (68, 239)
MAXIMIZE = (569, 8)
TIMER = (518, 144, 614, 165)


def report(name, value):
    print(f"{name}: {value}")


def windows_besides(w, main):
    return [x for x in w.windows() if x != main]


# ---------------------------------------------------------------------------
def effects_keep_sounding():
    """Five popup sounds in a row are all heard, and after the sound server
    restarts the effects come back."""
    with World("effects") as w:
        w.start_x()
        w.start_pulse()
        w.settings(QUIET)
        rec = w.record()
        w.start_game()
        rec.wait_quiet(15)
        levels = []
        for n in range(5):
            mark = rec.seconds()
            w.click(*CREATE)
            rec.wait_sound(mark, 5, f"the popup sound, time {n + 1}")
            wait_until(lambda: windows_besides(w, w.wid), 5, "the level menu")
            levels.append(round(rec.rms_since(mark), 4))
            w.key("Escape")
            wait_until(lambda: not windows_besides(w, w.wid), 5, "the level menu to close")
            rec.wait_quiet(5)
        report("RMS of the five popup sounds", levels)

        # The sound server goes away and comes back.
        w.stop_pulse()
        w.start_pulse()
        rec = w.record()

        def heard_after_click():
            mark = rec.seconds()
            w.click(*CREATE)
            wait_until(lambda: windows_besides(w, w.wid), 5, "the level menu")
            try:
                rec.wait_sound(mark, 2, "the popup sound")
            except Failed:
                return None
            finally:
                w.key("Escape")
                wait_until(lambda: not windows_besides(w, w.wid), 5, "the level menu to close")
            return round(rec.rms_since(mark), 4)
        report("RMS after the restart", wait_until(heard_after_click, 30, "an effect after the server restarted",
                                                    step=0.2))


def start_sound():
    """The start sound plays at start-up, also with a game on the command line."""
    with World("start") as w:
        w.start_x()
        w.start_pulse()
        w.settings(QUIET)
        game = w.write_game("start.tsm", game_lines(empty={0, 1, 2, 40}))
        rec = w.record()
        w.start_game(game)
        heard = rec.wait_sound(0, 10, "the start sound")
        report("start sound heard after (s of recording)", round(heard, 2))


def song_heard():
    """With a sound device the song is decoded and heard; turned down to
    nothing it stops being decoded, and turned up again it is heard again."""
    with World("song") as w:
        w.start_x()
        w.start_pulse()
        w.settings("[Options]\nSounds=0\nVolume=75\n")
        rec = w.record()
        w.start_game()
        heard = rec.wait_sound(0, 10, "the song")
        report("song heard after (s of recording)", round(heard, 2))
        for _ in range(16):
            w.key("alt+minus")  # the volume thumb down to 0
        rec.wait_quiet(10)
        for _ in range(10):
            w.key("alt+plus")
        mark = rec.seconds()
        rec.wait_sound(mark, 10, "the song again")


def window_live():
    """With no input at all the clock of a game opened from the command line
    runs, and the first click on maximise fills the screen."""
    with World("live") as w:
        w.start_x()
        w.play(SILENT, empty={0, 1, 2, 40}, clock="100")
        img, x, y = w.form_shot("clock-0")
        rect = (x + TIMER[0], y + TIMER[1], x + TIMER[2], y + TIMER[3])
        first = img.crop_bytes(rect)
        wait_until(lambda: w.screenshot("clock-n").crop_bytes(rect) != first, 5, "the clock to tick")
        w.click(*MAXIMIZE)
        wait_until(lambda: w.geometry(w.wid)[2:] == (1024, 768), 5, "the window to fill the screen")


def ring_over_buttons():
    """The ring around a cell of the first column is drawn above the side
    buttons and takes their clicks: its 9 fills the cell, no menu opens."""
    with World("ring") as w:
        w.start_x()
        w.play(SILENT, empty={0, 36, 40})
        x0, y0, x1, y1 = cell_rect(0)
        # The ring's "5" lies clear of everything; once it shows, the ring is up.
        img0, ox, oy = w.form_shot("before-ring")
        px, py = ring_point(0, 5)
        spot = (ox + px - 4, oy + py - 4, ox + px + 4, oy + py + 4)
        before = img0.crop_bytes(spot)
        w.click((x0 + x1) // 2, (y0 + y1) // 2)
        wait_until(lambda: w.screenshot("ring").crop_bytes(spot) != before, 5, "the ring")
        w.click(*ring_point(0, 9))
        img = wait_until(lambda: (lambda i: i if i.count((ox + x0 + 8, oy + y0 + 6, ox + x1 - 8, oy + y1 - 6),
                                                        lambda r, g, b: r + g + b < 200) > 20 else None)(
            w.screenshot("after")), 5, "the 9 in the first cell")
        check(not windows_besides(w, w.wid), "a menu or box opened under the ring")
        report("dark pixels of the 9 in cell 0",
               img.count((ox + x0 + 8, oy + y0 + 6, ox + x1 - 8, oy + y1 - 6), lambda r, g, b: r + g + b < 200))


def no_caret_on_given():
    """After a game is loaded over the cell being edited, the edit highlight
    shows on no given cell; the caret key puts it on an empty one."""
    def yellow(r, g, b):
        return r > 245 and 235 < g < 252 and 170 < b < 215

    def highlighted(img, ox, oy):
        return [i for i in range(81) if img.count(
            tuple(v + d for v, d in zip(cell_rect(i), (ox + 3, oy + 3, ox - 3, oy - 3))), yellow) > 30]

    def red_digit(img, ox, oy, i):
        return img.count(tuple(v + d for v, d in zip(cell_rect(i), (ox + 8, oy + 6, ox - 8, oy - 6))),
                         lambda r, g, b: r > 150 and g < 80 and b < 80) > 15
    with World("caret") as w:
        w.start_x()
        w.settings(SILENT)
        first = w.write_game("first.tsm", game_lines(empty={5, 6, 7, 40}))
        second = w.write_game("second.tsm", game_lines(empty={40, 41}))
        w.start_game(first)
        w.key("alt+a")  # the caret on cell 5, the first empty one
        on = wait_until(lambda: highlighted(*w.form_shot("caret")), 5, "the highlight on cell 5")
        check(on == [5], f"the caret key highlighted {on}")
        w.click(*LOAD)
        wait_until(lambda: windows_besides(w, w.wid), 10, "the open dialog")
        w.xdo("type", "--delay", "5", second)
        w.key("Return")
        wait_until(lambda: not windows_besides(w, w.wid), 10, "the open dialog to close")
        img = wait_until(lambda: (lambda s: s if red_digit(*s, 5) else None)(w.form_shot("loaded")), 5,
                         "the second game on the board")
        on = highlighted(*img)
        report("highlighted cells after the load", on)
        check(set(on) <= {40, 41}, f"the edit highlight is on given cells {sorted(set(on) - {40, 41})}")


def message_box_tool_window():
    """The message box is a fixed tool window with no caption, no minimise or
    maximise, outside the task bar, centred on the game."""
    with World("msgbox") as w:
        w.start_x()
        w.play(SILENT)
        w.click(*PRINT)  # no puzzle: "Why to print with no puzzle?"
        box = wait_until(lambda: (windows_besides(w, w.wid) or [None])[-1], 5, "the message box")
        wait_until(lambda: "_NET_WM_ALLOWED_ACTIONS" in w.prop(box, "_NET_WM_ALLOWED_ACTIONS")
                   and "=" in w.prop(box, "_NET_WM_ALLOWED_ACTIONS"), 5, "the window manager to take the box")
        name = w.prop(box, "_NET_WM_NAME")
        actions = w.prop(box, "_NET_WM_ALLOWED_ACTIONS")
        state = w.prop(box, "_NET_WM_STATE")
        kind = w.prop(box, "_NET_WM_WINDOW_TYPE")
        report("caption", name)
        report("allowed", actions)
        report("state", state)
        report("type", kind)
        check(name.split("=", 1)[-1].strip() in ("", '""'), f"the box has a caption: {name}")
        # openbox offers minimise to every utility window whatever the hints
        # say: the box asks for move and close only, and comes back at once.
        motif = w.prop(box, "_MOTIF_WM_HINTS").split("=")[-1].split(",")
        check(len(motif) == 5 and int(motif[1], 0) == 4 | 32, f"the box asks for more than move and close: {motif}")
        for action in ("MAXIMIZE_HORZ", "RESIZE"):
            check(f"_NET_WM_ACTION_{action}" not in actions, f"the window manager allows {action}")
        w.xdo("windowminimize", box)
        wait_until(lambda: "IsViewable" in w.run(["xwininfo", "-id", str(box)]).stdout
                   and "HIDDEN" not in w.prop(box, "_NET_WM_STATE"), 5, "the minimised box to come back")
        check("SKIP_TASKBAR" in state, "the box is in the task bar")
        check("UTILITY" in kind or "DIALOG" in kind, f"the box is an ordinary window: {kind}")
        def off_centre():
            bx, by, bw, bh = w.geometry(box)
            mx, my, mw, mh = w.geometry(w.wid)
            return (abs((bx + bw / 2) - (mx + mw / 2)), abs((by + bh / 2) - (my + mh / 2)))
        try:
            wait_until(lambda: max(off_centre()) <= 1, 3, "the box centred on the game")
        finally:
            report("box centre off the game's centre by", off_centre())


def offscreen_position():
    """A stored position off every screen opens the window centred instead."""
    with World("offscreen") as w:
        w.start_x()
        w.play(SILENT + "[ScreenPos]\nLeft=-135000\nTop=-135000\n")
        x, y, wd, ht = wait_until(lambda: (lambda g: g if g[0] > -1000 else None)(w.geometry(w.wid)), 5,
                                  "the window placed")
        report("window at", (x, y))
        check((x, y) == (192, 144), f"the window is at {(x, y)}, not centred")


def update_check_bounded():
    """A huge version file is refused quickly without being kept, a version
    file behind a byte-order mark is read, and a good one offers the update."""
    answers = {
        "/huge": send_endless(1 << 30),
        "/chunked": send_endless(1 << 30, chunked=True),
        "/bom": send_text(b"\xef\xbb\xbf99,http://127.0.0.1/new.deb\r\n"),
        "/broken": send_text(b"\x00\x01garbage"),
    }
    web = Web(answers)
    try:
        for path, want in (("/huge", "box"), ("/chunked", "box"), ("/broken", "box"), ("/bom", "update")):
            with World("update") as w:
                w.start_x()
                w.play(SILENT, env={"TESSUMA_VERSION_URL": web.url(path)})
                before = w.rss_peak_kib()
                w.key("alt+u")
                win = wait_until(lambda: (windows_besides(w, w.wid) or [None])[-1], 20, f"an answer to {path}")
                grown = (w.rss_peak_kib() - before) // 1024
                cache = os.path.join(w.home, ".cache")
                kept = sum(os.path.getsize(os.path.join(d, f)) for d, _, fs in os.walk(cache) for f in fs
                           if f.startswith("tessver"))
                gx, gy, gw, gh = w.geometry(win)
                # The message box is modal; the update window is not.
                got = "box" if "MODAL" in w.prop(win, "_NET_WM_STATE") else "update"
                report(path, f"answer {got} ({gw}x{gh}), memory peak +{grown} MB, cache {kept} bytes")
                check(got == want, f"{path}: wanted the {want}, got the {got}")
                check(grown < 40, f"{path}: memory peak grew by {grown} MB")
                check(kept <= 65536, f"{path}: {kept} bytes left in the cache")
    finally:
        web.close()


def new_pdfs(folder, since):
    if not os.path.isdir(folder):
        return []
    return sorted(os.path.join(folder, f) for f in os.listdir(folder)
                  if f.endswith(".pdf") and os.path.getmtime(os.path.join(folder, f)) >= since)


def red(r, g, b):
    return r > 140 and g < 90 and b < 110


def centroid(img, rect, pred):
    n = sx = sy = 0
    x0, y0, x1, y1 = rect
    for y in range(max(0, y0), min(img.height, y1)):
        for x in range(max(0, x0), min(img.width, x1)):
            if pred(*img.px(x, y)):
                n, sx, sy = n + 1, sx + x, sy + y
    return (sx / n, sy / n) if n else None


def look_at_page(w, pdf, paper_pt, name, text=True):
    """Checks a printed page: its paper, the digits (as text where the PDF is
    the game's own), the form centred and stripped of its buttons."""
    info = w.run(["pdfinfo", pdf]).stdout
    size = [line for line in info.splitlines() if line.startswith("Page size:")][0]
    report(f"{name} paper", size.split(":", 1)[1].strip())
    wd, ht = (float(v) for v in size.split()[2:5:2])
    check(abs(wd - paper_pt[0]) < 2 and abs(ht - paper_pt[1]) < 2, f"the page is {wd} x {ht} pt, not {paper_pt}")
    if text:
        digits = sum(ch.isdigit() for ch in w.run(["pdftotext", pdf, "-"]).stdout)
        report(f"{name} digits as text", digits)
        check(digits >= 70, f"only {digits} digits on the page are text")
    base = os.path.join(w.dir, name)
    w.run(["pdftoppm", "-r", "300", "-singlefile", "-png", pdf, base])
    img = rw_image(base + ".png")

    # The given digits are red; those of cells 0 and 80 stand at known places
    # of the form (centres 140,84 and 484,428): from them, where the form is.
    xs = [x for x in range(0, img.width, 2) if img.count((x, 0, x + 1, img.height), red)]
    ys = [y for y in range(0, img.height, 2) if img.count((0, y, img.width, y + 1), red)]
    check(xs and ys, "no red digits on the page")
    pitch = 41 * (xs[-1] - xs[0]) / 359
    reach = int(0.6 * pitch)
    c0 = centroid(img, (xs[0], ys[0], xs[0] + reach, ys[0] + reach), red)
    c80 = centroid(img, (xs[-1] - reach, ys[-1] - reach, xs[-1] + 1, ys[-1] + 1), red)
    scale = (c80[0] - c0[0]) / (484 - 140)
    left, top = c0[0] - 140 * scale, c0[1] - 84 * scale
    margins = (left, img.width - left - 640 * scale, top, img.height - top - 480 * scale)
    report(f"{name} form margins at 300 dpi (left, right, top, bottom)", tuple(round(m) for m in margins))
    check(abs(margins[0] - margins[1]) < 12 and abs(margins[2] - margins[3]) < 12, "the form is not centred")
    check(min(margins) > 60, "the form runs off the sheet")
    # A digit's strokes are solid at 300 dpi: most of its pixels full red,
    # few half-tones along the edges.
    x0, y0 = int(c0[0] - 0.3 * pitch), int(c0[1] - 0.3 * pitch)
    box = (x0, y0, x0 + int(0.6 * pitch), y0 + int(0.6 * pitch))
    solid = img.count(box, red)
    soft = img.count(box, lambda r, g, b: not red(r, g, b) and not white(r, g, b))
    report(f"{name} digit of cell 0: solid, soft pixels", (solid, soft))
    check(soft < solid / 2, "the digits are soft")
    # Where the side buttons stood, left of the board: no colour.
    band = (int(left + 25 * scale), int(top + 26 * scale), int(left + 110 * scale), int(top + 440 * scale))
    coloured = img.count(band, lambda r, g, b: max(r, g, b) - min(r, g, b) > 60)
    report(f"{name} coloured pixels where the side buttons stand", coloured)
    check(coloured < 200, "the side buttons are on the page")
    return base + ".png"


def print_page():
    """Print goes to the default queue on its own paper (A5 here), the form
    centred on the sheet, its buttons left off, its digits solid at 300 dpi;
    a queue that refuses jobs is told to the player and nothing lands."""
    with World("print") as w:
        w.start_x()
        w.start_cups(paper="a5")
        # cups-pdf writes into PDF/ in the home of the user who printed.
        landing = os.path.join(pwd.getpwuid(os.geteuid()).pw_dir, "PDF")
        w.play(SILENT, empty={3, 40, 77})
        since = time.time() - 1
        w.click(*PRINT)
        pdf = wait_until(lambda: [p for p in new_pdfs(landing, since) if os.path.getsize(p) > 0], 60,
                         "the page from the queue")[-1]
        check(not windows_besides(w, w.wid), "a message came with a page that was printed")
        # Through the queue the text becomes glyph drawings: judged as pixels.
        look_at_page(w, pdf, (419.5, 595.3), "queue", text=False)
        os.remove(pdf)

        # The queue refuses jobs: the player hears of it, nothing lands.
        w.run(["cupsreject", "TessumaPDF"])
        since = time.time() - 1
        w.click(*PRINT)
        wait_until(lambda: windows_besides(w, w.wid), 20, "a word that the print failed")
        check(not new_pdfs(landing, since), "a page landed from a queue that refuses jobs")


def print_to_file():
    """With no printer the page goes into a PDF in the documents folder; with
    that folder read-only, no file is claimed and none is left."""
    with World("pdf") as w:
        w.start_x()
        docs = os.path.join(w.home, "Documents")
        w.play(SILENT, empty={3, 40, 77})
        since = time.time() - 1
        w.click(*PRINT)
        wait_until(lambda: windows_besides(w, w.wid), 20, "the message that the page went to a file")
        pdf = wait_until(lambda: new_pdfs(docs, since), 5, "the PDF in the documents folder")[-1]
        look_at_page(w, pdf, (595.3, 841.9), "pdf")
        w.key("Return")
        wait_until(lambda: not windows_besides(w, w.wid), 5, "the message to close")
        os.remove(pdf)
        # A documents folder that can't be written: read-only, or for root,
        # who writes anywhere, a file standing where the folder should be.
        if os.geteuid() == 0:
            os.rmdir(docs)
            with open(docs, "w") as f:
                f.write("not a folder\n")
        else:
            os.chmod(docs, 0o555)
        w.click(*PRINT)
        wait_until(lambda: windows_besides(w, w.wid), 20, "the message that nothing was printed")
        left = [] if os.path.isfile(docs) else os.listdir(docs)
        check(not left, f"files were left in the read-only folder: {left}")


def texts_fit():
    """Captions stay inside their labels, a long message fits its box, Delete
    takes a digit out right after typing, the help's arrows turn pages."""
    def dark(r, g, b):
        return r + g + b < 240
    with World("texts") as w:
        w.start_x()
        # Row 1 ends in three empty cells, so nothing red stands left of the
        # score but an overlong score caption.
        w.play(SILENT, empty={15, 16, 17, 40}, score="1234567890123456789012345")
        img, ox, oy = w.form_shot("long-score")
        spill = img.count((ox + 430, oy + 100, ox + 516, oy + 130), red)
        report("red pixels of the score caption left of its label", spill)
        check(spill == 0, "the score caption runs over the board")

        # Delete right after typing a digit empties the cell again.
        w.key("alt+a")  # the caret to cell 15
        wait_until(lambda: True, 1, "")
        x0, y0, x1, y1 = cell_rect(15)
        inside = (ox + x0 + 8, oy + y0 + 6, ox + x1 - 8, oy + y1 - 6)
        w.key("9")  # the right digit of cell 15 is 9 - ((3 + 0 + 6) % 9) = 9
        wait_until(lambda: w.screenshot("typed").count(inside, dark) > 20, 5, "the typed digit")
        w.key("Delete")
        wait_until(lambda: w.screenshot("deleted").count(inside, dark) == 0, 5, "Delete to take the digit out")

        # The help's arrows turn the page.
        w.click(68, 425)  # Help
        page = (ox + 120, oy + 64, ox + 500, oy + 450)
        first = wait_until(lambda: (lambda i: i.crop_bytes(page) if i.count(page, dark) > 50 else None)(
            w.screenshot("help")), 5, "the help page")
        w.click(512 + 112 - 22 + 8, 101 + 262 + 8)
        wait_until(lambda: w.screenshot("help-2").crop_bytes(page) != first, 5, "the arrow to turn the page")

        # A message with a long path fits its box: nothing reaches the
        # bottom edge of the message's label.
        w.key("alt+o")  # the help's OK
        w.click(*PRINT)
        box = wait_until(lambda: (windows_besides(w, w.wid) or [None])[-1], 20, "the message of the PDF")
        bx, by, bw, bh = w.geometry(box)
        shot = w.screenshot("message")
        edge = shot.count((bx + 104, by + 111, bx + 369, by + 113), dark)
        report("dark pixels on the bottom edge of the message", edge)
        check(edge == 0, "the message's last line is cut")


def close_during_update():
    """A close request from the desktop while the update check waits for its
    answer is kept: once the answer is read, the game closes."""
    def slow(h):
        time.sleep(3)
        send_text(b"20,http://127.0.0.1/same.deb\r\n")(h)
    web = Web({"/slow": slow})
    try:
        with World("close") as w:
            w.start_x()
            w.play(SILENT, env={"TESSUMA_VERSION_URL": web.url("/slow")})
            w.key("alt+u")
            wait_until(lambda: web.hits, 5, "the version file asked for")
            w.run(["wmctrl", "-i", "-c", hex(w.wid)])
            box = wait_until(lambda: (windows_besides(w, w.wid) or [None])[-1], 15, "the answer of the check")
            check(w.game.poll() is None, "the game closed before the check was over")
            w.xdo("windowactivate", "--sync", box)
            w.key("Return")
            wait_until(lambda: w.game.poll() is not None, 10, "the game to close after the check")
            report("the game ended with", w.game.returncode)
    finally:
        web.close()


CHECKS = {f.__name__: f for f in (effects_keep_sounding, start_sound, song_heard, window_live, ring_over_buttons,
                                    no_caret_on_given, message_box_tool_window, offscreen_position,
                                    update_check_bounded, print_page, print_to_file, texts_fit,
                                    close_during_update)}

if __name__ == "__main__":
    sys.exit(main(CHECKS))
