"""The real world for the real game: an X server with a window manager, a
sound server, a print queue and a web server, each started here in a private
folder and stopped again, and the game binary run against them.

Every wait is on a condition with a time limit; a check that finds a tool
missing or a service that will not start ends with SKIP (exit 77), which the
test runner reports as skipped."""

import array
import http.server
import math
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time

SKIP = 77


class Skip(Exception):
    pass


class Failed(AssertionError):
    pass


def need(*tools):
    for t in tools:
        if not shutil.which(t):
            raise Skip(f"{t} is not installed")


# Every time limit is stretched by this much: a busy machine (CI runs other
# tests beside these) is slower, and a limit only costs time on a failure.
STRETCH = float(os.environ.get("TESSUMA_REAL_STRETCH", "2"))


def wait_until(cond, timeout, what, step=0.05):
    """Polls cond until it gives something true; fails after timeout seconds
    (stretched)."""
    timeout *= STRETCH
    end = time.monotonic() + timeout
    while True:
        got = cond()
        if got:
            return got
        if time.monotonic() > end:
            raise Failed(f"timed out after {timeout:.0f} s waiting for {what}")
        time.sleep(step)


def check(ok, message):
    if not ok:
        raise Failed(message)


# ---------------------------------------------------------------------------
# Pictures: screenshots read as raw RGB.

class Image:
    def __init__(self, width, height, data):
        self.width, self.height, self.data = width, height, data

    @staticmethod
    def from_ppm(raw):
        # P6 header: magic, width, height, maxval, each after white space.
        fields, pos = [], 0
        while len(fields) < 4:
            while raw[pos:pos + 1].isspace():
                pos += 1
            start = pos
            while not raw[pos:pos + 1].isspace():
                pos += 1
            fields.append(raw[start:pos])
        w, h = int(fields[1]), int(fields[2])
        return Image(w, h, raw[pos + 1:pos + 1 + 3 * w * h])

    @staticmethod
    def load(path, extra=()):
        raw = subprocess.run(["convert", *extra, path, "ppm:-"], check=True, capture_output=True).stdout
        return Image.from_ppm(raw)

    def px(self, x, y):
        i = 3 * (y * self.width + x)
        return tuple(self.data[i:i + 3])

    def count(self, rect, pred):
        x0, y0, x1, y1 = rect
        n = 0
        for y in range(max(0, y0), min(self.height, y1)):
            row = self.data[3 * y * self.width:3 * (y + 1) * self.width]
            for x in range(max(0, x0), min(self.width, x1)):
                if pred(row[3 * x], row[3 * x + 1], row[3 * x + 2]):
                    n += 1
        return n

    def crop_bytes(self, rect):
        x0, y0, x1, y1 = rect
        return b"".join(self.data[3 * (y * self.width + x0):3 * (y * self.width + x1)] for y in range(y0, y1))


def white(r, g, b):
    return r > 245 and g > 245 and b > 245


# ---------------------------------------------------------------------------

class World:
    """A private desktop session. Use as a context manager."""

    def __init__(self, name):
        self.name = name
        self.dir = tempfile.mkdtemp(prefix=f"tessuma-real-{name}-")
        self.home = os.path.join(self.dir, "home")
        self.runtime = os.path.join(self.dir, "run")
        for d in (self.home, self.runtime, os.path.join(self.home, ".config", "Tessuma"),
                  os.path.join(self.home, "Documents")):
            os.makedirs(d, exist_ok=True)
        os.chmod(self.runtime, 0o700)
        self.procs = []
        self.env = {k: v for k, v in os.environ.items()
                    if not k.startswith(("QT_", "PULSE", "CUPS", "XDG_", "DISPLAY", "WAYLAND", "DBUS_"))}
        self.env.update(HOME=self.home, XDG_RUNTIME_DIR=self.runtime, LC_ALL="C.UTF-8",
                        XDG_CONFIG_HOME=os.path.join(self.home, ".config"),
                        XDG_CACHE_HOME=os.path.join(self.home, ".cache"),
                        XDG_DOCUMENTS_DIR=os.path.join(self.home, "Documents"),
                        QT_QPA_PLATFORM="xcb", PULSE_SERVER="unix:/nonexistent",
                        CUPS_SERVER=os.path.join(self.dir, "no-cups.sock"))
        self.display = None
        self.game = None

    def __enter__(self):
        return self

    def __exit__(self, *exc):
        for p in reversed(self.procs):
            if p.poll() is None:
                try:
                    os.killpg(p.pid, signal.SIGTERM)
                except ProcessLookupError:
                    pass
        for p in reversed(self.procs):
            try:
                p.wait(timeout=5)
            except subprocess.TimeoutExpired:
                os.killpg(p.pid, signal.SIGKILL)
                p.wait()
        if os.environ.get("TESSUMA_REAL_KEEP"):
            print(f"kept {self.dir}")
        else:
            shutil.rmtree(self.dir, ignore_errors=True)
        return False

    def spawn(self, argv, log, env=None, **kw):
        out = open(os.path.join(self.dir, log), "ab")
        p = subprocess.Popen(argv, stdout=out, stderr=subprocess.STDOUT, env=env or self.env,
                             start_new_session=True, **kw)
        self.procs.append(p)
        return p

    def run(self, argv, **kw):
        return subprocess.run(argv, env=self.env, capture_output=True, text=True, timeout=30, **kw)

    # --- X server and window manager ---------------------------------------
    def start_x(self, size="1024x768"):
        need("Xvfb", "openbox", "xdotool", "xprop", "import")
        r, w = os.pipe()
        p = subprocess.Popen(["Xvfb", "-displayfd", str(w), "-screen", "0", f"{size}x24", "-nolisten", "tcp",
                              "-noreset"], pass_fds=(w,), stdout=subprocess.DEVNULL,
                             stderr=open(os.path.join(self.dir, "xvfb.log"), "ab"), start_new_session=True)
        self.procs.append(p)
        os.close(w)
        with os.fdopen(r) as f:
            number = f.readline().strip()
        if not number:
            raise Skip("Xvfb did not start")
        self.display = ":" + number
        self.env["DISPLAY"] = self.display
        self.spawn(["openbox", "--sm-disable"], "openbox.log")
        wait_until(lambda: "_NET_SUPPORTING_WM_CHECK(WINDOW)" in self.run(
            ["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"]).stdout, 10, "the window manager")

    def screenshot(self, name="shot"):
        path = os.path.join(self.dir, f"{name}.png")
        subprocess.run(["import", "-window", "root", path], env=self.env, check=True, capture_output=True)
        return Image.load(path)

    def xdo(self, *args):
        return self.run(["xdotool", *map(str, args)]).stdout.strip()

    def windows(self):
        """Visible top-level windows of the game, newest last."""
        out = self.xdo("search", "--onlyvisible", "--pid", self.game.pid) if self.game else ""
        return [int(w) for w in out.split()]

    def geometry(self, wid):
        out = self.run(["xwininfo", "-id", str(wid)]).stdout
        val = {}
        for line in out.splitlines():
            line = line.strip()
            for key in ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height"):
                if line.startswith(key + ":"):
                    val[key] = int(line.split(":")[1])
        return (val["Absolute upper-left X"], val["Absolute upper-left Y"], val["Width"], val["Height"])

    def prop(self, wid, name):
        return self.run(["xprop", "-id", str(wid), name]).stdout.strip()

    # --- session bus --------------------------------------------------------
    def start_dbus(self):
        """A private session bus (PipeWire's session manager needs one)."""
        if "DBUS_SESSION_BUS_ADDRESS" in self.env:
            return
        need("dbus-daemon")
        path = os.path.join(self.runtime, "bus")
        self.spawn(["dbus-daemon", "--session", "--nofork", "--nopidfile", f"--address=unix:path={path}"], "dbus.log")
        wait_until(lambda: os.path.exists(path), 10, "the session bus")
        self.env["DBUS_SESSION_BUS_ADDRESS"] = f"unix:path={path}"

    # --- sound server -------------------------------------------------------
    def start_sound(self, server="pulse"):
        """PulseAudio or PipeWire (with its PulseAudio server) and a null sink
        "t" at 44.1 kHz as the default output, in this world's own folders."""
        if server == "pipewire":
            self.start_pipewire()
        else:
            self.start_pulse()

    def start_pulse(self):
        need("pulseaudio", "parec", "pactl")
        sock = os.path.join(self.dir, "pulse.sock")
        env = dict(self.env, HOME=os.path.join(self.dir, "pulse-home"))
        os.makedirs(env["HOME"], exist_ok=True)
        self.sound = [self.spawn(["pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1",
                                  "--disallow-exit", "-L", "module-null-sink sink_name=t rate=44100",
                                  "-L", f"module-native-protocol-unix socket={sock} auth-anonymous=1"],
                                 "pulse.log", env=env)]
        self.env["PULSE_SERVER"] = "unix:" + sock
        self.server = "pulse"
        try:
            wait_until(lambda: self.run(["pactl", "info"]).returncode == 0, 15, "the sound server")
        except Failed:
            raise Skip("the sound server did not start")

    def start_pipewire(self):
        need("pipewire", "wireplumber", "pipewire-pulse", "pactl", "parec")
        self.start_dbus()
        self.sound = [self.spawn([tool], f"{tool}.log") for tool in ("pipewire", "wireplumber", "pipewire-pulse")]
        self.env["PULSE_SERVER"] = "unix:" + os.path.join(self.runtime, "pulse", "native")
        self.server = "pipewire"
        try:
            wait_until(lambda: self.run(["pactl", "info"]).returncode == 0, 15, "the sound server")
        except Failed:
            raise Skip("PipeWire did not start")
        self.add_sink("t", 44100)
        self.pactl("set-default-sink", "t")
        wait_until(lambda: self.default_sink() == "t", 10, "the null sink as the default output")

    def stop_sound(self):
        for p in reversed(self.sound):
            os.killpg(p.pid, signal.SIGTERM)
            p.wait(timeout=10)

    stop_pulse = stop_sound

    def pactl(self, *args):
        r = self.run(["pactl", *map(str, args)])
        check(r.returncode == 0, f"pactl {' '.join(map(str, args))}: {r.stderr.strip()}")
        return r.stdout.strip()

    def add_sink(self, name, rate):
        """Another null sink; returns its module's number."""
        module = self.pactl("load-module", "module-null-sink", f"sink_name={name}", f"rate={rate}")
        wait_until(lambda: name in self.sinks(), 10, f"the sink {name}")
        return module

    def sinks(self):
        return [line.split("\t")[1] for line in self.pactl("list", "short", "sinks").splitlines()]

    def default_sink(self):
        return self.pactl("get-default-sink")

    def sink_inputs(self):
        """The playing streams, as (stream, sink name, client name)."""
        names = {line.split("\t")[0]: line.split("\t")[1] for line in self.pactl("list", "short", "sinks").splitlines()}
        out = []
        for line in self.pactl("list", "short", "sink-inputs").splitlines():
            f = line.split("\t")
            out.append((f[0], names.get(f[1], f[1])))
        return out

    def record(self, sink="t", latency_ms=None):
        return Recorder(self, sink, latency_ms)

    # --- print queue --------------------------------------------------------
    def start_cups(self, paper="a4"):
        """A private CUPS server whose default queue is cups-pdf, on paper of
        the given size. The PDFs land where cups-pdf's own settings say,
        PDF/ in the home of the user who printed."""
        need("cupsd", "lpadmin", "lpstat")
        backend = "/usr/lib/cups/backend/cups-pdf"
        if os.geteuid() != 0 or not os.path.exists(backend):
            raise Skip("a private CUPS server needs root and the cups-pdf backend")
        root = os.path.join(self.dir, "cups")
        for d in ("", "spool", "cache", "log", "ppd", "etc"):
            os.makedirs(os.path.join(root, d), exist_ok=True)
        # The filters run as the print system's own user: they must reach
        # the spool and the queue's PPD.
        os.chmod(self.dir, 0o755)
        for d in ("", "ppd", "cache", "etc"):
            os.chmod(os.path.join(root, d), 0o755)
        os.chmod(os.path.join(root, "spool"), 0o1777)
        sock = os.path.join(root, "cups.sock")
        with open(os.path.join(root, "cupsd.conf"), "w") as f:
            f.write(f"Listen {sock}\nLogLevel warn\nDefaultPaperSize {paper}\n"
                    "<Location />\n Order allow,deny\n Allow all\n</Location>\n"
                    "<Policy default>\n <Limit All>\n  Order deny,allow\n </Limit>\n</Policy>\n")
        with open(os.path.join(root, "cups-files.conf"), "w") as f:
            f.write(f"ServerRoot {root}\nRequestRoot {root}/spool\nCacheDir {root}/cache\n"
                    f"StateDir {root}\nErrorLog {root}/log/error_log\nAccessLog {root}/log/access_log\n"
                    f"PageLog {root}/log/page_log\nTempDir {root}/spool\nSystemGroup root\n"
                    "ServerBin /usr/lib/cups\nDataDir /usr/share/cups\n")
        # cups-pdf reads its settings from a fixed place; a private copy is
        # not possible, so its output folder is set through the job's user home.
        self.spawn(["cupsd", "-f", "-c", os.path.join(root, "cupsd.conf"),
                    "-s", os.path.join(root, "cups-files.conf")], "cupsd.log")
        self.env["CUPS_SERVER"] = sock
        try:
            wait_until(lambda: os.path.exists(sock) and self.run(["lpstat", "-r"]).returncode == 0, 15,
                       "the print server")
        except Failed:
            raise Skip("the print server did not start")
        ppd = "/usr/share/ppd/cups-pdf/CUPS-PDF_opt.ppd"
        if not os.path.exists(ppd):
            ppd = "/usr/share/ppd/cups-pdf/CUPS-PDF_noopt.ppd"
        r = self.run(["lpadmin", "-p", "TessumaPDF", "-v", "cups-pdf:/", "-P", ppd, "-E",
                      "-o", f"PageSize={paper.capitalize() if paper != 'letter' else 'Letter'}"])
        if r.returncode != 0:
            raise Skip("the cups-pdf queue could not be made: " + r.stderr)
        self.run(["lpadmin", "-d", "TessumaPDF"])
        self.cups_root = root
        return root

    # --- settings and saved games -------------------------------------------
    def settings(self, text):
        with open(os.path.join(self.home, ".config", "Tessuma", "settings.ini"), "w") as f:
            f.write(text)

    def write_game(self, name, lines):
        path = os.path.join(self.dir, name)
        with open(path, "wb") as f:
            f.write("".join(line + "\r\n" for line in lines).encode("latin-1"))
        return path

    # --- the game -----------------------------------------------------------
    def play(self, settings, empty=None, env=None, **lines):
        """Writes the settings and starts the game, with a saved game whose
        cells `empty` are open when they are given (see game_lines)."""
        self.settings(settings)
        args = [self.write_game(f"{self.name}.tsm", game_lines(empty=empty, **lines))] if empty is not None else []
        return self.start_game(*args, env=env)

    def start_game(self, *args, binary=None, env=None):
        binary = binary or os.environ.get("TESSUMA_BINARY")
        check(binary and os.path.exists(binary), "no game binary: set TESSUMA_BINARY")
        genv = dict(self.env, **(env or {}))
        p = self.spawn([binary, *args], "game.log", env=genv)
        self.game = p
        wid = wait_until(lambda: self.main_window(), 20, "the game window")
        self.wid = wid
        return p

    def main_window(self):
        if self.game.poll() is not None:
            raise Failed(f"the game ended with {self.game.returncode}:\n" + self.log("game.log"))
        for w in self.windows():
            x, y, wd, ht = self.geometry(w)
            if wd >= 640 and ht >= 480:
                return w
        return None

    def origin(self):
        x, y, w, h = self.geometry(self.wid)
        return x, y

    def click(self, fx, fy, button=1):
        """Clicks at a point of the form (640 by 480 coordinates)."""
        x, y = self.origin()
        self.xdo("mousemove", x + fx, y + fy)
        self.xdo("click", button)

    def key(self, *keys):
        self.xdo("key", "--clearmodifiers", *keys)

    def form_shot(self, name="form"):
        img = self.screenshot(name)
        x, y = self.origin()
        return img, x, y

    def rss_peak_kib(self):
        with open(f"/proc/{self.game.pid}/status") as f:
            for line in f:
                if line.startswith("VmHWM:"):
                    return int(line.split()[1])
        return 0

    def log(self, name):
        try:
            with open(os.path.join(self.dir, name), errors="replace") as f:
                return f.read()
        except OSError:
            return ""


class Recorder:
    """Records a sink's monitor as raw 16-bit stereo at 44.1 kHz. By default
    at the server's own latency, as a relaxed client (a music player) does:
    the sink then runs with long buffers."""
    RATE = 44100

    def __init__(self, world, sink="t", latency_ms=None):
        self.path = os.path.join(world.dir, f"monitor-{sink}-{len(world.procs)}.raw")
        self.world = world
        latency = [f"--latency-msec={latency_ms}"] if latency_ms else []
        self.proc = world.spawn(["parec", "-d", f"{sink}.monitor", "--format=s16le", "--rate=44100",
                                 "--channels=2", *latency, self.path], "parec.log")
        wait_until(lambda: os.path.exists(self.path) and os.path.getsize(self.path) > 0, 10, "the recording")

    def samples(self):
        with open(self.path, "rb") as f:
            data = f.read()
        a = array.array("h")
        a.frombytes(data[:len(data) // 4 * 4])
        return a

    def seconds(self):
        return len(self.samples()) / 2 / self.RATE

    def rms(self, start_s, end_s):
        a = self.samples()
        i0, i1 = int(start_s * self.RATE) * 2, int(end_s * self.RATE) * 2
        part = a[i0:i1]
        if not part:
            return 0.0
        return math.sqrt(sum(x * x for x in part) / len(part)) / 32768.0

    def rms_since(self, mark):
        return self.rms(mark, self.seconds())

    def wait_sound(self, since, timeout, what, level=0.01):
        """Waits until the recording after `since` seconds holds sound."""
        return wait_until(lambda: self.rms_since(since) > level and self.seconds(), timeout, what, step=0.1)

    def wait_quiet(self, timeout, window=0.3, level=0.001):
        def quiet():
            now = self.seconds()
            return now > window and self.rms(now - window, now) < level and now
        return wait_until(quiet, timeout, "silence", step=0.1)


# ---------------------------------------------------------------------------
# A web server on 127.0.0.1 for the version file.

class Web:
    def __init__(self, routes):
        """routes: path -> callable(handler) that writes the answer."""
        outer = self

        class Handler(http.server.BaseHTTPRequestHandler):
            protocol_version = "HTTP/1.1"

            def do_GET(self):
                outer.hits.append(self.path)
                route = routes.get(self.path.split("?")[0])
                try:
                    if route is None:
                        self.send_error(404)
                    else:
                        route(self)
                except (BrokenPipeError, ConnectionResetError):
                    pass  # the game hung up: as it should on a huge file

            def log_message(self, *a):
                pass

        self.hits = []
        self.server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        self.server.daemon_threads = True
        self.port = self.server.server_address[1]
        threading.Thread(target=self.server.serve_forever, daemon=True).start()

    def url(self, path):
        return f"http://127.0.0.1:{self.port}{path}"

    def close(self):
        self.server.shutdown()
        self.server.server_close()


def send_text(body, content_type="text/plain"):
    data = body if isinstance(body, bytes) else body.encode()

    def route(h):
        h.send_response(200)
        h.send_header("Content-Type", content_type)
        h.send_header("Content-Length", str(len(data)))
        h.end_headers()
        h.wfile.write(data)
    return route


def send_endless(total, chunked=False, deadline_s=30):
    """A body of `total` bytes streamed in 64 KiB pieces, given up after the
    deadline so that a client that reads it all cannot keep the test busy."""
    piece = b"9" * 65536

    def route(h):
        h.send_response(200)
        h.send_header("Content-Type", "text/plain")
        if chunked:
            h.send_header("Transfer-Encoding", "chunked")
        else:
            h.send_header("Content-Length", str(total))
        h.end_headers()
        sent, end = 0, time.monotonic() + deadline_s
        while sent < total and time.monotonic() < end:
            if chunked:
                h.wfile.write(b"%x\r\n" % len(piece) + piece + b"\r\n")
            else:
                h.wfile.write(piece)
            sent += len(piece)
    return route


# ---------------------------------------------------------------------------
# Boards.

def solved_grid():
    """A full valid grid whose cell 0 holds 9."""
    return [9 - ((r * 3 + r // 3 + c) % 9) for r in range(9) for c in range(9)]


def game_lines(empty, score="24299", level="beginner", clock="100"):
    """The five lines of a saved game over solved_grid(), with the cells in
    `empty` left for the player and the others given."""
    grid = solved_grid()
    state = "".join(str(d) if i in empty else chr(64 + d) for i, d in enumerate(grid))
    return [state, score, level, clock, " " * 729]


# The form's geometry that the checks aim at.
def cell_rect(i):
    """Form rectangle (x0, y0, x1, y1) of cell i: 41-pixel cells from
    (120, 64), eight pixels more between boxes."""
    r, c = divmod(i, 9)
    x, y = 120 + 8 * (c // 3) + 41 * c, 64 + 8 * (r // 3) + 41 * r
    return (x, y, x + 41, y + 41)


# Offsets of the ring's ten pictures (16 by 18) from their cell's corner.
RING = [(13, -28), (33, -19), (50, 1), (50, 23), (33, 43), (13, 52), (-7, 43), (-24, 23), (-24, 1), (-7, -19)]


def ring_point(cell, digit):
    x, y, _, _ = cell_rect(cell)
    dx, dy = RING[digit - 1]
    return (x + dx + 8, y + dy + 9)


def main(checks):
    name = sys.argv[1] if len(sys.argv) > 1 else ""
    if name == "--list":
        print(" ".join(sorted(checks)))
        return 0
    if name not in checks:
        print("checks:", " ".join(sorted(checks)))
        return 2
    try:
        checks[name]()
    except Skip as e:
        print(f"SKIP: {e}")
        return SKIP
    except Failed as e:
        print(f"FAILED: {e}")
        return 1
    print("passed")
    return 0
