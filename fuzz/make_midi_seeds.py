#!/usr/bin/env python3
"""Writes seeds for fuzz_midi: fuzz/make_midi_seeds.py FOLDER. Each is two bytes of options and a short MIDI file."""
import pathlib
import sys


def quantity(value):
    digits = [value & 0x7F]
    while value := value >> 7:
        digits.insert(0, value & 0x7F | 0x80)
    return bytes(digits)


def track(*events):
    body = b''.join(events) + b'\0\xff\x2f\0'
    return b'MTrk' + len(body).to_bytes(4, 'big') + body


def song(form, division, *tracks):
    return b'MThd\0\0\0\6' + bytes([0, form, 0, len(tracks)]) + division.to_bytes(2, 'big') + b''.join(tracks)


def note(number, length, channel=0, rest=0):
    return quantity(rest) + bytes([0x90 | channel, number, 100]) + quantity(length) + bytes([0x80 | channel, number, 64])


METER = b'\0\xff\x58\4\4\2\x18\x08'
TEMPO = b'\0\xff\x51\3\7\xa1\x20'
TUNE = b''.join(note(number, 90, rest=6) for number in (60, 62, 64, 65, 67, 65, 64, 62))
DRUMS = b''.join(note(number, 40, 9, 8) for number in (36, 42, 38, 42) * 3)
CHORDS = b'\0\x90\x3c\x40\0\x40\x40\0\x43\x40\x60\x3c\0\0\x40\0\0\x43\0' * 3
SEEDS = {
    'melody': song(1, 96, track(METER, TEMPO), track(b'\0\xc0\x28', TUNE)),
    'one_track': song(0, 480, track(METER, TUNE)),
    'drums': song(1, 96, track(METER), track(DRUMS), track(TUNE, CHORDS)),
    'several': song(2, 96, track(METER, TUNE), track(CHORDS), track(b'\0\xb0\7\x40', TUNE)),
    'film_time': song(1, 0xE728, track(METER), track(TUNE)),
    'exclusive': song(1, 96, track(METER, b'\0\xf0\3\x43\x10\xf7', b'\0\xf0\2\1\2\5\xf7\2\3\xf7'), track(b'\0\xf2', TUNE, b'\1\xfe')),
    'texts': song(1, 96, track(b'\0\xff\1\x15!!!AMT: simple triple', b'\0\xff\3\3abc\0\xff\x59\2\xff\1\0\xff\x7f\2\1\2'), track(TUNE)),
    'overlap': song(1, 96, track(METER), track(b'\0\x90\x3c\x40\0\x3c\x40\0\xc0\x10\1\x80\x3c\0\1\x3c\0\1\x3c\0\1\x90\x3c\x10', TUNE)),
    'programs': song(1, 96, track(METER, b'\0\xc0\5\0\xc1\7'), track(TUNE, b'\0\xc0\6', TUNE), track(b'\x10\xc0\x08', TUNE, DRUMS)),
    'wrapped': b'RIFF\0\0\0\0RMIDdata\0\2\0\0' + song(0, 96, track(METER, b'\0\xff\3\3abc\0\xff\x20\1\0\0\xff\4\2ab', TUNE)),
    'long_lengths': song(1, 96, track(METER, b'\0\xff\1\x8f\xff\xff\xff\x7fab'), track(b'\x8f\xff\xff\xff\x7f', TUNE)),
}

folder = pathlib.Path(sys.argv[1])
folder.mkdir(parents=True, exist_ok=True)
for index, (name, content) in enumerate(SEEDS.items()):
    (folder / name).write_bytes(bytes([index % 8, index % 3]) + content)
    (folder / (name + '_cut')).write_bytes(bytes([2, 2]) + content[:len(content) * 2 // 3])
