"""A small additive/FM synthesiser for Tessuma's sound effects and songs.

Everything is rendered with numpy at 44.1 kHz into float arrays in the range
-1..1.  Instruments are plain functions that return a mono note (a 1-D array)
or a stereo note (shape (2, n)).  All randomness goes through a numpy
Generator handed in by the caller, so a fixed seed gives the same audio on
every run.
"""

import wave

import numpy as np

SR = 44100
TWO_PI = 2.0 * np.pi

_LETTERS = {"C": 0, "D": 2, "E": 4, "F": 5, "G": 7, "A": 9, "B": 11}


# --------------------------------------------------------------------------
# Pitch helpers


def midi_hz(m):
    return 440.0 * 2.0 ** ((m - 69) / 12.0)


def note_midi(name):
    """'C5', 'F#4', 'Bb3' -> MIDI number (C4 = 60)."""
    letter = name[0].upper()
    i = 1
    acc = 0
    while i < len(name) and name[i] in "#b":
        acc += 1 if name[i] == "#" else -1
        i += 1
    return 12 * (int(name[i:]) + 1) + _LETTERS[letter] + acc


def pitch_class(name):
    letter = name[0].upper()
    acc = sum(1 if c == "#" else -1 for c in name[1:])
    return (_LETTERS[letter] + acc) % 12


# --------------------------------------------------------------------------
# Envelopes


def samples(seconds):
    return max(1, int(round(seconds * SR)))


def taxis(n):
    return np.arange(n) / SR


def ramp_in(n, seconds):
    """Raised-cosine fade-in over the first `seconds` of an n-sample note."""
    env = np.ones(n)
    k = min(n, samples(seconds))
    env[:k] = 0.5 - 0.5 * np.cos(np.pi * np.arange(k) / k)
    return env


def ramp_out(n, seconds):
    """Raised-cosine fade-out reaching exactly zero at the last sample."""
    env = np.ones(n)
    k = min(n, samples(seconds))
    env[n - k:] = 0.5 + 0.5 * np.cos(np.pi * np.arange(1, k + 1) / k)
    return env


def gate(n, hold, release):
    """1 until `hold` seconds, then a raised-cosine release of `release` seconds."""
    env = np.ones(n)
    h = min(n, samples(hold))
    r = samples(release)
    tail = np.arange(n - h)
    env[h:] = np.where(tail < r, 0.5 + 0.5 * np.cos(np.pi * tail / r), 0.0)
    return env


# --------------------------------------------------------------------------
# Noise and spectral shaping


def shaped_noise(n, rng, lo=20.0, hi=20000.0, order=2):
    """White noise band-limited with smooth high- and low-pass slopes."""
    x = rng.standard_normal(n)
    spectrum = np.fft.rfft(x)
    f = np.fft.rfftfreq(n, 1.0 / SR)
    f[0] = 1e-3
    mask = 1.0 / np.sqrt(1.0 + (lo / f) ** (2 * order))
    mask /= np.sqrt(1.0 + (f / hi) ** (2 * order))
    y = np.fft.irfft(spectrum * mask, n)
    rms = np.sqrt(np.mean(y * y)) or 1.0
    return y / rms


def lowpass_fft(x, cutoff, order=2):
    n = x.shape[-1]
    spectrum = np.fft.rfft(x, axis=-1)
    f = np.fft.rfftfreq(n, 1.0 / SR)
    mask = 1.0 / np.sqrt(1.0 + (f / cutoff) ** (2 * order))
    return np.fft.irfft(spectrum * mask, n, axis=-1)


def highpass_fft(x, cutoff, order=2):
    n = x.shape[-1]
    spectrum = np.fft.rfft(x, axis=-1)
    f = np.fft.rfftfreq(n, 1.0 / SR)
    f[0] = 1e-3
    mask = 1.0 / np.sqrt(1.0 + (cutoff / f) ** (2 * order))
    return np.fft.irfft(spectrum * mask, n, axis=-1)


# --------------------------------------------------------------------------
# Tone generators


def modal(freq, hold, modes, attack=0.002, release=0.08, max_len=4.0, bend=None):
    """Sum of exponentially decaying sine modes: bars, tines, plucked strings.

    modes: (ratio, amplitude, decay time constant in seconds) for each mode.
    The note rings freely for `hold` seconds and is then damped over
    `release`.  `bend` is an optional (cents, seconds) pitch glide into the
    note, which gives a soft rubbery start.
    """
    longest = max(tau for _, _, tau in modes)
    length = min(hold + release, max_len, 6.0 * longest + release)
    n = samples(length)
    t = taxis(n)
    if bend:
        cents, tb = bend
        glide = 2.0 ** ((cents / 1200.0) * np.exp(-t / tb))
        base_phase = TWO_PI * freq * np.cumsum(glide) / SR
    else:
        base_phase = TWO_PI * freq * t
    out = np.zeros(n)
    for ratio, amp, tau in modes:
        if freq * ratio > 17000.0:
            continue
        out += amp * np.exp(-t / tau) * np.sin(base_phase * ratio)
    return out * ramp_in(n, attack) * gate(n, min(hold, length - release), release)


def pitch_decay(freq, pitch_ref=440.0, power=0.45):
    """Higher notes of a bar or tine ring shorter."""
    return (pitch_ref / freq) ** power


def marimba(freq, hold, vel=1.0):
    k = pitch_decay(freq)
    modes = [(1.0, 1.0, 0.42 * k), (3.99, 0.28 * vel, 0.09 * k), (9.9, 0.06 * vel, 0.025 * k)]
    return vel * modal(freq, hold + 0.35, modes, attack=0.0025, release=0.12, max_len=2.5)


def glockenspiel(freq, hold, vel=1.0):
    k = pitch_decay(freq, 1000.0, 0.35)
    modes = [(1.0, 1.0, 0.9 * k), (2.76, 0.32 * vel, 0.22 * k), (5.40, 0.12 * vel, 0.08 * k),
             (8.93, 0.05 * vel, 0.035 * k)]
    return vel * modal(freq, hold + 0.8, modes, attack=0.0015, release=0.2, max_len=3.0)


def music_box(freq, hold, vel=1.0):
    k = pitch_decay(freq, 1000.0, 0.3)
    modes = [(1.0, 1.0, 1.0 * k), (2.0, 0.07, 0.5 * k), (6.27, 0.22 * vel, 0.06 * k)]
    return vel * modal(freq, hold + 1.0, modes, attack=0.0015, release=0.25, max_len=3.0)


def kalimba(freq, hold, vel=1.0):
    k = pitch_decay(freq, 440.0, 0.4)
    modes = [(1.0, 1.0, 0.75 * k), (3.01, 0.05, 0.2 * k), (5.93, 0.25 * vel, 0.045 * k)]
    return vel * modal(freq, hold + 0.6, modes, attack=0.002, release=0.15, max_len=2.5,
                       bend=(18.0, 0.012))


def vibraphone(freq, hold, vel=1.0, tremolo=5.2):
    k = pitch_decay(freq, 440.0, 0.3)
    modes = [(1.0, 1.0, 1.8 * k), (4.0, 0.22 * vel, 0.25 * k), (10.0, 0.04 * vel, 0.05 * k)]
    x = modal(freq, hold + 0.15, modes, attack=0.002, release=0.18, max_len=4.0)
    t = taxis(len(x))
    return vel * x * (1.0 - 0.22 * (0.5 - 0.5 * np.cos(TWO_PI * tremolo * t)))


def epiano(freq, hold, vel=1.0):
    """Two-operator FM electric piano: a mellow tine with a soft bell on top."""
    length = min(hold + 0.25, 5.0)
    n = samples(length)
    t = taxis(n)
    index = (0.9 * vel + 0.25) * np.exp(-t / 0.35) + 0.12
    mod = np.sin(TWO_PI * freq * t)
    body = np.sin(TWO_PI * freq * t + index * mod)
    tine = 0.0
    if freq * 7.0 < 16000.0:
        tine = 0.08 * vel * np.exp(-t / 0.03) * np.sin(TWO_PI * freq * 7.0 * t)
    decay = np.exp(-t / (1.6 * pitch_decay(freq, 262.0, 0.5)))
    x = (body * (0.75 + 0.25 * decay) * decay + tine)
    return vel * x * ramp_in(n, 0.003) * gate(n, length - 0.25, 0.25)


def round_bass(freq, hold, vel=1.0):
    """Warm synth bass: a sine with a little second and third harmonic."""
    length = hold + 0.08
    n = samples(length)
    t = taxis(n)
    phase = TWO_PI * freq * t
    body = np.sin(phase) + 0.22 * np.sin(2 * phase) + 0.06 * np.exp(-t / 0.08) * np.sin(3 * phase)
    env = 0.7 + 0.3 * np.exp(-t / 0.12)
    return vel * body * env * ramp_in(n, 0.006) * gate(n, hold, 0.08)


def upright_bass(freq, hold, vel=1.0):
    """Plucked upright bass, damped at the end of the note."""
    modes = [(1.0, 1.0, 0.9), (2.0, 0.45, 0.45), (3.0, 0.22, 0.25), (4.0, 0.1, 0.15),
             (5.0, 0.05, 0.1)]
    return vel * modal(freq, hold, modes, attack=0.005, release=0.07, max_len=3.0,
                       bend=(-12.0, 0.02))


def harp(freq, hold, vel=1.0):
    modes = [(1.0, 1.0, 0.9), (2.0, 0.3, 0.35), (3.0, 0.12, 0.18), (4.0, 0.05, 0.1)]
    return vel * modal(freq, hold + 0.6, modes, attack=0.003, release=0.2, max_len=2.5)


def pad(freq, hold, vel=1.0, rng=None, attack=0.45, release=0.9):
    """Soft string-like pad: three detuned voices split over both channels."""
    length = hold + release
    n = samples(length)
    t = taxis(n)
    rng = rng or np.random.default_rng(0)
    out = np.zeros((2, n))
    for voice, (cents, side) in enumerate(((-7.0, 0), (0.0, None), (7.0, 1))):
        f = freq * 2.0 ** (cents / 1200.0)
        x = np.zeros(n)
        for h in range(1, 9):
            if f * h > 9000.0:
                break
            x += (1.0 / h) * np.exp(-h / 3.0) * np.sin(TWO_PI * f * h * t + rng.uniform(0, TWO_PI))
        if side is None:
            out += 0.5 * x
        else:
            out[side] += x
    env = ramp_in(n, attack) * gate(n, hold, release)
    return vel * 0.4 * out * env


# --------------------------------------------------------------------------
# Drums (each returns a mono hit)


def kick(rng, vel=1.0):
    n = samples(0.35)
    t = taxis(n)
    f = 48.0 + 75.0 * np.exp(-t / 0.035)
    body = np.sin(TWO_PI * np.cumsum(f) / SR) * np.exp(-t / 0.16)
    click = 0.15 * shaped_noise(n, rng, 800.0, 4000.0) * np.exp(-t / 0.004)
    return vel * (body + click) * ramp_in(n, 0.002) * ramp_out(n, 0.05)


def shaker(rng, vel=1.0):
    n = samples(0.09)
    t = taxis(n)
    env = (1.0 - np.exp(-t / 0.008)) * np.exp(-t / 0.022)
    return vel * 0.5 * shaped_noise(n, rng, 5000.0, 12000.0) * env * ramp_out(n, 0.02)


def hat(rng, vel=1.0, open_=False):
    n = samples(0.35 if open_ else 0.08)
    t = taxis(n)
    metal = np.zeros(n)
    for r in (2.0, 3.0, 4.16, 5.43, 6.79, 8.21):
        metal += np.sign(np.sin(TWO_PI * 420.0 * r * t))
    metal = highpass_fft(metal, 7000.0)
    noise = shaped_noise(n, rng, 7000.0, 14000.0)
    env = np.exp(-t / (0.09 if open_ else 0.018))
    x = 0.25 * metal / (np.sqrt(np.mean(metal * metal)) + 1e-9) + 0.35 * noise
    return vel * x * env * ramp_in(n, 0.001) * ramp_out(n, 0.02)


def ride(rng, vel=1.0):
    n = samples(0.9)
    t = taxis(n)
    bell = np.zeros(n)
    for r, a in ((1.0, 1.0), (2.41, 0.6), (3.73, 0.45), (5.17, 0.3), (6.93, 0.2)):
        bell += a * np.sin(TWO_PI * 780.0 * r * t + rng.uniform(0, TWO_PI))
    wash = shaped_noise(n, rng, 5000.0, 13000.0)
    x = 0.12 * bell * np.exp(-t / 0.12) + 0.3 * wash * np.exp(-t / 0.28)
    x = highpass_fft(x, 1500.0)
    return vel * x * ramp_in(n, 0.001) * ramp_out(n, 0.1)


def rim(rng, vel=1.0):
    n = samples(0.08)
    t = taxis(n)
    tone = np.sin(TWO_PI * 1750.0 * t) * np.exp(-t / 0.012) + 0.5 * np.sin(TWO_PI * 820.0 * t) * np.exp(-t / 0.02)
    noise = 0.3 * shaped_noise(n, rng, 2000.0, 8000.0) * np.exp(-t / 0.006)
    return vel * 0.6 * (tone + noise) * ramp_in(n, 0.0008) * ramp_out(n, 0.02)


def brush(rng, vel=1.0):
    n = samples(0.22)
    t = taxis(n)
    env = (1.0 - np.exp(-t / 0.012)) * np.exp(-t / 0.07)
    return vel * 0.45 * shaped_noise(n, rng, 1500.0, 7000.0) * env * ramp_out(n, 0.05)


def woodblock(freq, rng, vel=1.0, length=0.05):
    n = samples(length)
    t = taxis(n)
    x = np.sin(TWO_PI * freq * t) * np.exp(-t / 0.011)
    x += 0.35 * np.sin(TWO_PI * freq * 2.43 * t) * np.exp(-t / 0.005)
    x += 0.12 * shaped_noise(n, rng, 1500.0, 6000.0) * np.exp(-t / 0.002)
    return vel * x * ramp_in(n, 0.0006) * ramp_out(n, length * 0.35)


# --------------------------------------------------------------------------
# Mixing


def pan_gains(pan):
    """Constant-power gains for pan in -1 (left) .. +1 (right)."""
    a = (pan + 1.0) * np.pi / 4.0
    return np.cos(a), np.sin(a)


class Mixer:
    """A stereo bus with a reverb send."""

    def __init__(self, seconds):
        self.n = samples(seconds)
        self.dry = np.zeros((2, self.n))
        self.send = np.zeros(self.n)

    def add(self, at, note, gain=1.0, pan=0.0, send=0.2):
        start = int(round(at * SR))
        if start >= self.n or start < 0:
            return
        if note.ndim == 1:
            m = min(len(note), self.n - start)
            gl, gr = pan_gains(pan)
            self.dry[0, start:start + m] += gain * gl * note[:m]
            self.dry[1, start:start + m] += gain * gr * note[:m]
            self.send[start:start + m] += gain * send * note[:m]
        else:
            m = min(note.shape[1], self.n - start)
            self.dry[:, start:start + m] += gain * note[:, :m]
            self.send[start:start + m] += gain * send * 0.5 * (note[0, :m] + note[1, :m])

    def render(self, ir, wet=1.0):
        if ir is None:
            return self.dry.copy()
        out = self.dry.copy()
        for ch in range(2):
            out[ch] += wet * convolve(self.send, ir[ch])[: self.n]
        return out


def reverb_ir(rng, rt60=1.4, predelay=0.012, length=None, damping=0.45):
    """Stereo impulse response of a soft room: decaying noise, darker as it dies."""
    length = length or rt60 * 1.2
    n = samples(length)
    t = taxis(n)
    ir = np.zeros((2, n))
    pre = samples(predelay)
    for ch in range(2):
        low = shaped_noise(n, rng, 120.0, 2500.0) * np.exp(-6.9 * t / rt60)
        high = shaped_noise(n, rng, 2500.0, 11000.0) * np.exp(-6.9 * t / (rt60 * damping))
        tail = (low + 0.5 * high) * ramp_in(n, 0.02)
        # A few early reflections give the room a shape.
        for k in range(6):
            d = samples(rng.uniform(0.004, 0.045))
            tail[d] += rng.uniform(4.0, 9.0) * (1 if rng.random() < 0.5 else -1)
        ir[ch, pre:] = tail[: n - pre]
    ir *= ramp_out(n, length * 0.25)
    ir /= np.sqrt(np.sum(ir * ir) / 2.0)
    return ir


def convolve(x, h):
    n = len(x) + len(h) - 1
    size = 1 << (n - 1).bit_length()
    y = np.fft.irfft(np.fft.rfft(x, size) * np.fft.rfft(h, size), size)
    return y[:n]


# --------------------------------------------------------------------------
# Levels and output


def k_weighted(x):
    """Rough loudness weighting: cut the deep lows, lift the presence range."""
    n = x.shape[-1]
    spectrum = np.fft.rfft(x, axis=-1)
    f = np.fft.rfftfreq(n, 1.0 / SR)
    f[0] = 1e-3
    hp = 1.0 / np.sqrt(1.0 + (60.0 / f) ** 4)
    shelf = 1.0 + 0.58 / (1.0 + (1500.0 / f) ** 2)  # about +4 dB above 1.5 kHz
    return np.fft.irfft(spectrum * hp * shelf, n, axis=-1)


def loudness_db(x, window=0.05):
    """Loudest weighted RMS over any window of the clip, in dBFS."""
    y = k_weighted(np.atleast_2d(x))
    power = np.mean(y * y, axis=0)
    w = min(len(power), samples(window))
    csum = np.concatenate(([0.0], np.cumsum(power)))
    mean = (csum[w:] - csum[:-w]) / w
    return 10.0 * np.log10(max(mean.max(), 1e-20))


def mean_loudness_db(x):
    y = k_weighted(np.atleast_2d(x))
    return 10.0 * np.log10(max(np.mean(y * y), 1e-20))


def peak_db(x):
    return 20.0 * np.log10(max(np.max(np.abs(x)), 1e-20))


def normalise(x, target_db, measure=loudness_db, ceiling_db=-1.0):
    """Scale to a loudness target, never letting the peak pass the ceiling."""
    gain = 10.0 ** ((target_db - measure(x)) / 20.0)
    peak = np.max(np.abs(x)) * gain
    ceiling = 10.0 ** (ceiling_db / 20.0)
    if peak > ceiling:
        gain *= ceiling / peak
    return x * gain


def to_int16(x, rng):
    """Float -1..1 to 16-bit with triangular dither; the ends stay exactly 0."""
    x = np.atleast_2d(x)
    dither = (rng.random(x.shape) - rng.random(x.shape))
    y = np.round(x * 32767.0 + dither)
    y[:, 0] = 0
    y[:, -1] = 0
    return np.clip(y, -32767, 32767).astype("<i2")


def write_wav(path, x, rng):
    """16-bit PCM WAV, 44.1 kHz, mono for a 1-D array and stereo for (2, n)."""
    pcm = to_int16(x, rng)
    with wave.open(str(path), "wb") as w:
        w.setnchannels(pcm.shape[0])
        w.setsampwidth(2)
        w.setframerate(SR)
        w.writeframes(pcm.T.copy().tobytes())
