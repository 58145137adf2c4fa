#!/usr/bin/env python3
"""How lightly the whole game sits on the machine, beside the floor for any
Qt program (a bare window built in the same run) and GNOME Sudoku.

    bench/sitting.py [--rounds N] [--idle-s S] [--no-install] [--only NAMES]

Installs what it needs (GNOME Sudoku, the X Damage headers), builds
build-bench, starts a private Xvfb (no window manager, as a first start
meets it) and, per round and in turn, every subject:

  floor         bench_floor: a bare Qt window painting one colour
  song          the game with a puzzle running and a song playing into a
                private PulseAudio null sink
  songs-off     the same with the volume at 0 (nothing is heard)
  no-device     the same with no sound server at all
  gnome-sudoku  GNOME Sudoku, as Debian ships it
  deal          the game's measured twin (tessuma-measured) dealing a puzzle
                of each level as the level menu does: choice to painted board

Each start gets a fresh home folder and its own session bus. Figures per
start: exec to the first pixels of the window on screen (X Damage), resident
memory 3 s after the start (the game starts on a running puzzle, its deal),
then, from 11 s after the start (once the caret has come to rest, as in a
game left alone), over the next S seconds the CPU time of all threads
(schedstat) and their wake-ups (voluntary and forced context switches). The
table gives the median over the rounds. Raw figures:
build-bench/bench-out/sitting.json.
"""
import argparse
import json
import os
import shutil
import signal
import statistics
import subprocess
import sys
import tempfile
import time

SRC = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
sys.path.insert(0, os.path.join(SRC, "tests", "real"))
import rw  # noqa: E402  (the real-world tier's session helpers)

BUILD = os.environ.get("BENCH_BUILD", os.path.join(SRC, "build-bench"))
SUBJECTS = ["floor", "song", "songs-off", "no-device", "gnome-sudoku", "deal"]
LEVELS = range(4)
CARET_REST_S = 10  # the game's caret rests this long after the last key or click


def sh(*argv, **kw):
    return subprocess.run(argv, check=True, **kw)


def prepare(install):
    if install:
        sh("bash", os.path.join(SRC, "scripts", "deps.sh"), "gnome-sudoku", "libxdamage-dev", "libxfixes-dev",
           "dbus")
    if not os.path.exists(os.path.join(BUILD, "build.ninja")):
        sh("cmake", "-S", SRC, "-B", BUILD, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=RelWithDebInfo",
           "-DTESSUMA_BUILD_TESTS=OFF", stdout=subprocess.DEVNULL)
    else:  # find the X Damage headers installed since the last configure
        sh("cmake", BUILD, stdout=subprocess.DEVNULL)
    sh("cmake", "--build", BUILD, "-j", "2", "--target", "tessuma", "tessuma-measured", "bench_floor",
       "bench_firstframe",
       stdout=subprocess.DEVNULL)


def threads_figures(pid):
    """(CPU nanoseconds, context switches) summed over the live threads."""
    cpu = switches = 0
    for tid in os.listdir(f"/proc/{pid}/task"):
        try:
            with open(f"/proc/{pid}/task/{tid}/schedstat") as f:
                cpu += int(f.read().split()[0])
            with open(f"/proc/{pid}/task/{tid}/status") as f:
                for line in f:
                    if line.startswith(("voluntary_ctxt_switches", "nonvoluntary_ctxt_switches")):
                        switches += int(line.split()[1])
        except (FileNotFoundError, ProcessLookupError):
            pass  # a thread that ended meanwhile
    return cpu, switches


def rss_mb(pid):
    with open(f"/proc/{pid}/status") as f:
        for line in f:
            if line.startswith("VmRSS:"):
                return int(line.split()[1]) / 1024
    return float("nan")


class Bench:
    def __init__(self, idle_s):
        self.idle_s = idle_s
        self.world = rw.World("bench")
        self.world.__enter__()
        self.start_x()

    def close(self):
        self.world.__exit__(None, None, None)

    def start_x(self):
        r, w = os.pipe()
        p = subprocess.Popen(["Xvfb", "-displayfd", str(w), "-screen", "0", "1024x768x24", "-nolisten", "tcp",
                              "-noreset"], pass_fds=(w,), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                             start_new_session=True)
        self.world.procs.append(p)
        os.close(w)
        with os.fdopen(r) as f:
            self.world.env["DISPLAY"] = ":" + f.readline().strip()

    def argv(self, subject, home):
        if subject == "floor":
            return [os.path.join(BUILD, "bench_floor")]
        if subject == "gnome-sudoku":
            return ["/usr/games/gnome-sudoku"]
        volume = "0" if subject == "songs-off" else "75"
        conf = os.path.join(home, ".config", "Tessuma")
        os.makedirs(conf, exist_ok=True)
        with open(os.path.join(conf, "settings.ini"), "w") as f:
            f.write(f"[Options]\nSounds=1\nVolume={volume}\n")
        game = os.path.join(home, "game.tsm")
        with open(game, "wb") as f:
            lines = rw.game_lines(empty=set(range(0, 81, 2)))
            f.write("".join(line + "\r\n" for line in lines).encode("latin-1"))
        return [os.path.join(BUILD, "tessuma"), game]

    def home(self):
        home = tempfile.mkdtemp(prefix="sitting-", dir=self.world.dir)
        return home, dict(self.world.env, HOME=home, XDG_CONFIG_HOME=os.path.join(home, ".config"),
                          XDG_CACHE_HOME=os.path.join(home, ".cache"), XDG_DATA_HOME=os.path.join(home, ".local/share"),
                          XDG_DOCUMENTS_DIR=home, PULSE_SERVER="unix:/nonexistent")

    def deal(self):
        """Choice to painted board (ms) for each level, reported by the game."""
        figures = {}
        for level in LEVELS:
            home, env = self.home()
            env["TESSUMA_BENCH_DEAL"] = str(level)
            try:
                out = subprocess.run([os.path.join(BUILD, "tessuma-measured")], env=env, capture_output=True,
                                     text=True, timeout=60).stdout
            finally:
                shutil.rmtree(home, ignore_errors=True)
            ns = [int(line.split()[-1]) for line in out.splitlines() if line.startswith("tessuma-bench: deal-ns")]
            figures[f"deal_{level}_ms"] = ns[0] / 1e6 if ns else float("nan")
        return figures

    def one(self, subject):
        if subject == "deal":
            return self.deal()
        home, env = self.home()
        if subject in ("song", "songs-off"):
            env["PULSE_SERVER"] = self.world.env["PULSE_SERVER"]
        bus = subprocess.run(["dbus-daemon", "--session", "--fork", "--print-address=1", "--print-pid=1"],
                             env=env, capture_output=True, text=True, check=True).stdout.split()
        env["DBUS_SESSION_BUS_ADDRESS"], bus_pid = bus[0], int(bus[1])
        out = subprocess.run([os.path.join(BUILD, "bench_firstframe"), "--", *self.argv(subject, home)], env=env,
                             capture_output=True, text=True, start_new_session=True, timeout=60).stdout.split()
        first_ms, pid = float(out[1]), int(out[3])
        try:
            time.sleep(3)
            rss = rss_mb(pid)
            # The figures below are of a game left alone: the caret blinks for
            # ten seconds after the last input (here, the start) and then rests.
            time.sleep(CARET_REST_S - 3 + 1)
            cpu0, sw0 = threads_figures(pid)
            t0 = time.monotonic()
            time.sleep(self.idle_s)
            cpu1, sw1 = threads_figures(pid)
            span = time.monotonic() - t0
        finally:
            for p in (pid, bus_pid):
                try:
                    os.kill(p, signal.SIGKILL)
                except ProcessLookupError:
                    pass
            shutil.rmtree(home, ignore_errors=True)
        time.sleep(0.5)
        return {"first_frame_ms": first_ms, "rss_mb": rss, "cpu_pct": (cpu1 - cpu0) / span / 1e7,
                "wakeups_per_s": (sw1 - sw0) / span}


def table(results):
    med = {s: {k: statistics.median(r[k] for r in rs) for k in rs[0]} for s, rs in results.items() if rs}
    floor = med.get("floor")
    rows = [("exec to first frame (ms)", "first_frame_ms", "%.0f"), ("RSS 3 s after the deal (MB)", "rss_mb", "%.1f"),
            ("idle CPU, % of one core", "cpu_pct", "%.2f"), ("idle wake-ups per second", "wakeups_per_s", "%.1f")]
    cols = [s for s in SUBJECTS if s in med and s != "deal"]
    print()
    print(f"Whole program, {len(next(iter(results.values())))} rounds, medians; "
          f"{os.cpu_count()} cores, load {open('/proc/loadavg').read().split()[0]}")
    print()
    print("| figure | " + " | ".join(cols) + " |")
    print("|---" * (len(cols) + 1) + "|")
    for title, key, fmt in rows:
        cells = []
        for s in cols:
            v = fmt % med[s][key]
            if floor and s not in ("floor", "gnome-sudoku") and key == "first_frame_ms":
                v += " (%.2f×)" % (med[s][key] / floor[key])
            if floor and s not in ("floor", "gnome-sudoku") and key == "rss_mb":
                v += " (+%.1f)" % (med[s][key] - floor[key])
            cells.append(v)
        print(f"| {title} | " + " | ".join(cells) + " |")
    if "deal" in med:
        print()
        print("Deal to painted board (ms), levels 0..3: " +
              ", ".join("%.1f" % med["deal"][f"deal_{level}_ms"] for level in LEVELS) + " (aim < 16)")
    print()
    print("Aims: first frame <= 1.6× the floor; RSS <= floor + 20 MB with a song, + 10 MB without; idle with a")
    print("song <= 50 wake-ups/s and 0.5 %, songs off or no device <= 8 wake-ups/s and 0.1 %.")


def main():
    ap = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    ap.add_argument("--rounds", type=int, default=5)
    ap.add_argument("--idle-s", type=float, default=10)
    ap.add_argument("--no-install", action="store_true")
    ap.add_argument("--only", default=",".join(SUBJECTS))
    args = ap.parse_args()
    subjects = [s for s in SUBJECTS if s in args.only.split(",")]
    prepare(not args.no_install)
    b = Bench(args.idle_s)
    results = {s: [] for s in subjects}
    try:
        if any(s in ("song", "songs-off") for s in subjects):
            b.world.start_pulse()
        for r in range(args.rounds):
            order = subjects if r % 2 == 0 else list(reversed(subjects))
            for s in order:
                results[s].append(b.one(s))
                print(f"round {r + 1} {s}: {results[s][-1]}", file=sys.stderr)
    finally:
        b.close()
    os.makedirs(os.path.join(BUILD, "bench-out"), exist_ok=True)
    with open(os.path.join(BUILD, "bench-out", "sitting.json"), "w") as f:
        json.dump(results, f, indent=1)
    table(results)


if __name__ == "__main__":
    main()
