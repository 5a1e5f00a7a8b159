"""Sources of learning: texts, numbers and music, from paths, strings, bytes and sequences."""
import os
import pathlib
import re
from array import array
from typing import Any, Iterable, Iterator, NamedTuple

from ._text import decode
from .errors import InputError

_NUMBERS = re.compile(rb'[\s,;]*(?:[+-]?\d+[\s,;]+)*[+-]?\d+[\s,;]*')
_SUFFIXES = ('.txt', '.mid', '.midi', '.krn')


class Source(NamedTuple):
    """One input. `kind` is text, numbers, midi or kern; `content` is a str, an array of integers, or the bytes of a file."""

    kind: str
    content: Any
    name: str


def sources_of(given: Any) -> Iterator[Source]:
    """A str is a text; a path is a file or a folder of files; bytes are the content of a file; integers are a series of numbers. Each
    member of an iterable of these is a source."""
    if isinstance(given, str):
        yield Source('text', given, 'text')
    elif isinstance(given, (bytes, bytearray, memoryview)):
        yield _of_bytes(bytes(given), 'bytes')
    elif isinstance(given, os.PathLike):
        yield from _of_path(pathlib.Path(given))
    elif hasattr(given, '__iter__'):
        yield from _of_iterable(given)
    else:
        raise TypeError(f'a text, a path, bytes, integers or an iterable of these is learned, no {type(given).__name__}')


def numbers_of(numbers: Iterable[Any]) -> 'array[int]':
    """An array of 32-bit integers; a numpy array is copied as a whole."""
    if hasattr(numbers, 'dtype'):
        kind, size = getattr(numbers, 'dtype').kind, getattr(numbers, 'ndim')
        if kind not in 'iu' or size != 1:
            raise TypeError('an array of numbers has one dimension and integers')
        numbers = getattr(numbers, 'tolist')()
    try:
        return array('i', numbers)
    except OverflowError as error:
        raise InputError(f'a number does not fit 32 bits: {error}') from error


def _of_iterable(given: Iterable[Any]) -> Iterator[Source]:
    if hasattr(given, 'dtype'):
        yield Source('numbers', numbers_of(given), 'numbers')
        return
    entries = list(given)
    if entries and all(hasattr(entry, '__index__') for entry in entries):
        yield Source('numbers', numbers_of(entries), 'numbers')
        return
    for entry in entries:
        yield from sources_of(entry)


def _of_path(path: pathlib.Path) -> Iterator[Source]:
    if path.is_dir():
        for entry in sorted(path.iterdir()):
            if entry.suffix.lower() in _SUFFIXES and entry.is_file():
                yield from _of_path(entry)
        return
    try:
        data = path.read_bytes()
    except OSError as error:
        raise InputError(f'cannot read {path}: {error.strerror}') from error
    yield _of_bytes(data, str(path))


def _is_kern(data: bytes) -> bool:
    for line in data[:65536].splitlines():
        if line.startswith(b'**'):
            return b'**kern' in line.split(b'\t')
        if line and not line.startswith(b'!'):
            return False
    return False


def _of_bytes(data: bytes, name: str) -> Source:
    if data[:4] == b'MThd':
        return Source('midi', data, name)
    if _is_kern(data):
        return Source('kern', data, name)
    if _NUMBERS.fullmatch(data):
        return Source('numbers', numbers_of(int(number) for number in re.findall(rb'[+-]?\d+', data)), name)
    return Source('text', decode(data), name)
