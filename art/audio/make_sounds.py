#!/usr/bin/python3
"""Renders Tessuma's seven sound effects into resources/sounds/101.wav .. 107.wav.

    /usr/bin/python3 art/audio/make_sounds.py [output folder]

The sounds are built from the little mallet instruments in synth.py: marimba,
glockenspiel, kalimba, a wood block and a rubbery "bloop".  Each is cut to
its nominal length with a short fade, and all are brought to one loudness so
that no effect jumps out over the others.  The seed is fixed: running the
script again gives the same files byte for byte.
"""

import os
import sys

import numpy as np

import synth as s

HERE = os.path.dirname(os.path.abspath(__file__))
DEFAULT_OUT = os.path.normpath(os.path.join(HERE, "..", "..", "resources", "sounds"))

# Loudest 50 ms of every effect lands here (weighted dBFS); peaks stay below -1 dBFS.
TARGET_DB = -15.0


def n(name):
    return s.midi_hz(s.note_midi(name))


def place(length, parts, stereo=False):
    """Mixes (time, note, gain, pan) parts into a clip of `length` seconds."""
    total = s.samples(length)
    out = np.zeros((2, total)) if stereo else np.zeros(total)
    for at, note, gain, pan in parts:
        start = s.samples(at) if at > 0 else 0
        m = min(len(note), total - start)
        if m <= 0:
            continue
        if stereo:
            gl, gr = s.pan_gains(pan)
            out[0, start:start + m] += gain * gl * note[:m]
            out[1, start:start + m] += gain * gr * note[:m]
        else:
            out[start:start + m] += gain * note[:m]
    return out


def finish(x, length, fade_out, rng, room=None, wet=0.0, fade_in=0.002):
    """Adds a touch of room, trims to length, fades the ends and levels it."""
    x = np.atleast_2d(x)
    if room is not None and wet > 0.0:
        mono = x.mean(axis=0)
        tail = np.stack([s.convolve(mono, room[ch])[: x.shape[1]] for ch in range(2)])
        if x.shape[0] == 1:
            x = x + wet * tail.mean(axis=0, keepdims=True)
        else:
            x = x + wet * tail
    total = s.samples(length)
    x = x[:, :total]
    x = x * s.ramp_in(total, fade_in) * s.ramp_out(total, fade_out)
    x = s.normalise(x, TARGET_DB)
    return x[0] if x.shape[0] == 1 else x


def puzzle_start(rng, room):
    """A puzzle is on the board: a bright rising arpeggio that blooms into a chord."""
    parts = []
    run = ["G4", "C5", "E5", "G5", "C6"]
    for i, name in enumerate(run):
        at = 0.01 + 0.11 * i
        parts.append((at, s.marimba(n(name), 0.25, vel=0.9), 0.8, 0.0))
        parts.append((at, s.glockenspiel(n(name) * 2, 0.05, vel=0.6), 0.22, 0.0))
    bloom = 0.01 + 0.11 * len(run)
    for j, name in enumerate(["C4", "E4", "G4", "C5", "E5"]):
        parts.append((bloom + 0.012 * j, s.epiano(n(name), 1.7, vel=0.6), 0.32, 0.0))
    for j, name in enumerate(["E6", "G6", "C7", "G6", "C7"]):
        parts.append((bloom + 0.05 + 0.085 * j, s.glockenspiel(n(name), 0.1, vel=0.5), 0.18, 0.0))
    x = place(2.6, parts)
    return finish(x, 2.6, 0.7, rng, room, wet=0.22)


def message(rng, room):
    """A message box opens: a friendly two-note "doo-dee" on the kalimba."""
    parts = [
        (0.005, s.kalimba(n("E5"), 0.12, vel=0.9), 1.0, 0.0),
        (0.005, s.glockenspiel(n("E6"), 0.05, vel=0.4), 0.15, 0.0),
        (0.135, s.kalimba(n("A5"), 0.4, vel=1.0), 1.0, 0.0),
        (0.135, s.glockenspiel(n("A6"), 0.05, vel=0.4), 0.18, 0.0),
    ]
    x = place(0.76, parts)
    return finish(x, 0.76, 0.3, rng, room, wet=0.15)


def digit_ok(rng, room):
    """A right digit: one small bright plink, soft enough to hear eighty times."""
    parts = [
        (0.0, s.kalimba(n("G5"), 0.08, vel=0.8), 0.8, 0.0),
        (0.0, s.glockenspiel(n("G6"), 0.04, vel=0.5), 0.3, 0.0),
    ]
    x = place(0.24, parts)
    return finish(x, 0.24, 0.12, rng, room, wet=0.1, fade_in=0.0015)


def hint_fill(rng, room):
    """A hint fills a square: a quick upward sparkle of three glockenspiel notes."""
    parts = []
    for i, name in enumerate(["E6", "G6", "C7"]):
        parts.append((0.003 + 0.038 * i, s.glockenspiel(n(name), 0.03, vel=0.7 + 0.1 * i), 0.55, 0.0))
    parts.append((0.003, s.marimba(n("C5"), 0.05, vel=0.6), 0.5, 0.0))
    x = place(0.20, parts)
    return finish(x, 0.20, 0.09, rng, room, wet=0.12, fade_in=0.0015)


def solved(rng, room):
    """The puzzle is solved: a little stereo fanfare sweeping left to right."""
    parts = []
    run = ["C5", "E5", "G5", "C6"]
    for i, name in enumerate(run):
        at = 0.005 + 0.075 * i
        pan = -0.6 + 0.4 * i
        parts.append((at, s.marimba(n(name), 0.2, vel=0.9), 0.75, pan))
        parts.append((at, s.glockenspiel(n(name) * 2, 0.05, vel=0.5), 0.2, pan))
    chord_at = 0.005 + 0.075 * len(run)
    for j, (name, pan) in enumerate((("C5", -0.5), ("E5", 0.5), ("G5", -0.2), ("C6", 0.2))):
        parts.append((chord_at + 0.008 * j, s.epiano(n(name), 0.6, vel=0.7), 0.3, pan))
    for j, name in enumerate(["G6", "C7", "E7", "G7"]):
        pan = 0.7 if j % 2 == 0 else -0.7
        parts.append((chord_at + 0.04 + 0.07 * j, s.glockenspiel(n(name), 0.05, vel=0.45), 0.14, pan))
    x = place(1.1, parts, stereo=True)
    return finish(x, 1.1, 0.4, rng, room, wet=0.25)


def nav_click(rng, room):
    """A side button: a tiny wooden tick."""
    x = s.woodblock(1250.0, rng, length=0.05)
    x = x + 0.4 * s.woodblock(2500.0, rng, length=0.05)
    return finish(x, 0.05, 0.02, rng, fade_in=0.0008)


def popup_open(rng, room):
    """A popup menu opens: a rubbery upward "bwoop" with a tiny ping on top."""
    length = 0.34
    total = s.samples(length)
    t = s.taxis(total)
    f = 330.0 * (1000.0 / 330.0) ** np.clip(t / 0.13, 0.0, 1.0) ** 0.8
    phase = s.TWO_PI * np.cumsum(f) / s.SR
    swell = np.sin(np.pi * np.clip(t / 0.16, 0.0, 1.0)) ** 1.5
    body = (np.sin(phase) + 0.18 * np.sin(2 * phase)) * swell
    ping = place(length, [(0.11, s.glockenspiel(n("B6"), 0.04, vel=0.6), 0.35, 0.0),
                          (0.11, s.marimba(n("B5"), 0.05, vel=0.6), 0.35, 0.0)])
    x = 0.8 * body + ping
    return finish(x, length, 0.14, rng, room, wet=0.12, fade_in=0.004)


EFFECTS = [
    (101, "SoundPuzzleStart", puzzle_start),
    (102, "SoundMessage", message),
    (103, "SoundDigitOk", digit_ok),
    (104, "SoundHintFill", hint_fill),
    (105, "SoundSolved", solved),
    (106, "SoundNavClick", nav_click),
    (107, "SoundPopupOpen", popup_open),
]


def main(argv):
    out_dir = argv[1] if len(argv) > 1 else DEFAULT_OUT
    os.makedirs(out_dir, exist_ok=True)
    for number, name, make in EFFECTS:
        rng = np.random.default_rng(number)
        room = s.reverb_ir(np.random.default_rng(7), rt60=0.6, length=0.7)
        x = make(rng, room)
        path = os.path.join(out_dir, "%d.wav" % number)
        s.write_wav(path, x, rng)
        channels = 2 if x.ndim == 2 else 1
        print("%s  %-17s %.3f s  %s  loudest %.1f dB  peak %.1f dBFS" % (
            path, name, x.shape[-1] / s.SR, "stereo" if channels == 2 else "mono  ",
            s.loudness_db(x), s.peak_db(x)))


if __name__ == "__main__":
    main(sys.argv)
