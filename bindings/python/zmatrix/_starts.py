"""The successors of a context, and the beginnings of learned sentences."""
import ctypes
from typing import Dict, List, Optional, Tuple

from ._handle import Handle, ints

_MOST_KEPT = 20000


def successors(handle: Handle, context: Tuple[int, ...], dimension: int = 1) -> Optional[List[Tuple[Tuple[int, ...], int, int]]]:
    """The successors of a context of stored items; None if the context was not learned."""
    capacity = 256
    while True:
        items, counts, starts = (ctypes.c_int * (capacity * dimension))(), (ctypes.c_int * capacity)(), (ctypes.c_int * capacity)()
        found = handle.call_zq('readSuccessors', ints(context), len(context), capacity, items, counts, starts)
        if found <= capacity:
            break
        capacity = found
    if found < 0:
        return None
    return [(tuple(items[at * dimension:(at + 1) * dimension]), counts[at], starts[at]) for at in range(found)]


class SentenceStarts:
    """The letters that follow a beginning of sentences, with the number of learned sentences that begin so."""

    def __init__(self, handle: Handle, phrase_limit: int) -> None:
        self._handle, self._phrase_limit = handle, phrase_limit
        self._known: Dict[Tuple[int, ...], Optional[List[Tuple[int, int]]]] = {}
        self._capacity = 256

    def after(self, beginning: Tuple[int, ...]) -> Optional[List[Tuple[int, int]]]:
        if beginning not in self._known:
            if len(self._known) >= _MOST_KEPT:
                self._known.clear()
            self._known[beginning] = self._count(beginning)
        return self._known[beginning]

    def _count(self, beginning: Tuple[int, ...]) -> Optional[List[Tuple[int, int]]]:
        if beginning and len(beginning) + 2 > self._phrase_limit:
            return None  # a phrase must have room for the letters before and after the beginning
        while True:
            items, counts = (ctypes.c_int * self._capacity)(), (ctypes.c_int * self._capacity)()
            found = self._handle.call_zq('readSentenceStarts', ints(beginning), len(beginning), self._capacity, items, counts)
            if found <= self._capacity:
                break
            self._capacity = found
        return None if found < 0 else [(items[at], counts[at]) for at in range(found) if counts[at] > 0]
