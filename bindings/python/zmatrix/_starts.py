"""How sentences begin in what was learned. The library knows the first letters; of longer beginnings it counts only where they
stand, so that those within sentences are taken off."""
import ctypes
from typing import Dict, List, Optional, Tuple

from ._handle import Handle, ints

Successor = Tuple[int, int, int]  # item, how often it follows, how often of these the context began a sequence
_MOST_KEPT = 20000


def successors(handle: Handle, context: Tuple[int, ...], dimension: int = 1) -> Optional[List[Tuple[Tuple[int, ...], int, int]]]:
    """What follows a stored context; None for one that was not learned."""
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
    """The letters that go on from the beginning of a sentence, with how many learned sentences go on so."""

    def __init__(self, handle: Handle, phrase_limit: int) -> None:
        self._handle, self._phrase_limit = handle, phrase_limit
        self._known: Dict[Tuple[int, ...], Optional[List[Tuple[int, int]]]] = {}
        self._letters: List[int] = []

    def after(self, beginning: Tuple[int, ...]) -> Optional[List[Tuple[int, int]]]:
        if beginning not in self._known:
            if len(self._known) >= _MOST_KEPT:
                self._known.clear()
            self._known[beginning] = self._count(beginning) if beginning else self._first_letters()
        return self._known[beginning]

    def _successors(self, context: Tuple[int, ...]) -> List[Successor]:
        return [(item[0], count, starts) for item, count, starts in successors(self._handle, context) or []]

    def _first_letters(self) -> List[Tuple[int, int]]:
        return [(item, starts) for item, _, starts in self._successors(()) if starts > 0]

    def _count(self, beginning: Tuple[int, ...]) -> Optional[List[Tuple[int, int]]]:
        if len(beginning) + 2 > self._phrase_limit:
            return None  # what stands before it is not known together with what follows
        if not self._letters:
            self._letters = [item for item, _, _ in self._successors(())]
        starts = {item: count for item, count, _ in self._successors(beginning)}
        for before in self._letters:
            for item, count, _ in self._successors((before,) + beginning):
                if starts.get(item, 0) < count:
                    return None
                starts[item] -= count
        return [(item, count) for item, count in starts.items() if count > 0]
