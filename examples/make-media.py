#!/usr/bin/env python3
"""Writes the media that session.json names: a one-second stereo tone and a two-second video file.

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

def box(kind, body):
    return struct.pack(">I", len(body) + 8) + kind + body


# The reference host decodes no video: it reads the length from the movie header, so the file
# holds only that (version 0, timescale 1000, duration 2000, then the header's fixed rest).
header = struct.pack(">IIIII", 0, 0, 0, 1000, 2000) + bytes(80)
with open(os.path.join(here, "media", "clip.mp4"), "wb") as out:
    out.write(box(b"ftyp", b"isom" + bytes(4)) + box(b"moov", box(b"mvhd", header)))
