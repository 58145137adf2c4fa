"""Listening to a recording of the sound server: whether the song is there,
and whether an effect was heard under it.

An effect is found with a matched filter: the recording is correlated with
the effect's own samples, normalised by the energy of the stretch it lies on.
Where the effect sounds, the correlation reaches a large part of 1 even with
the song playing beneath it; elsewhere it stays near 0."""

import os
import wave

import numpy as np

RATE = 44100
SOUNDS = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "resources", "sounds")


def load(path):
    """A recording (raw 16-bit stereo at 44.1 kHz) as one mixed-down channel."""
    raw = np.fromfile(path, dtype="<i2")
    raw = raw[:len(raw) // 2 * 2].reshape(-1, 2).astype(np.float64) / 32768.0
    return raw.mean(axis=1)


def effect(number):
    """The samples of an effect (101..107), mixed down, at 44.1 kHz."""
    with wave.open(os.path.join(SOUNDS, f"{number}.wav")) as w:
        assert w.getframerate() == RATE and w.getsampwidth() == 2
        data = np.frombuffer(w.readframes(w.getnframes()), dtype="<i2").astype(np.float64) / 32768.0
        return data.reshape(-1, w.getnchannels()).mean(axis=1)


def match(signal, template, start_s, end_s):
    """The best normalised correlation of the template with the signal,
    wherever it starts inside [start_s, end_s). Both are compared by their
    changes from sample to sample, which brings out an effect's edges over
    the song's long notes."""
    first = max(0, int(start_s * RATE))
    last = min(len(signal), int(end_s * RATE) + len(template))
    x = np.diff(signal[first:last])
    template = np.diff(template)
    if len(x) < len(template):
        return 0.0
    n = len(x) + len(template)
    size = 1 << (n - 1).bit_length()
    corr = np.fft.irfft(np.fft.rfft(x, size) * np.conj(np.fft.rfft(template, size)), size)[:len(x) - len(template) + 1]
    energy = np.concatenate(([0.0], np.cumsum(x * x)))
    local = energy[len(template):] - energy[:-len(template)]
    norm = np.sqrt(np.maximum(local, 1e-12)) * np.linalg.norm(template)
    return float(np.max(corr / norm))


def block_levels(signal, start_s, end_s, block_s=0.1):
    """RMS of each block of the stretch."""
    a, b = int(start_s * RATE), min(len(signal), int(end_s * RATE))
    n = int(block_s * RATE)
    x = signal[a:a + (b - a) // n * n].reshape(-1, n)
    return np.sqrt((x * x).mean(axis=1))


def silent_stretches(signal, start_s, end_s, stretch_s=5.0, level=0.002, share=0.3):
    """The stretches of `stretch_s` seconds in which less than `share` of the
    tenths of a second hold sound: where the song is missing."""
    out = []
    t = start_s
    while t + stretch_s <= end_s:
        levels = block_levels(signal, t, t + stretch_s)
        if len(levels) == 0 or (levels > level).mean() < share:
            out.append(round(t, 1))
        t += stretch_s
    return out
