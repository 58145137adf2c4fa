#!/usr/bin/python3
"""Composes and renders Tessuma's three songs into resources/Music/tess0..2.mp3.

    /usr/bin/python3 art/audio/make_songs.py [output folder] [--wav]

The songs are written out below as chord charts and melodies in note names;
the script arranges them (intro, verses, bridge, ending), plays them on the
instruments of synth.py with a little human timing, adds a soft room and
encodes them with lame.  With --wav the rendered WAV files are kept beside the
MP3s.  The seeds are fixed, so the output is the same on every run.

  tess0  "Morning Grid"  F major, 100 bpm, 4/4: marimba and electric piano, cheerful
  tess1  "Tea Garden"    A minor, 126 bpm, 3/4 waltz: music box and harp, gentle
  tess2  "Pencil Marks"  G major, 108 bpm, swing: vibraphone, upright bass and brushes
"""

import os
import shutil
import subprocess
import sys
import tempfile

import numpy as np

import synth as s

HERE = os.path.dirname(os.path.abspath(__file__))
DEFAULT_OUT = os.path.normpath(os.path.join(HERE, "..", "..", "resources", "Music"))

# Average weighted loudness of a song (dBFS): well under the effects, which
# must stand out over the music.
SONG_DB = -22.0

CHORD_SHAPES = {
    "": (0, 4, 7), "m": (0, 3, 7), "7": (0, 4, 7, 10), "maj7": (0, 4, 7, 11),
    "m7": (0, 3, 7, 10), "6": (0, 4, 7, 9), "m6": (0, 3, 7, 9), "sus4": (0, 5, 7),
    "7sus4": (0, 5, 7, 10), "add9": (0, 4, 7, 14), "dim": (0, 3, 6), "m7b5": (0, 3, 6, 10),
    "9": (0, 4, 7, 10, 14),
}


# --------------------------------------------------------------------------
# Notation


class Chord:
    def __init__(self, symbol):
        self.symbol = symbol
        main, _, bass = symbol.partition("/")
        i = 1
        while i < len(main) and main[i] in "#b":
            i += 1
        self.root = s.pitch_class(main[:i])
        self.quality = main[i:]
        self.tones = [(self.root + iv) % 12 for iv in CHORD_SHAPES[self.quality]]
        self.bass = s.pitch_class(bass) if bass else self.root

    def fifth(self):
        for iv in CHORD_SHAPES[self.quality]:
            if iv in (6, 7):
                return (self.root + iv) % 12
        return self.root


def parse_chords(text, beats_per_bar):
    """'F | Am7 | Gm7 C7 | F' -> list of (beat, length, Chord)."""
    out = []
    for bar, cell in enumerate(text.split("|")):
        names = cell.split()
        share = beats_per_bar / len(names)
        for k, name in enumerate(names):
            out.append((bar * beats_per_bar + k * share, share, Chord(name)))
    return out


def parse_melody(text):
    """'A4:1 C5:.5 -:1 | ...' -> list of (beat, length, midi); '-' is a rest."""
    out = []
    beat = 0.0
    for token in text.replace("|", " ").split():
        name, _, length = token.partition(":")
        length = float(length)
        if name != "-":
            out.append((beat, length, s.note_midi(name)))
        beat += length
    return out, beat


# --------------------------------------------------------------------------
# The songs


SONGS = [
    {
        "file": "tess0", "title": "Morning Grid", "seed": 1100,
        "bpm": 100, "beats": 4, "swing": False,
        "lead": s.marimba, "double": s.glockenspiel, "comp": s.epiano, "bass": s.round_bass,
        "solo": s.kalimba, "pad_level": 0.22, "room": 1.3,
        "sections": {
            "A": ("F | Am7 | Bbmaj7 | C7 | F | Dm7 | Gm7 C7 | F",
                  "A4:1 C5:.5 F5:.5 E5:1 C5:1 | E5:1.5 D5:.5 C5:1 A4:1 | "
                  "D5:1 F5:.5 D5:.5 C5:1 Bb4:1 | G4:1 Bb4:.5 C5:.5 E5:2 | "
                  "A4:1 C5:.5 F5:.5 A5:1 G5:1 | F5:1.5 E5:.5 D5:1 C5:1 | "
                  "Bb4:1 D5:1 E5:1 G5:1 | F5:3 -:1"),
            "B": ("Bbmaj7 | C/Bb | Am7 | Dm7 | Gm7 | Am7 | Bbmaj7 | C7sus4 C7",
                  "F5:1 A5:1 G5:.5 F5:.5 D5:1 | E5:1 G5:1 C6:1.5 Bb5:.5 | "
                  "A5:2 G5:.5 E5:.5 C5:1 | D5:1 F5:.5 A5:.5 C6:1 A5:1 | "
                  "Bb5:1.5 A5:.5 G5:1 D5:1 | C5:1 E5:1 G5:1 E5:1 | "
                  "F5:1.5 D5:.5 A5:1 F5:1 | G5:2 E5:1 C5:1"),
            "C": ("Dm | Bb | F | C | Dm | Bb | Gm7 | C7",
                  "A5:2 F5:1 D5:1 | D5:2 F5:2 | C5:1 F5:1 A5:2 | G5:3 -:1 | "
                  "D6:2 C6:1 A5:1 | Bb5:2 A5:1 F5:1 | G5:2 F5:1 D5:1 | E5:2 G5:1 Bb5:1"),
            "end": ("Gm7 C7 | F | F",
                    "Bb4:1 D5:1 E5:1 G5:1 | F5:8"),
        },
        "form": [
            ("A", {"bars": (0, 4), "lead": False, "drums": "light", "pad": False}),
            ("A", {}),
            ("B", {"pad": True}),
            ("A", {"double": True}),
            ("C", {"lead": "solo", "drums": "light", "pad": True}),
            ("A", {"double": True}),
            ("B", {"pad": True, "double": True}),
            ("end", {"hold_from": 1, "drums": "end", "pad": True}),
        ],
    },
    {
        "file": "tess1", "title": "Tea Garden", "seed": 2200,
        "bpm": 126, "beats": 3, "swing": False,
        "lead": s.music_box, "double": s.kalimba, "comp": s.harp, "bass": s.upright_bass,
        "solo": s.kalimba, "pad_level": 0.3, "room": 1.8,
        "sections": {
            "A": ("Am | Am | Dm | Dm | G | G | C | C | F | F | Dm | E7 | Am | F | E7sus4 | E7",
                  "A4:1 C5:1 E5:1 | A5:2 G5:1 | F5:1.5 E5:.5 D5:1 | A4:3 | "
                  "B4:1 D5:1 G5:1 | G5:2 F5:1 | E5:1.5 D5:.5 C5:1 | G4:3 | "
                  "A4:1 C5:1 F5:1 | A5:2 G5:1 | F5:1 E5:1 D5:1 | G#4:1.5 B4:.5 D5:1 | "
                  "C5:2 B4:1 | A4:1 C5:1 A5:1 | A4:2 B4:1 | G#4:3"),
            "B": ("C | G/B | Am | Em | F | C/E | Dm7 | G7 | C | G/B | Am | Em | F | G | E7sus4 | E7",
                  "G5:2 E5:1 | D5:2 B4:1 | C5:1 E5:1 A5:1 | G5:3 | "
                  "A5:1.5 G5:.5 F5:1 | E5:1.5 D5:.5 C5:1 | D5:1 F5:1 A5:1 | G5:2 -:1 | "
                  "C6:2 G5:1 | B5:1.5 A5:.5 G5:1 | A5:1 E5:1 C5:1 | B4:2 E5:1 | "
                  "F5:1 A5:1 C6:1 | B5:2 D5:1 | E5:2 D5:1 | G#4:2 B4:1"),
            "C": ("Dm | Am | Dm | E7 | F | C | Dm | E7",
                  "D5:3 | C5:1 E5:2 | F5:2 A5:1 | G#5:3 | "
                  "A5:2 F5:1 | E5:2 C5:1 | D5:1 F5:1 A5:1 | G#4:2 B4:1"),
            "end": ("Dm | E7 | Am | Am | Am",
                    "F5:1 E5:1 D5:1 | B4:1.5 C5:.5 D5:1 | C5:1 B4:1 A4:7"),
        },
        "form": [
            ("A", {"bars": (0, 4), "lead": False, "drums": None, "pad": True}),
            ("A", {"drums": None}),
            ("B", {"pad": True, "drums": "light"}),
            ("A", {"double": True, "drums": "light"}),
            ("C", {"lead": "solo", "drums": None, "pad": True, "comp": False}),
            ("A", {"double": True, "drums": "light"}),
            ("end", {"hold_from": 2, "drums": None, "pad": True}),
        ],
    },
    {
        "file": "tess2", "title": "Pencil Marks", "seed": 3300,
        "bpm": 108, "beats": 4, "swing": True,
        "lead": s.vibraphone, "double": None, "comp": s.epiano, "bass": s.upright_bass,
        "solo": s.vibraphone, "pad_level": 0.0, "room": 1.2,
        "sections": {
            "A": ("Gmaj7 | Em7 | Am7 | D7 | Bm7 | E7 | Am7 D7 | G6",
                  "B4:.5 D5:.5 F#5:1 E5:.5 D5:.5 B4:1 | G5:1.5 E5:.5 D5:1 B4:1 | "
                  "C5:.5 E5:.5 G5:1 A5:.5 G5:.5 E5:1 | F#5:2.5 D5:.5 C5:.5 A4:.5 | "
                  "B4:1 D5:.5 F#5:.5 A5:1 F#5:1 | G#5:1.5 E5:.5 D5:1 B4:1 | "
                  "C5:1 E5:1 F#5:1 A5:1 | G5:3 -:1"),
            "B": ("Cmaj7 | Cm6 | Bm7 | E7 | Am7 | D7 | Gmaj7 | D7",
                  "E5:.5 G5:.5 B5:1 A5:.5 G5:.5 E5:1 | Eb5:1.5 C5:.5 A4:1 G4:1 | "
                  "D5:.5 F#5:.5 A5:1 F#5:1 D5:1 | G#5:2 E5:1 D5:1 | "
                  "C6:1 B5:.5 A5:.5 G5:1 E5:1 | F#5:1 A5:1 C6:1 A5:1 | "
                  "B5:1.5 A5:.5 G5:1 D5:1 | F#5:1 E5:.5 D5:.5 C5:1 A4:1"),
            "C": ("Gmaj7 | Em7 | Am7 | D7 | Bm7 | E7 | Am7 D7 | G6",
                  "D5:.5 E5:.5 G5:.5 B5:.5 A5:1 G5:1 | E5:1 -:.5 G5:.5 B5:1 D6:1 | "
                  "C6:1.5 A5:.5 E5:1 C5:1 | D5:.5 E5:.5 F#5:.5 A5:.5 C6:1 A5:1 | "
                  "B5:2 A5:.5 F#5:.5 D5:1 | E5:.5 G#5:.5 B5:.5 D6:.5 B5:1 G#5:1 | "
                  "A5:1 E5:1 D5:.5 F#5:.5 A5:1 | G5:2 -:2"),
            "end": ("Am7 D7 | G6 | G6",
                    "C5:1 E5:1 F#5:1 A5:1 | G5:8"),
        },
        "form": [
            ("A", {"bars": (0, 4), "lead": False, "drums": "light"}),
            ("A", {}),
            ("B", {}),
            ("A", {"octave": 12, "lead_gain": 0.8}),
            ("C", {"lead": "solo"}),
            ("B", {}),
            ("A", {}),
            ("end", {"hold_from": 1, "drums": "end"}),
        ],
    },
]


# --------------------------------------------------------------------------
# Arranging


def voice_chord(chord, previous, low=53, high=74):
    """Close voicing of the chord's tones, as near as possible to the last one."""
    tones = chord.tones[:4]
    best, best_cost = None, None
    for start in range(low, low + 12):
        if start % 12 not in tones:
            continue
        notes = [start]
        for pc in sorted(tones, key=lambda p: (p - start) % 12)[1:]:
            notes.append(start + (pc - start) % 12)
        if notes[-1] > high:
            continue
        ref = previous or [62, 65, 69, 72][: len(notes)]
        cost = sum(abs(a - b) for a, b in zip(sorted(notes), sorted(ref)))
        cost += abs(len(notes) - len(ref))
        if best_cost is None or cost < best_cost:
            best, best_cost = notes, cost
    return best


def bass_note(pc, low=36):
    return low + (pc - low) % 12


class Song:
    def __init__(self, plan):
        self.plan = plan
        self.rng = np.random.default_rng(plan["seed"])
        self.bpm = plan["bpm"]
        self.beats = plan["beats"]
        self.events = []  # (seconds, fn, midi, hold seconds, vel, gain, pan, send)
        self.hits = []    # (seconds, kind, vel, gain, pan, send)
        self.cursor = 0   # beats from the start of the song

    # Time ---------------------------------------------------------------

    def seconds(self, beat):
        if self.plan["swing"]:
            whole = np.floor(beat)
            frac = beat - whole
            frac = frac * 4.0 / 3.0 if frac <= 0.5 else 2.0 / 3.0 + (frac - 0.5) * 2.0 / 3.0
            beat = whole + frac
        return 0.15 + beat * 60.0 / self.bpm

    def note(self, fn, beat, length, midi, vel, gain, pan, send, jitter=0.006):
        start = self.seconds(beat) + self.rng.normal(0.0, jitter)
        hold = self.seconds(beat + length) - self.seconds(beat)
        vel = float(np.clip(vel * self.rng.normal(1.0, 0.06), 0.2, 1.0))
        self.events.append((max(0.0, start), fn, midi, hold, vel, gain, pan, send))

    def hit(self, kind, beat, vel, gain, pan=0.0, send=0.08):
        start = self.seconds(beat) + self.rng.normal(0.0, 0.004)
        vel = float(np.clip(vel * self.rng.normal(1.0, 0.08), 0.1, 1.0))
        self.hits.append((max(0.0, start), kind, vel, gain, pan, send))

    # Parts --------------------------------------------------------------

    def arrange(self):
        sp = self.plan
        voicing = None
        for name, opts in sp["form"]:
            chord_text, melody_text = sp["sections"][name]
            bars = chord_text.count("|") + 1
            chords = parse_chords(chord_text, self.beats)
            melody, length = parse_melody(melody_text)
            assert abs(length - bars * self.beats) < 1e-9, (sp["file"], name, length, bars)
            first, last = opts.get("bars", (0, bars))
            lo, hi = first * self.beats, last * self.beats
            hold_from = opts.get("hold_from")
            held = hold_from * self.beats if hold_from is not None else None
            base = self.cursor - lo

            # Melody, maybe doubled an octave up or played by the solo voice.
            lead = opts.get("lead", True)
            if lead:
                fn = sp["solo"] if lead == "solo" else sp["lead"]
                shift = opts.get("octave", 0)
                gain = opts.get("lead_gain", 1.0)
                for beat, ln, midi in melody:
                    if lo <= beat < hi:
                        self.note(fn, base + beat, ln, midi + shift, 0.85, gain, 0.1, 0.28)
                        if opts.get("double") and sp["double"]:
                            self.note(sp["double"], base + beat, ln, midi + 12, 0.6, 0.22, -0.3, 0.35)

            # Chords, bass and pad.
            for beat, ln, chord in chords:
                if not (lo <= beat < hi):
                    continue
                voicing = voice_chord(chord, voicing)
                at = base + beat
                if held is not None and beat >= held:
                    if beat == held:
                        rest = hi - beat
                        for k, m in enumerate(voicing):
                            self.note(sp["comp"], at + 0.02 * k, rest, m, 0.6, 0.33, -0.25 + 0.15 * k, 0.35)
                        self.note(sp["bass"], at, rest, bass_note(chord.root), 0.8, 0.7, 0.0, 0.1)
                        if opts.get("pad") and sp["pad_level"]:
                            for m in voicing:
                                self.note(s.pad, at, rest, m, 0.7, sp["pad_level"], 0.0, 0.4)
                    continue
                if opts.get("comp", True):
                    self.comp(at, ln, voicing)
                self.bass(at, ln, chord, chords, beat)
                if opts.get("pad") and sp["pad_level"]:
                    for m in voicing:
                        self.note(s.pad, at, ln, m, 0.7, sp["pad_level"], 0.0, 0.4, jitter=0.0)

            self.drums(self.cursor, hi - lo, opts.get("drums", "full"), held - lo if held is not None else None)
            self.cursor += hi - lo

    def comp(self, at, length, voicing):
        sp = self.plan
        fn = sp["comp"]
        if self.beats == 3:
            # Waltz: the harp answers the bass on beats two and three.
            for b in (1.0, 2.0):
                if b < length:
                    for k, m in enumerate(voicing):
                        self.note(fn, at + b + 0.015 * k, 0.8, m, 0.5, 0.2, -0.2 + 0.13 * k, 0.3)
            return
        if sp["swing"]:
            patterns = [((0.0, 0.6), (1.5, 0.5)), ((0.5, 0.4), (2.0, 0.8)), ((0.0, 1.2), (2.5, 0.4)),
                        ((1.5, 0.4), (3.0, 0.6))]
        else:
            patterns = [((0.0, 1.2), (1.5, 1.0), (3.0, 0.8))]
        pattern = patterns[self.rng.integers(len(patterns))]
        for b, ln in pattern:
            if b < length:
                for k, m in enumerate(voicing):
                    self.note(fn, at + b + 0.01 * k, min(ln, length - b), m, 0.55, 0.24, -0.25 + 0.15 * k, 0.3)

    def bass(self, at, length, chord, chords, beat):
        sp = self.plan
        fn = sp["bass"]
        root = bass_note(chord.bass)
        fifth = bass_note(chord.fifth())
        if self.beats == 3:
            # Root on one; when the chord stays for a second bar, the fifth instead.
            prev = [c for b, _, c in chords if b == beat - self.beats]
            note = fifth if prev and prev[0].symbol == chord.symbol else root
            self.note(fn, at, 2.5, note, 0.85, 0.8, 0.0, 0.1)
            return
        if sp["swing"]:
            # Walking quarter notes, ending on a step into the next chord.
            nxt = [c for b, _, c in chords if b >= beat + length]
            target = bass_note(nxt[0].root) if nxt else root
            steps = [root, bass_note(chord.tones[1]), fifth, target + (1 if self.rng.random() < 0.5 else -1)]
            if length <= 2:
                steps = [root, target + (1 if self.rng.random() < 0.5 else -1)]
            for k, m in enumerate(steps):
                self.note(fn, at + k, 0.9, m, 0.8 if k == 0 else 0.7, 0.85, 0.0, 0.08)
            return
        if length >= 4:
            pattern = ((0.0, 1.4, root), (1.5, 0.5, root), (2.0, 0.9, fifth), (3.0, 0.9, root + 12))
        else:
            pattern = ((0.0, 1.4, root), (1.5, 0.4, root))
        for b, ln, m in pattern:
            self.note(fn, at + b, ln, m, 0.8, 0.75, 0.0, 0.05)

    def drums(self, start, length, style, hold_from):
        if not style:
            return
        swing = self.plan["swing"]
        for b in range(int(round(length))):
            at = start + b
            in_bar = b % self.beats
            if hold_from is not None and b >= hold_from:
                if b == hold_from:
                    self.hit("ride" if swing else "shaker", at, 0.7, 0.35, 0.2)
                break
            if self.beats == 3:
                self.hit("shaker", at, 0.9 if in_bar == 0 else 0.6, 0.3, 0.3)
                if style == "full" and in_bar == 0:
                    self.hit("kick", at, 0.6, 0.5)
                continue
            if swing:
                self.hit("ride", at, 0.8 if in_bar in (1, 3) else 0.65, 0.3, 0.35)
                if in_bar in (1, 3):
                    self.hit("ride", at + 0.5, 0.5, 0.25, 0.35)
                    self.hit("hat", at, 0.6, 0.25, -0.3)
                    if style == "full":
                        self.hit("brush", at, 0.8, 0.5, -0.1, 0.15)
                if style == "full":
                    self.hit("kick", at, 0.35, 0.4)
                continue
            self.hit("shaker", at, 0.55, 0.3, 0.35)
            self.hit("shaker", at + 0.5, 0.85, 0.3, 0.35)
            if style == "full":
                if in_bar in (0, 2):
                    self.hit("kick", at, 0.8, 0.55)
                if in_bar == 2 and b % 8 == 6:
                    self.hit("kick", at + 0.5, 0.5, 0.45)
                if in_bar in (1, 3):
                    self.hit("rim", at, 0.7, 0.28, -0.15, 0.15)

    # Rendering ----------------------------------------------------------

    def render(self):
        sp = self.plan
        end = self.seconds(self.cursor) + 3.0
        mix = s.Mixer(end)
        drum_rng = np.random.default_rng(sp["seed"] + 1)
        kits = {
            "kick": [s.kick(drum_rng) for _ in range(3)],
            "shaker": [s.shaker(drum_rng) for _ in range(6)],
            "hat": [s.hat(drum_rng) for _ in range(4)],
            "ride": [s.ride(drum_rng) for _ in range(4)],
            "rim": [s.rim(drum_rng) for _ in range(4)],
            "brush": [s.brush(drum_rng) for _ in range(4)],
        }
        pad_rng = np.random.default_rng(sp["seed"] + 2)
        for at, fn, midi, hold, vel, gain, pan, send in self.events:
            freq = s.midi_hz(midi)
            if fn is s.pad:
                note = s.pad(freq, hold, vel, rng=pad_rng)
            else:
                note = fn(freq, hold, vel)
            mix.add(at, note, gain, pan, send)
        for at, kind, vel, gain, pan, send in self.hits:
            sample = kits[kind][drum_rng.integers(len(kits[kind]))]
            mix.add(at, sample * vel, gain, pan, send)
        ir = s.reverb_ir(np.random.default_rng(sp["seed"] + 3), rt60=sp["room"])
        out = mix.render(ir, wet=0.9)
        out = s.highpass_fft(out, 30.0)
        # Trim the silent tail and let the last chord die away smoothly.
        level = np.max(np.abs(out), axis=0)
        audible = np.nonzero(level > 10 ** (-70 / 20) * level.max())[0]
        stop = min(out.shape[1], audible[-1] + s.samples(0.05))
        out = out[:, :stop]
        out *= s.ramp_in(stop, 0.01) * s.ramp_out(stop, 2.5)
        return s.normalise(out, SONG_DB, measure=s.mean_loudness_db, ceiling_db=-1.5)


def encode(wav, mp3, plan):
    cmd = ["lame", "--quiet", "--noreplaygain", "-m", "j", "--cbr", "-b", "112", "-q", "2",
           "--tt", plan["title"], "--ta", "Tessuma Sudoku", "--tl", "Tessuma Sudoku",
           "--add-id3v2", wav, mp3]
    subprocess.run(cmd, check=True)


def main(argv):
    keep_wav = "--wav" in argv
    args = [a for a in argv[1:] if a != "--wav"]
    out_dir = args[0] if args else DEFAULT_OUT
    os.makedirs(out_dir, exist_ok=True)
    if shutil.which("lame") is None:
        sys.exit("lame is needed to encode the songs (Debian package lame)")
    only = os.environ.get("TESSUMA_SONG")
    for plan in SONGS:
        if only and plan["file"] != only:
            continue
        song = Song(plan)
        song.arrange()
        audio = song.render()
        with tempfile.TemporaryDirectory() as tmp:
            wav = os.path.join(tmp, plan["file"] + ".wav")
            s.write_wav(wav, audio, np.random.default_rng(plan["seed"] + 4))
            mp3 = os.path.join(out_dir, plan["file"] + ".mp3")
            encode(wav, mp3, plan)
            if keep_wav:
                shutil.copy(wav, os.path.join(out_dir, plan["file"] + ".wav"))
        print("%s  %-13s %5.1f s  %d notes  mean %.1f dB  peak %.1f dBFS  %d kB" % (
            mp3, plan["title"], audio.shape[1] / s.SR, len(song.events) + len(song.hits),
            s.mean_loudness_db(audio), s.peak_db(audio), os.path.getsize(mp3) // 1024))


if __name__ == "__main__":
    main(sys.argv)
