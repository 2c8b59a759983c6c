#!/usr/bin/env python3
"""Writes the media that session.json names: a one-second stereo tone and an empty video file.

Run it once beside session.json, then: corvelle-host show examples/session.json
"""
import math
import os
import struct
import wave

here = os.path.dirname(os.path.abspath(__file__))
os.makedirs(os.path.join(here, "media"), exist_ok=True)
with wave.open(os.path.join(here, "media", "loop.wav"), "wb") as out:
    out.setnchannels(2)
    out.setsampwidth(2)
    out.setframerate(44100)
    frames = bytearray()
    for n in range(44100):
        sample = int(8000 * math.sin(2 * math.pi * 220 * n / 44100))
        frames += struct.pack("<hh", sample, sample)
    out.writeframes(bytes(frames))
# The reference host doesn't decode video; the file only has to exist.
open(os.path.join(here, "media", "clip.mp4"), "wb").close()
