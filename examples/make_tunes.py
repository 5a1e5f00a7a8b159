#!/usr/bin/env python3
"""Writes the three sample tunes: tide.mid (a melody), quay.mid (melody, chords, bass and drums) and gulls.mid (a waltz).

The tunes are made of a few motifs that recur at other places and in other keys, so that most contexts have several continuations to
learn. Run it in the folder for the files. It needs only Python 3.
"""
import struct

TICKS = 480  # per quarter note
DRUMS = 9
KICK, SNARE, HAT, RIDE = 36, 38, 42, 51


def variable_length(value):
    groups = [value & 0x7F]
    while value > 0x7F:
        value >>= 7
        groups.append(0x80 | (value & 0x7F))
    return bytes(reversed(groups))


def track(events):
    """A track chunk of (tick, order, bytes) events, sorted by tick and then by order."""
    data, now = b"", 0
    for tick, _, message in sorted(events):
        data += variable_length(tick - now) + message
        now = tick
    data += b"\x00\xff\x2f\x00"
    return b"MTrk" + struct.pack(">I", len(data)) + data


def meta(kind, payload):
    return bytes([0xFF, kind]) + variable_length(len(payload)) + payload


def conductor(name, beats_a_minute, numerator, denominator_power):
    tempo = 60_000_000 // beats_a_minute
    return track([(0, 0, meta(3, name.encode())),
                  (0, 1, meta(0x51, struct.pack(">I", tempo)[1:])),
                  (0, 2, meta(0x58, bytes([numerator, denominator_power, 24, 8])))])


def part(channel, program, notes):
    """A track of notes (start, length, pitch, velocity), in quarters; each note ends 10 ticks early."""
    events = [] if channel == DRUMS else [(0, 0, bytes([0xC0 | channel, program]))]
    for start, length, pitch, velocity in notes:
        begin = round(start * TICKS)
        end = begin + round(length * TICKS) - 10
        events.append((end, 1, bytes([0x80 | channel, pitch, 64])))
        events.append((begin, 2, bytes([0x90 | channel, pitch, velocity])))
    return track(events)


def write(path, chunks):
    with open(path, "wb") as file:
        file.write(b"MThd" + struct.pack(">IHHH", 6, 1, len(chunks), TICKS) + b"".join(chunks))


def scale_pitch(degree, tonic, steps):
    octave, step = divmod(degree, len(steps))
    return tonic + 12 * octave + steps[step]


MAJOR = [0, 2, 4, 5, 7, 9, 11]
DORIAN = [0, 2, 3, 5, 7, 9, 10]


def melody(phrases, motifs, tonic, steps, bar, velocity=88):
    """The notes of phrases [(motif, shift)], one bar each; a motif is [(beat, length, degree)]."""
    notes = []
    for index, (motif, shift) in enumerate(phrases):
        for beat, length, degree in motifs[motif]:
            notes.append((index * bar + beat, length, scale_pitch(degree + shift, tonic, steps), velocity + (8 if beat == 0 else 0)))
    return notes


def tide():
    """A melody for a flute in D dorian, 4/4, 48 bars."""
    motifs = {
        "rise": [(0, 1, 0), (1, 0.5, 1), (1.5, 0.5, 2), (2, 1, 4), (3, 1, 2)],
        "turn": [(0, 0.5, 4), (0.5, 0.5, 3), (1, 1, 2), (2, 0.5, 3), (2.5, 0.5, 2), (3, 1, 1)],
        "leap": [(0, 1.5, 0), (1.5, 0.5, 4), (2, 1, 5), (3, 0.5, 4), (3.5, 0.5, 2)],
        "fall": [(0, 1, 4), (1, 0.5, 3), (1.5, 0.5, 2), (2, 0.5, 1), (2.5, 0.5, 2), (3, 1, 0)],
        "rest": [(0, 2, 1), (2, 1, 0)],
        "home": [(0, 1, 1), (1, 1, -1), (2, 2, 0)],
    }
    first = [("rise", 0), ("turn", 0), ("rise", 0), ("rest", 0), ("leap", 0), ("turn", 1), ("fall", 0), ("home", 0)]
    second = [("leap", 2), ("fall", 2), ("leap", 1), ("fall", 1), ("rise", 2), ("turn", 2), ("rise", 1), ("rest", 1)]
    third = [("rise", 0), ("fall", 0), ("leap", 0), ("fall", 1), ("turn", 1), ("turn", 0), ("leap", 0), ("home", 0)]
    phrases = first + third + second + first + second + third
    write("tide.mid", [conductor("The Tide", 96, 4, 2), part(0, 73, melody(phrases, motifs, 62, DORIAN, 4))])


def chords_of(progression, bar, strikes):
    notes = []
    for index, pitches in enumerate(progression):
        for beat, length in strikes:
            notes += [(index * bar + beat, length, pitch, 70) for pitch in pitches]
    return notes


def bass_of(progression, bar, line):
    """line: [(beat, length, which)], where `which` is 0 for the root, 1 for the fifth, 2 for the octave of the chord."""
    notes = []
    for index, pitches in enumerate(progression):
        root = 36 + pitches[0] % 12
        for beat, length, which in line:
            notes.append((index * bar + beat, length, root + (0, 7, 12)[which], 92))
    return notes


def quay():
    """A song in G major with a lead, an organ's chords, a bass and drums, 4/4, 40 bars."""
    G, C, D, E_minor, A_minor = [55, 59, 62], [60, 64, 67], [62, 66, 69], [64, 67, 71], [57, 60, 64]
    verse = [G, E_minor, C, D, G, E_minor, A_minor, D]
    chorus = [C, D, G, E_minor, C, D, G, G]
    progression = verse + chorus + verse + chorus + chorus
    motifs = {
        "call": [(0, 0.5, 4), (0.5, 0.5, 4), (1, 1, 5), (2, 0.5, 4), (2.5, 1.5, 2)],
        "answer": [(0, 0.5, 2), (0.5, 0.5, 3), (1, 0.5, 4), (1.5, 0.5, 2), (2, 2, 1)],
        "climb": [(0, 1, 0), (1, 0.5, 2), (1.5, 0.5, 4), (2, 1, 7), (3, 1, 5)],
        "wave": [(0, 0.5, 7), (0.5, 0.5, 5), (1, 0.5, 4), (1.5, 0.5, 5), (2, 1, 7), (3, 0.5, 5), (3.5, 0.5, 4)],
        "end": [(0, 1, 2), (1, 1, 1), (2, 2, 0)],
    }
    sung_verse = [("call", 0), ("answer", 0), ("call", 0), ("answer", 1), ("climb", 0), ("call", 0), ("answer", 1), ("answer", 0)]
    sung_chorus = [("wave", 0), ("call", 1), ("climb", 0), ("answer", 2), ("wave", 0), ("answer", 1), ("call", 0), ("end", 0)]
    phrases = sung_verse + sung_chorus + sung_verse + sung_chorus + sung_chorus
    drums = []
    for bar in range(len(progression)):
        start = 4 * bar
        fill = bar % 8 == 7
        drums += [(start + beat, 0.25, KICK, 100) for beat in ((0, 2.5) if not fill else (0,))]
        drums += [(start + beat, 0.25, SNARE, 96) for beat in ((1, 3) if not fill else (1, 2, 2.5, 3, 3.5))]
        drums += [(start + beat / 2, 0.25, HAT if bar // 8 % 2 == 0 else RIDE, 64) for beat in range(8)]
    write("quay.mid", [conductor("Down to the Quay", 112, 4, 2),
                       part(0, 80, melody(phrases, motifs, 67, MAJOR, 4)),
                       part(1, 16, chords_of(progression, 4, [(0, 2), (2, 1.5)])),
                       part(2, 33, bass_of(progression, 4, [(0, 1, 0), (1, 0.5, 0), (1.5, 0.5, 1), (2, 1, 2), (3, 1, 1)])),
                       part(DRUMS, 0, drums)])


def gulls():
    """A waltz in F major for piano, right hand and left hand, 3/4, 48 bars."""
    F, B_flat, C_seven, D_minor, G_minor = [53, 57, 60], [58, 62, 65], [60, 64, 70], [50, 53, 57], [55, 58, 62]
    first = [F, F, D_minor, D_minor, G_minor, G_minor, C_seven, C_seven]
    second = [F, D_minor, B_flat, C_seven, F, D_minor, C_seven, F]
    third = [B_flat, B_flat, F, F, G_minor, C_seven, F, F]
    progression = first + second + third + first + second + second
    motifs = {
        "sway": [(0, 2, 4), (2, 1, 2)],
        "step": [(0, 1, 2), (1, 1, 3), (2, 1, 4)],
        "dip": [(0, 1.5, 4), (1.5, 0.5, 3), (2, 1, 1)],
        "run": [(0, 0.5, 0), (0.5, 0.5, 1), (1, 0.5, 2), (1.5, 0.5, 3), (2, 1, 4)],
        "hold": [(0, 3, 1)],
        "close": [(0, 1, 1), (1, 2, 0)],
    }
    sung_first = [("sway", 0), ("step", 0), ("sway", 1), ("dip", 1), ("step", 1), ("run", 1), ("dip", 0), ("hold", 0)]
    sung_second = [("run", 0), ("sway", 1), ("step", 1), ("dip", 0), ("run", 0), ("sway", 1), ("dip", 0), ("close", 0)]
    sung_third = [("dip", 3), ("sway", 3), ("dip", 2), ("sway", 2), ("run", 1), ("step", 0), ("sway", 0), ("close", 0)]
    phrases = sung_first + sung_second + sung_third + sung_first + sung_second + sung_second
    left = []
    for bar, pitches in enumerate(progression):
        left.append((3 * bar, 1, 36 + (pitches[0] - 36) % 12, 84))
        for beat in (1, 2):
            left += [(3 * bar + beat, 0.75, pitch, 62) for pitch in pitches[1:]]
    write("gulls.mid", [conductor("Gulls", 144, 3, 2), part(0, 0, melody(phrases, motifs, 65, MAJOR, 3)), part(1, 0, left)])


if __name__ == "__main__":
    tide()
    quay()
    gulls()
