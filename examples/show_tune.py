#!/usr/bin/env python3
"""Prints the first bars of a MIDI file as note names: show_tune.py FILE.mid [BARS]

A line is a bar. Notes that begin together are joined by +; the number after a note is its length in sixteenths. It needs only Python 3.
"""
import struct
import sys

NAMES = ["C", "C#", "D", "D#", "E", "F", "F#", "G", "G#", "A", "A#", "B"]
DRUMS = {35: "kick", 36: "kick", 38: "snare", 40: "snare", 42: "hat", 44: "hat", 46: "hat", 49: "crash", 51: "ride"}


def variable_length(data, at):
    value = 0
    while True:
        value = value << 7 | data[at] & 0x7F
        at += 1
        if data[at - 1] < 0x80:
            return value, at


def events(data):
    """(tick, status, bytes) of a track; meta events have the status 0xFF and their kind as the first byte."""
    at, tick, status = 0, 0, 0
    while at < len(data):
        delta, at = variable_length(data, at)
        tick += delta
        if data[at] >= 0x80:
            status, at = data[at], at + 1
        if status == 0xFF:
            length, begin = variable_length(data, at + 1)
            yield tick, status, data[at:at + 1] + data[begin:begin + length]
            at = begin + length
        elif status in (0xF0, 0xF7):
            length, begin = variable_length(data, at)
            at = begin + length
        else:
            length = 1 if status & 0xE0 == 0xC0 else 2
            yield tick, status, data[at:at + length]
            at += length


def tracks(data):
    at = 14
    while at + 8 <= len(data):
        length = struct.unpack(">I", data[at + 4:at + 8])[0]
        if data[at:at + 4] == b"MTrk":
            yield data[at + 8:at + 8 + length]
        at += 8 + length


def read(path):
    """Ticks per quarter, the meter, and the notes: (begin, channel, pitch, length) in ticks."""
    with open(path, "rb") as file:
        data = file.read()
    division = struct.unpack(">H", data[12:14])[0]
    meter, notes = (4, 4), []
    for track in tracks(data):
        sounding = {}
        for tick, status, content in events(track):
            key = (status & 0x0F, content[0])
            if status == 0xFF and content[0] == 0x58:
                meter = (content[1], 2 ** content[2])
            elif status & 0xF0 == 0x90 and content[1] > 0:
                sounding.setdefault(key, []).append(tick)
            elif status & 0xF0 in (0x80, 0x90) and sounding.get(key):
                begin = sounding[key].pop(0)
                notes.append((begin, *key, tick - begin))
    return division, meter, sorted(notes)


def name_of(channel, pitch):
    if channel == 9:
        return DRUMS.get(pitch, "drum%d" % pitch)
    return NAMES[pitch % 12] + str(pitch // 12 - 1)


def main():
    division, (numerator, denominator), notes = read(sys.argv[1])
    bars = int(sys.argv[2]) if len(sys.argv) > 2 else 8
    sixteenth = division / 4
    bar_length = division * 4 * numerator / denominator
    print("%d/%d" % (numerator, denominator))
    for bar in range(bars):
        places = {}
        for begin, channel, pitch, length in notes:
            if bar * bar_length <= begin < (bar + 1) * bar_length:
                written = name_of(channel, pitch) + ("" if channel == 9 else ":%d" % max(round(length / sixteenth), 1))
                places.setdefault(begin, []).append(written)
        print("%3d  %s" % (bar + 1, "  ".join("+".join(names) for _, names in sorted(places.items())) or "-"))


if __name__ == "__main__":
    main()
