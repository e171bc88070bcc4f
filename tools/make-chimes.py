#!/usr/bin/env python3
"""Synthesises Tarnwell's seven timer chimes into resources/sounds/.

Each chime is a short mono 16-bit 44.1 kHz WAV file built from sine partials
under a soft attack and an exponential decay, so that nothing clicks. The
output is deterministic: running the script again rewrites identical files.

Usage: tools/make-chimes.py [output-folder]
"""
import math
import os
import struct
import sys
import wave

RATE = 44100
PEAK = 0.7  # headroom below full scale


def envelope(t, length, attack=0.006, decay=6.0, release=0.03):
    """Soft linear attack, exponential decay, and a short fade to silence."""
    gain = min(1.0, t / attack) * math.exp(-decay * t)
    tail = length - t
    if tail < release:
        gain *= max(0.0, tail / release)
    return gain


def bell(freq, partials, length, decay):
    """A struck tone: (ratio, level, decay factor) partials over a base frequency."""
    def sample(t):
        value = 0.0
        for ratio, level, faster in partials:
            value += level * math.exp(-decay * faster * t) * math.sin(2 * math.pi * freq * ratio * t)
        return value * envelope(t, length, decay=0.0)
    return sample


def glass(length):
    # Bright and glassy: inharmonic upper partials that die away first.
    return bell(1568.0, [(1.0, 1.0, 1.0), (2.76, 0.45, 2.2), (5.40, 0.2, 3.5), (8.93, 0.08, 5.0)], length, 5.0)


def tink(length):
    # A tiny metallic tap.
    return bell(2637.0, [(1.0, 1.0, 1.0), (3.1, 0.3, 2.5)], length, 16.0)


def ping(length):
    # A clean, round single note.
    return bell(1318.5, [(1.0, 1.0, 1.0), (2.0, 0.15, 2.0)], length, 7.0)


def purr(length):
    # A low tone fluttering at 28 Hz.
    def sample(t):
        flutter = 0.55 + 0.45 * math.sin(2 * math.pi * 28.0 * t)
        tone = math.sin(2 * math.pi * 196.0 * t) + 0.35 * math.sin(2 * math.pi * 392.0 * t)
        return tone * flutter * envelope(t, length, attack=0.03, decay=3.5, release=0.08)
    return sample


def pop(length):
    # A quick blip whose pitch drops from 700 Hz to 180 Hz.
    def sample(t):
        f0, f1, k = 700.0, 180.0, 40.0
        # Phase of an exponentially gliding frequency f(t) = f1 + (f0 - f1) e^(-k t).
        phase = 2 * math.pi * (f1 * t + (f0 - f1) * (1 - math.exp(-k * t)) / k)
        return math.sin(phase) * envelope(t, length, attack=0.002, decay=25.0, release=0.02)
    return sample


def hero(length):
    # A rising major arpeggio, each note ringing on under the next.
    notes = [523.25, 659.25, 783.99, 1046.5]
    step = 0.14

    def sample(t):
        value = 0.0
        for i, freq in enumerate(notes):
            start = i * step
            if t >= start:
                local = t - start
                ring = 3.0 if i < len(notes) - 1 else 2.2
                value += (math.sin(2 * math.pi * freq * local) + 0.25 * math.sin(2 * math.pi * 2 * freq * local)) \
                    * min(1.0, local / 0.005) * math.exp(-ring * local)
        return 0.5 * value * envelope(t, length, attack=0.001, decay=0.0, release=0.08)
    return sample


def submarine(length):
    # A sonar ping: a low note that bends down slightly, with a soft echo.
    def voice(t):
        if t < 0:
            return 0.0
        freq = 740.0 * (1 - 0.03 * (1 - math.exp(-3.0 * t)))
        return (math.sin(2 * math.pi * freq * t) + 0.2 * math.sin(2 * math.pi * 1.5 * freq * t)) \
            * min(1.0, t / 0.012) * math.exp(-4.0 * t)

    def sample(t):
        return (voice(t) + 0.35 * voice(t - 0.28)) * envelope(t, length, attack=0.001, decay=0.0, release=0.1)
    return sample


CHIMES = [
    ("Glass", glass, 0.80),
    ("Tink", tink, 0.30),
    ("Ping", ping, 0.60),
    ("Purr", purr, 0.70),
    ("Pop", pop, 0.16),
    ("Hero", hero, 0.95),
    ("Submarine", submarine, 0.95),
]


def render(make, length):
    sample = make(length)
    frames = [sample(i / RATE) for i in range(int(length * RATE))]
    loudest = max(abs(v) for v in frames) or 1.0
    scale = PEAK / loudest
    return b"".join(struct.pack("<h", int(round(v * scale * 32767))) for v in frames)


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    out = sys.argv[1] if len(sys.argv) > 1 else os.path.join(here, "..", "resources", "sounds")
    os.makedirs(out, exist_ok=True)
    for name, make, length in CHIMES:
        path = os.path.join(out, name + ".wav")
        with wave.open(path, "wb") as f:
            f.setnchannels(1)
            f.setsampwidth(2)
            f.setframerate(RATE)
            f.writeframes(render(make, length))
        print(f"{path}: {length:.2f} s")


if __name__ == "__main__":
    main()
