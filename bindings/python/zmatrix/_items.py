"""The items of a continuation: values with the probability with which they were chosen."""
from typing import NamedTuple


class Character(str):
    """A character of a text."""

    probability: float


class Word(str):
    """A word of a text including punctuation, or a line feed at the end of a sequence."""

    probability: float


class Number(int):
    """A number of a series."""

    probability: float


class Note(NamedTuple):
    """A note: pitch as a MIDI note number, start and duration in quarter notes, sound as a class of General MIDI sounds (0 none)."""

    pitch: int
    start: float
    duration: float
    sound: int = 0
    probability: float = 1.0


QUARTER = 3072  # quanta per quarter note
