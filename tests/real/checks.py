"""Checks of the real game in a real desktop session: `checks.py NAME`."""

import os
import pwd
import sys
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from rw import (World, Web, Failed, check, wait_until, cell_rect, ring_point, game_lines, send_text,  # noqa: E402
                send_endless, white, main, Image)
import hear  # noqa: E402

rw_image = Image.load

SILENT = "[Options]\nSounds=0\nVolume=0\n"

# Form points of the controls the checks use: the side buttons, 62 pixels apart.
CREATE, LOAD, SAVE, PRINT, SOLVE, HIGHS, HELP = ((68, 53 + 62 * i) for i in range(7))
MAXIMIZE = (569, 8)
TIMER = (518, 144, 614, 165)


def report(name, value):
    print(f"{name}: {value}")


def windows_besides(w, main):
    return [x for x in w.windows() if x != main]


# ---------------------------------------------------------------------------
# ---------------------------------------------------------------------------
# Sound that lives with the sound server: the server changes under a game
# playing with default settings, and the song and the effects come back by
# themselves, on the output the server plays on then.

SOUNDS_ON = "[Options]\nSounds=1\nVolume=75\n"


def wait_song(rec, timeout, what):
    """Until the last two seconds recorded hold the song."""
    def playing():
        signal = hear.load(rec.path)
        end = len(signal) / hear.RATE
        return end > 2 and not hear.silent_stretches(signal, end - 2, end, stretch_s=2, share=0.6) and end
    return wait_until(playing, timeout, what, step=0.5)


def wait_effect(rec, effect, since, timeout, what):
    """Until the effect sounds in the recording after `since` seconds."""
    template = hear.effect(effect)

    def heard():
        signal = hear.load(rec.path)
        return hear.match(signal, template, since - 0.5, len(signal) / hear.RATE) > 0.5
    wait_until(heard, timeout, what, step=0.5)


def popup_heard(w, rec, what):
    """The level menu opens with its sound, heard on the recording."""
    mark = rec.seconds()
    w.click(*CREATE)
    wait_until(lambda: windows_besides(w, w.wid), 5, "the level menu")
    try:
        wait_effect(rec, 107, mark, 8, what)
    finally:
        w.key("Escape")
        wait_until(lambda: not windows_besides(w, w.wid), 5, "the level menu to close")


def game_with_song(w, server="pulse"):
    """Starts the sound server and the game with sounds on; returns the
    recording of the default output once the song is heard on it."""
    w.start_x()
    w.start_sound(server)
    w.settings(SOUNDS_ON)
    rec = w.record()
    w.start_game()
    wait_song(rec, 15, "the song")
    return rec


def sound_default_moves():
    """The player switches to another output mid-song: the song goes on
    there, and the next effect sounds there too."""
    with World("default-moves") as w:
        w.start_x()
        w.start_sound("pulse")
        w.add_sink("u", 48000)
        w.settings(SOUNDS_ON)
        rec_t = w.record("t")
        w.start_game()
        wait_song(rec_t, 15, "the song on the first output")
        rec_u = w.record("u")
        w.pactl("set-default-sink", "u")
        report("song on the new output after (s)", round(wait_song(rec_u, 15, "the song on the new output"), 1))
        popup_heard(w, rec_u, "the popup sound on the new output")
        report("streams", w.sink_inputs())


def sound_sink_replaced():
    """The output goes away mid-song and another one comes: the song and
    the effects come back on it."""
    with World("sink-replaced") as w:
        game_with_song(w)
        module = [line.split("\t")[0] for line in w.pactl("list", "short", "modules").splitlines()
                  if "sink_name=t" in line][0]
        w.pactl("unload-module", module)
        wait_until(lambda: "t" not in w.sinks(), 10, "the output to go")
        w.add_sink("u", 48000)
        wait_until(lambda: w.default_sink() == "u", 10, "the new output as the default")
        rec_u = w.record("u")
        report("song on the new output after (s)", round(wait_song(rec_u, 20, "the song on the new output"), 1))
        popup_heard(w, rec_u, "the popup sound on the new output")
        check(w.game.poll() is None, "the game ended")


def sound_server_restarts():
    """The sound server stops mid-song and starts again: the song comes
    back, and so do the effects."""
    with World("restart") as w:
        rec = game_with_song(w)
        popup_heard(w, rec, "the popup sound")
        w.stop_sound()
        w.start_sound("pulse")
        rec = w.record()
        report("song back after (s)", round(wait_song(rec, 30, "the song after the restart"), 1))
        popup_heard(w, rec, "the popup sound after the restart")


def sound_rate_changes():
    """The graph's rate changes mid-song (PipeWire follows the hardware or
    the player's settings): the song plays on, and the effects too."""
    with World("rate") as w:
        rec = game_with_song(w, "pipewire")
        for rate in (48000, 96000, 44100):
            w.run(["pw-metadata", "-n", "settings", "0", "clock.force-rate", str(rate)])
            mark = rec.seconds()
            wait_until(lambda: rec.seconds() > mark + 3, 15, "three more seconds of recording")
            wait_song(rec, 15, f"the song at {rate} Hz")
            popup_heard(w, rec, f"the popup sound at {rate} Hz")
        check(w.game.poll() is None, "the game ended")


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


def scaled_when_maximised():
    """Maximised, the form is drawn larger, and its popup menus and message
    boxes with it."""
    with World("scaled") as w:
        w.start_x()
        w.play(SILENT)

        def sizes(create, print_):
            w.click(*create)
            menu = wait_until(lambda: (windows_besides(w, w.wid) or [None])[-1], 5, "the level menu")
            menu_size = w.geometry(menu)[2:]
            w.key("Escape")
            wait_until(lambda: not windows_besides(w, w.wid), 5, "the menu to close")
            w.click(*print_)  # no puzzle: a message
            box = wait_until(lambda: (windows_besides(w, w.wid) or [None])[-1], 5, "the message box")
            box_size = w.geometry(box)[2:]
            w.key("Return")
            wait_until(lambda: not windows_besides(w, w.wid), 5, "the box to close")
            return menu_size, box_size
        normal = sizes(CREATE, PRINT)
        w.click(*MAXIMIZE)
        wait_until(lambda: w.geometry(w.wid)[2:] == (1024, 768), 5, "the window to fill the screen")
        scale = 768 / 480

        def at(point):  # a form point of the maximised window
            return (int(point[0] * scale + (1024 - 640 * scale) / 2), int(point[1] * scale))
        big = sizes(at(CREATE), at(PRINT))
        report("menu and box, normal", normal)
        report("menu and box, maximised", big)
        for (nw, nh), (bw, bh), what in zip(normal, big, ("menu", "message box")):
            check(bw >= 1.4 * nw and bh >= 1.4 * nh, f"the {what} is not scaled with the window")


def no_marks_left():
    """Nothing is left drawn that the game no longer shows: a side button
    goes back to its idle face once the pointer has left it (also after
    the menu it opened), and the edit box of an own puzzle goes with the
    finish."""
    with World("marks") as w:
        w.start_x()
        w.play(SILENT)
        img, ox, oy = w.form_shot("idle")
        for point, what in ((CREATE, "menu"), (LOAD, "file dialog"), (PRINT, "message")):
            button = (ox + point[0] - 40, oy + point[1] - 23, ox + point[0] + 42, oy + point[1] + 25)
            idle = img.crop_bytes(button)
            w.click(*point)
            wait_until(lambda: windows_besides(w, w.wid), 5, f"the {what}")
            w.key("Escape" if what != "message" else "Return")
            wait_until(lambda: not windows_besides(w, w.wid), 5, f"the {what} to close")
            w.xdo("mousemove", ox + 600, oy + 470)
            wait_until(lambda: w.screenshot("after").crop_bytes(button) == idle, 5,
                       f"the button's idle face after its {what}")

        # An own puzzle: seventeen digits typed, the caret left in an empty
        # cell, then Finish.
        w.click(*CREATE)
        wait_until(lambda: windows_besides(w, w.wid), 5, "the level menu")
        w.key(*(["Down"] * 5), "Return")  # Enter My Own Puzzle
        wait_until(lambda: not windows_besides(w, w.wid), 5, "the menu to close")
        grid = [9 - ((r * 3 + r // 3 + c) % 9) for r in range(9) for c in range(9)]
        for i in range(18):
            w.key(str(grid[i]))
            w.key("Right")
        x0, y0, x1, y1 = cell_rect(18)
        wait_until(lambda: w.screenshot("caret").count((ox + x0 + 4, oy + y0 + 4, ox + x1 - 4, oy + y1 - 4),
                                                         lambda r, g, b: r > 245 and 235 < g < 252 and 170 < b < 215)
                   > 30, 5, "the edit box in cell 18")
        w.click(*CREATE)  # Finish stands where Create stood
        wait_until(lambda: w.screenshot("finished").count(
            (ox + x0 + 4, oy + y0 + 4, ox + x1 - 4, oy + y1 - 4),
            lambda r, g, b: r > 245 and 235 < g < 252 and 170 < b < 215) == 0, 10, "the edit box to go with Finish")

        # With the skin off the side buttons stand on the white form, not on
        # the skin's cream.
        w.xdo("mousemove", ox + 600, oy + 470)  # no button hovered
        w.key("alt+k")
        # The corners of the seven buttons (86 by 54 from 25,26, 62 apart;
        # Highs! and Help a pixel to the left).
        corners = []
        for i in range(7):
            x, y = (25 if i < 5 else 24), 26 + 62 * i
            corners += [(ox + x, oy + y), (ox + x + 83, oy + y), (ox + x, oy + y + 51), (ox + x + 83, oy + y + 51)]
        wait_until(lambda: (lambda img: all(img.count((cx, cy, cx + 3, cy + 3), white) == 9 for cx, cy in corners))(
            w.screenshot("plain")), 5, "white corners around the side buttons")


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


def saved_game_any_name():
    """A saved game named on the command line opens whatever bytes its name
    is made of: here Latin-1, which is no UTF-8."""
    with World("name") as w:
        w.start_x()
        w.settings(SILENT)
        path = w.write_game(b"partie \xe9t\xe9.tsm".decode("utf-8", "surrogateescape"), game_lines(empty={40}))
        w.start_game(path)
        wait_until(lambda: empty_cells(*w.form_shot("loaded")) == [40], 10, "the saved game on the board")
        check(not windows_besides(w, w.wid), "a message box came with the game")


# 16 digits, none twice in a unit, and no solution: the solver searches
# for about half a minute before it says so.
NO_SOLUTION = "000000000000000000060000000509041078800002900000000203000000600080100000300000000"


def search_keeps_window_live():
    """Finish on an own puzzle without a solution: while the solver searches,
    the window draws itself anew and a close ends the search and the game,
    without a word of the search's answer."""
    with World("search") as w:
        w.start_x()
        w.play(SILENT + "Clickring=0\n")
        w.click(*CREATE)
        wait_until(lambda: windows_besides(w, w.wid), 5, "the create menu")
        w.key("o")  # Enter My Own Puzzle
        wait_until(lambda: not windows_besides(w, w.wid), 5, "the menu to close")
        for cell, digit in enumerate(NO_SOLUTION):
            if digit != "0":
                x0, y0, x1, y1 = cell_rect(cell)
                w.click((x0 + x1) // 2, (y0 + y1) // 2)
                w.key(digit)
        wait_until(lambda: len(empty_cells(*w.form_shot("typed"))) == 65, 10, "the typed digits")
        w.click(*CREATE)  # Finish takes the first button's place
        started = time.monotonic()
        # Hidden and shown again, the window draws its board anew.
        w.xdo("windowminimize", "--sync", w.wid)
        wait_until(lambda: "Normal" not in w.run(["xprop", "-id", str(w.wid), "WM_STATE"]).stdout, 5,
                   "the window hidden")
        w.xdo("windowactivate", "--sync", w.wid)
        wait_until(lambda: len(empty_cells(*w.form_shot("shown"))) == 65, 5, "the board drawn during the search")
        check(not windows_besides(w, w.wid), "the search was over before the window was shown again")
        w.run(["wmctrl", "-i", "-c", hex(w.wid)])
        wait_until(lambda: w.game.poll() is not None or windows_besides(w, w.wid), 10, "the game to close")
        report("seconds from the finish to the close", round(time.monotonic() - started, 1))
        check(w.game.poll() is not None, "a box came instead of the close")


def destroy_window(w, wid):
    """Destroys a window of another client, as a misbehaving program might."""
    import ctypes
    x11 = ctypes.cdll.LoadLibrary("libX11.so.6")
    x11.XOpenDisplay.restype = ctypes.c_void_p
    display = x11.XOpenDisplay(w.display.encode())
    check(display, "no connection to the X server")
    x11.XDestroyWindow(ctypes.c_void_p(display), ctypes.c_ulong(wid))
    x11.XCloseDisplay(ctypes.c_void_p(display))


def message_box():
    """The message box is a fixed tool window that frames itself (no
    minimise or maximise button from the window manager, outside the task
    bar, named for task switchers, centred on the game), and the system's
    close ends it whichever way it comes: its own close mark, Alt+F4, a close
    asked by another program, its window destroyed from outside. The game
    goes on each time."""
    with World("msgbox") as w:
        w.start_x()
        w.play(SILENT)

        def open_box(what):
            w.click(*PRINT)  # no puzzle: "Why to print with no puzzle?"
            box = wait_until(lambda: (windows_besides(w, w.wid) or [None])[-1], 5, what)
            wait_until(lambda: "IsViewable" in w.run(["xwininfo", "-id", str(box)]).stdout, 5, "the box shown")
            return box

        box = open_box("the message box")
        wait_until(lambda: "=" in w.prop(box, "_NET_WM_ALLOWED_ACTIONS"), 5, "the window manager to take the box")
        name, state = w.prop(box, "_NET_WM_NAME"), w.prop(box, "_NET_WM_STATE")
        kind, extents = w.prop(box, "_NET_WM_WINDOW_TYPE"), w.prop(box, "_NET_FRAME_EXTENTS")
        report("name, state, type, frame", (name, state, kind, extents))
        check("Tessuma Sudoku" in name, f"the box has no name for task switchers: {name}")
        motif = w.prop(box, "_MOTIF_WM_HINTS").split("=")[-1].split(",")
        check(len(motif) == 5 and int(motif[1], 0) == 4 | 32 and int(motif[2], 0) == 0,
              f"the box asks for more than move and close, or for a frame: {motif}")
        check(extents.endswith("0, 0, 0, 0"), f"the window manager frames the box: {extents}")
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

        def mark(box):
            bx, by, bw, bh = w.geometry(box)
            w.xdo("mousemove", bx + 377, by + 14)
            w.xdo("click", 1)

        def alt_f4(box):
            w.xdo("windowactivate", "--sync", box)
            w.key("alt+F4")
        ways = {"its close mark": mark, "Alt+F4": alt_f4,
                "wmctrl -c": lambda box: w.run(["wmctrl", "-i", "-c", hex(box)]),
                "its window destroyed": lambda box: destroy_window(w, box)}
        for how, close in ways.items():
            if box is None:
                box = open_box(f"the box before {how}")
            close(box)
            box = None
            wait_until(lambda: not windows_besides(w, w.wid), 5, f"the box to close by {how}")
            check(w.game.poll() is None, f"the game ended after {how}")
        # Still answering: the level menu opens.
        w.click(*CREATE)
        wait_until(lambda: windows_besides(w, w.wid), 5, "the level menu after the boxes")


def name_prompt_caret():
    """The high score prompt shows the last name with the caret after it:
    what the player types goes on from there, nothing is selected."""
    with World("name") as w:
        w.start_x()
        # Cell 40 is the last one open; its digit is 1.
        w.play(SILENT + "[Data]\nLastSavedName=Ann\n", empty={40}, score="24000")
        w.key("alt+a")
        w.key("1")
        box = wait_until(lambda: (windows_besides(w, w.wid) or [None])[-1], 10, "the name prompt")
        wait_until(lambda: "IsViewable" in w.run(["xwininfo", "-id", str(box)]).stdout, 5, "the prompt shown")
        w.key("x")
        w.key("Return")
        wait_until(lambda: not windows_besides(w, w.wid), 5, "the prompt to close")
        w.run(["wmctrl", "-i", "-c", hex(w.wid)])
        wait_until(lambda: w.game.poll() is not None, 10, "the game to close")
        with open(os.path.join(w.home, ".config", "Tessuma", "settings.ini")) as f:
            stored = f.read()
        report("stored", [line for line in stored.splitlines() if "Ann" in line])
        check("Annx" in stored, "the typed letter did not follow the old name")


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


# ---------------------------------------------------------------------------
# A player's session: default settings, music and effects together.

def ink(r, g, b):
    """A digit's pixel: red (given), black (typed) or blue (hinted)."""
    return (r > 140 and g < 90 and b < 110) or r + g + b < 200 or (b > 140 and r < 80 and g < 130)


def empty_cells(img, ox, oy):
    return [i for i in range(81) if img.count(
        tuple(v + d for v, d in zip(cell_rect(i), (ox + 9, oy + 7, ox - 9, oy - 7))), ink) < 8]


class Session:
    """Plays the game as a player does, noting when each effect should sound."""

    def __init__(self, w, rec):
        self.w, self.rec = w, rec
        self.heard = []  # (effects that may sound, second of the recording)

    def note(self, *effects):
        self.heard.append((effects, self.rec.seconds()))

    def at(self, second):
        """Goes on once the recording has reached `second`: a player's pace."""
        wait_until(lambda: self.rec.seconds() >= second, second + 30, f"second {second} of the session", step=0.2)

    def box(self):
        return (windows_besides(self.w, self.w.wid) or [None])[-1]

    def close_box(self):
        self.w.key("Return")
        wait_until(lambda: not self.box(), 5, "the box to close")

    def menu(self, button, entry_downs):
        self.w.click(*button)
        self.note(107)
        wait_until(self.box, 5, "the menu")
        # A player reads the menu: a choice within the popup's sound would
        # cut it off with the next one, as a new effect does.
        time.sleep(0.6)
        self.w.key(*(["Down"] * entry_downs), "Return")
        wait_until(lambda: not self.box(), 5, "the menu to close")

    def board(self):
        img, ox, oy = self.w.form_shot("board")
        return empty_cells(img, ox, oy)

    def type_digits(self, cells=1):
        """Types digits into the first empty cell (the caret key's) until one
        fits; wrong ones get their message, which is closed."""
        for _ in range(cells):
            empty = self.board()
            if len(empty) < 2:
                return
            first = empty[0]
            x0, y0, x1, y1 = cell_rect(first)
            ox, oy = self.w.origin()
            inside = (ox + x0 + 9, oy + y0 + 7, ox + x1 - 9, oy + y1 - 7)
            self.w.key("alt+a")
            for digit in range(1, 10):
                self.note(102, 103)
                self.w.key(str(digit))
                got = wait_until(lambda: ("box" if self.box() else None) or
                                 ("fits" if self.w.screenshot("typed").count(inside, ink) >= 8 else None),
                                 5, f"an answer to the digit {digit}")
                if got == "fits":
                    break
                self.close_box()

    def ring(self):
        """A click on an empty cell opens the ring; its 5 goes in."""
        empty = self.board()
        cell = empty[len(empty) // 2]
        x0, y0, x1, y1 = cell_rect(cell)
        self.w.click((x0 + x1) // 2, (y0 + y1) // 2)
        px, py = ring_point(cell, 5)
        ox, oy = self.w.origin()
        spot = (ox + px - 3, oy + py - 3, ox + px + 3, oy + py + 3)
        wait_until(lambda: self.w.screenshot("ring").count(spot, lambda r, g, b: b > 120 and r < 120) > 5, 5,
                   "the ring")
        self.note(102, 103)
        self.w.click(px, py)
        if wait_until(lambda: "box" if self.box() else "none", 1, "") == "box":
            self.close_box()


def player_session(server):
    """Three minutes of play from an empty settings store (sounds on, the
    song at 75) while a relaxed client records at the server's own latency:
    the song is heard all through, and every effect the play makes is heard."""
    with World(f"session-{server}") as w:
        w.start_x()
        w.start_sound(server)
        rec = w.record()
        s = Session(w, rec)
        s.note(101)
        w.start_game()
        s.at(6)
        s.menu(CREATE, 1)  # Easy
        s.note(101)        # the deal's start sound
        cycle, t = 0, 12
        while t < 160:
            s.at(t)
            s.type_digits(2)
            s.at(t + 12)
            s.ring()
            s.at(t + 20)
            s.menu(SOLVE, 1)  # Fill a Random Square
            s.note(104)
            s.at(t + 26)
            w.click(*HIGHS)
            s.note(106)
            s.at(t + 30)
            w.click(*HIGHS)
            s.note(106)
            s.at(t + 34)
            w.click(*HELP)
            s.note(106)
            s.at(t + 40)
            w.key("alt+o")  # the help's OK
            if cycle == 0:
                for _ in range(3):
                    w.key("alt+minus")  # softer, still heard
            cycle, t = cycle + 1, t + 44
        s.at(182)
        end = rec.seconds()
        check(w.game.poll() is None, "the game ended during the session")
        signal = hear.load(rec.path)
        gaps = hear.silent_stretches(signal, 6, end - 2)
        report("stretches of 5 s without the song (s)", gaps)
        missed, matches = [], []
        for effects, mark in s.heard:
            best = max(hear.match(signal, hear.effect(e), mark - 1, mark + 5) for e in effects)
            matches.append(round(best, 2))
            if best < 0.5:
                missed.append((effects, round(mark, 1), round(best, 2)))
        report("matches", matches)
        report("effects played", len(s.heard))
        report("effects not heard (effect, second, match)", missed)
        check(not gaps, f"the song is missing in the stretches starting at {gaps} s")
        check(not missed, f"effects not heard: {missed}")


def session_pulse():
    player_session("pulse")


def session_pipewire():
    player_session("pipewire")


CHECKS = {f.__name__: f for f in (song_heard, window_live, scaled_when_maximised, no_marks_left, ring_over_buttons,
                                    no_caret_on_given, saved_game_any_name, search_keeps_window_live, message_box, name_prompt_caret, offscreen_position,
                                    update_check_bounded, print_page, print_to_file, texts_fit,
                                    close_during_update, session_pulse, session_pipewire,
                                    sound_default_moves, sound_sink_replaced, sound_server_restarts,
                                    sound_rate_changes)}

if __name__ == "__main__":
    sys.exit(main(CHECKS))
