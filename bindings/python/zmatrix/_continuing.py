"""Generation: context, seed and method are set once, then items are read in pieces, one library call per piece."""
import ctypes
from typing import Any, Iterator, List, Optional, Tuple

from . import raw
from ._handle import Handle, ints
from ._starts import SentenceStarts

METHODS = {'best': raw.ZQSuccessorMethodMostProbable, 'middle': raw.ZQSuccessorMethodMiddle, 'random': raw.ZQSuccessorMethodRandom}
LINE_FEED = 10
_MOST_FAILURES = 1000  # ends of sequences in a row, with no item between


class Reading:
    """Generates from the selected sub-matrix. `order`: number of context items to use, None for all known ones."""

    def __init__(self, handle: Handle, matrix_id: int, context: Any, order: Optional[int], differences: int) -> None:
        self._handle, self._id, self._order = handle, matrix_id, order
        self.dimension = handle.record(matrix_id).coordinateDimension
        self._keep = 0 if order is None else (order + differences) * self.dimension
        self._context: List[int] = list(context)[-self._keep:] if self._keep else []
        self._capacity = 0

    def read(self, count: int) -> Tuple[Any, Any, int]:
        """The items' coordinates, the probabilities and the number of items, which is below `count` if a sequence ends."""
        if self._capacity < count:
            self._items, self._probabilities = (ctypes.c_int * (count * self.dimension))(), (ctypes.c_double * count)()
            self._capacity = count
        self._handle.select(self._id)
        if self._order is None:
            return self._items, self._probabilities, self._read_items(count)
        self._handle.call('initializeKernelSequenceWithOriginalSequence', ints(self._context), len(self._context), 0)
        found = self._read_items(1)
        self._context = (self._context + self._items[:self.dimension])[-self._keep:] if found else []
        return self._items, self._probabilities, found

    def _read_items(self, count: int) -> int:
        return int(self._handle.call_zq('readItems', count, self._items, self._probabilities, None))

    def pieces(self, size: int) -> Iterator[Tuple[Any, Any, int]]:
        failures = 0
        while failures < _MOST_FAILURES:
            piece = self.read(size)
            failures = 0 if piece[2] else failures + 1
            yield piece


class LetterReading(Reading):
    """Generates letters. A new sentence begins with the counts of learned beginnings; a sequence ends with a line feed."""

    def __init__(self, handle: Handle, matrix_id: int, context: Any, order: Optional[int], method: str, begins: bool) -> None:
        super().__init__(handle, matrix_id, context, order, 0)
        self._starts = SentenceStarts(handle, handle.record(matrix_id).maxPhraseLengthForUpdateWithSequence)
        self._method, self._begins = method, begins
        self._beginning: Tuple[int, ...] = ()
        self._sentences_so = 0

    def read(self, count: int) -> Tuple[Any, Any, int]:
        if self._begins:
            self._handle.select(self._id)
            drawn = self._begin()
            if drawn is not None:
                return [drawn[0]], [drawn[1]], 1
        items, probabilities, found = super().read(count)
        if found == count or found and self._order is not None:
            return items, probabilities, found
        items[found], probabilities[found], self._begins = LINE_FEED, 1.0, True
        return items, probabilities, found + 1

    def _begin(self) -> Optional[Tuple[int, float]]:
        """The next letter of the beginning, a line feed if the sentence ends, or None if the ordinary choice continues."""
        known = self._starts.after(self._beginning)
        letters = list(known or [])
        go_on = sum(count for _, count in letters)
        if not self._beginning:
            self._sentences_so = go_on
        if known is None or self._sentences_so == 0 or go_on > self._sentences_so:
            self._begins, self._beginning = False, ()
            return None
        if go_on == 0 or (go_on < self._sentences_so and self._method != 'middle'):
            letters.append((-1, self._sentences_so - go_on))
        item, count = self._choose(letters)
        probability = count / max(sum(share for _, share in letters), 1)
        self._beginning = () if item == -1 else self._beginning + (item,)
        if item != -1:
            self._sentences_so = count
        self._handle.call('initializeKernelSequenceWithOriginalSequence', ints(self._beginning), len(self._beginning), 1)
        if self._order is not None:
            self._context = list(self._beginning)
        return (LINE_FEED, probability) if item == -1 else (item, probability)

    def _choose(self, letters: List[Tuple[int, int]]) -> Tuple[int, int]:
        if self._method == 'middle':
            return letters[len(letters) // 2]
        if self._method == 'best':
            return max(letters, key=lambda letter: letter[1])
        rest = self._handle.call('getSuccessorRandomValue', self._id) / 2147483648.0 * sum(count for _, count in letters)
        for letter in letters[:-1]:
            rest -= letter[1]
            if rest < 0:
                return letter
        return letters[-1]

