"""Models: learning, generating, measuring, saving and loading."""
import ctypes
import math
import os
import pathlib
import random
import tempfile
from dataclasses import dataclass
from typing import Any, Dict, Iterator, List, Optional, Sequence, Tuple, Union

from . import raw
from ._continuing import LINE_FEED, METHODS, LetterReading, Reading
from ._handle import FULL, MEDIUM, Handle, ints, last_message
from ._items import QUARTER, Character, Note, Number, Word
from ._sources import Source, numbers_of, sources_of
from ._starts import successors
from ._text import items_of, text_of
from .errors import DamagedError, InputError, InUseError, LimitError, ZmatrixError

_LONG_TEXT = 256 * 1024  # characters; longer texts get longer phrases, since more contexts have several successors
_CODINGS = {'plain': 0, 'difference': 1, 'difference2': 2, 'difference3': 3}
_MUSIC_TYPES = (raw.ZQMatrixTypeMIDINoteAndQuanta, raw.ZQMatrixTypeMIDITriple_NDMT, raw.ZQMatrixTypeMIDIGMQuadruple_NDMTS)
_KIND_OF_SOURCE = {'text': 'text', 'numbers': 'numbers', 'midi': 'music', 'kern': 'music'}
_PIECE = 256  # items per library call of a generator
_GRID = 16  # music: steps per whole note
_MUSIC_IDS = 64  # sub-matrices; each meter, texture and sound needs one
_WORD_IDS = 8  # letters and words of German, English, unknown language, and one more
_LONGEST_WORD = 16

Item = Union[Character, Word, Number, Note]


@dataclass(frozen=True)
class SubMatrix:
    """A sub-matrix of a model: a language of texts, the words above it, or a kind of track."""

    id: int
    items: int
    elements: int
    order: int
    names: Tuple[str, ...]


@dataclass(frozen=True)
class Info:
    """The contents of a model. `kind`: text, words, numbers or music; `order`: the longest phrase; `items`: the number learned."""

    kind: str
    tier: str
    order: int
    items: int
    elements: int
    sub_matrices: Tuple[SubMatrix, ...]


class Model:
    """A model. Made by `zmatrix.learn` and `zmatrix.load`; closed by `close()`, at the end of a `with`, or with its last reference. One
    thread at a time may use it."""

    def __init__(self, kind: str, handle: Handle) -> None:
        self._kind, self._handle = kind, handle
        self._reading: Optional[object] = None

    # --- learning

    def learn(self, source: Any) -> 'Model':
        """Learns another source of the same kind; accepts the same sources as `zmatrix.learn`."""
        return self._learn(list(sources_of(source)))

    def _learn(self, sources: Sequence[Source]) -> 'Model':
        wanted = 'text' if self._kind == 'words' else self._kind
        for source in sources:
            if _KIND_OF_SOURCE[source.kind] != wanted:
                raise InputError(f'{source.name} holds {_KIND_OF_SOURCE[source.kind]}, the model {self._kind}')
        with self._handle.use():
            before, self._reading = self._items(), None
            for source in sources:
                {'text': self._learn_text, 'numbers': self._learn_numbers}.get(source.kind, self._learn_music)(source)
            if self._items() == before:
                raise InputError(f'nothing to learn: the input holds no {wanted}')
        return self

    def _check(self, result: int, source: Source) -> None:
        if result < 1:
            raise LimitError(f'the matrix could not take all of {source.name}: {last_message()}')

    def _learn_text(self, source: Source) -> None:
        handle, items = self._handle, items_of(source.content)
        if not source.content.strip():
            return
        matrix_id = handle.call_zq('prepareMatrixForText', ints(items), len(items), source.name.encode())
        if matrix_id < 0:
            raise LimitError(last_message())
        if max(items) > handle.call('getMaximalMatrixIndex'):
            handle.call('setMaximalMatrixIndex', 0x10FFFF)
        if self._kind == 'words':
            result = handle.call_zq('updateMatrixWithWordsOfLongANSISequence', ints(items), len(items), None)
            self._check(result or 1, source)  # 0: all words are too long
        else:
            self._check(handle.call('updateMatrixWithLongANSISequence', ints(items), len(items)), source)

    def _learn_numbers(self, source: Source) -> None:
        if not source.content:
            return
        handle = self._handle
        handle.select(0)
        handle.call('setNameOfUpdateFile', source.name.encode())
        handle.call('addNameOfUpdateFile', source.name.encode())
        self._check(handle.call('updateMatrixWithLongINTSequence', ints(source.content), len(source.content)), source)
        handle.call('initializeKernelSequenceWithOriginalSequence', ints(source.content[-64:]), min(len(source.content), 64), 1)

    def _learn_music(self, source: Source) -> None:
        handle = self._handle
        _prepare_music(handle, handle.call('getGlobalMaxPhraseLengthForUpdateWithSequence'))
        size, content = len(source.content), source.content
        if source.kind == 'midi':
            score = raw.zq_createScoreFromMidiData((ctypes.c_ubyte * size).from_buffer_copy(content), size)
        else:
            score = raw.zq_createScoreFromKernData(content, size, 0)
        report = score and handle.call_zq('updateMatrixWithScore', score, source.name.encode(), 0)
        raw.zq_deleteScore(score)
        if not report:
            raise LimitError('out of memory')
        left_out = list(report.contents.leftOut)
        raw.zq_deleteScoreFeedReport(report)
        if left_out[raw.zq_ScoreNoSubMatrix]:
            raise LimitError(f'{source.name} needs more sub-matrices than the model has, one for each meter, kind and sound')
        if left_out[raw.zq_ScoreNotTaken]:
            raise LimitError(f'the matrix could not take all of {source.name}')

    # --- generating

    def continue_(self, start: Any = None, count: Optional[int] = None, *, seed: Optional[int] = None, order: Optional[int] = None,
                  method: str = 'random') -> Iterator[Any]:
        """Generates up to `count` items after `start`; without `count` it never ends. Items are `Character`, `Word`, `Number` or `Note`,
        each with its `probability`.

        `start`: a text, numbers, or notes; None for a new sentence, the end of the series learned last, or a new tune. `seed`: the same
        seed gives the same items; None for a random one. `order`: the largest number of context items to use.
        `method`: 'random' by what was counted, 'best' the most frequent, 'middle' the middle one of the choice.
        A later continuation of the model ends this one."""
        if method not in METHODS:
            raise ValueError(f'method is one of {", ".join(METHODS)}, not {method!r}')
        if order is not None and order < 1 or count is not None and count < 0:
            raise ValueError('order is at least 1, count at least 0')
        with self._handle.use():
            reading, make = self._begin(start, seed, order, method)
        return self._generate(reading, make, count)

    def generate(self, start: Any = None, count: int = 1000, *, seed: Optional[int] = None, order: Optional[int] = None,
                 method: str = 'random') -> Any:
        """As `continue_`, but all at once and without probabilities: a str for texts and words, a list for notes, and for numbers a numpy
        array if numpy is installed, else a list."""
        if self._kind == 'music':
            return list(self.continue_(start, count, seed=seed, order=order, method=method))
        if self._kind == 'words':
            words = list(self.continue_(start, count, seed=seed, order=order, method=method))
            return ' '.join(words).replace(' \n ', '\n')
        self.continue_(start, 0, seed=seed, order=order, method=method)  # checks the arguments
        with self._handle.use():
            reading, _ = self._begin(start, seed, order, method)
            flat: List[int] = []
            for items, _, found in reading.pieces(max(count, 1)):
                if len(flat) >= count:
                    break
                flat += items[:min(found, count - len(flat))]
        return text_of(flat) if self._kind == 'text' else _as_array(flat)

    def write_midi(self, path: Any, count: int = 200, *, start: Any = None, seed: Optional[int] = None) -> int:
        """Writes generated music to a MIDI file and returns the number of its notes."""
        if self._kind != 'music':
            raise InputError('the model holds no music')
        result, writing = ctypes.c_int(), raw.zq_ScoreWriting()
        with self._handle.use():
            self._begin(start, seed, None, 'random')
            score = self._handle.call_zq('createGeneratedScore', count, 0.0, ctypes.byref(result))
            if not score:
                raise ZmatrixError(f'no music can be made: {last_message() or result.value}')
            raw.zq_writeScoreToMidiFile(score, os.fsencode(path), ctypes.byref(writing))
            raw.zq_deleteScore(score)
        if writing.state != raw.zq_ScoreWritten:
            raise ZmatrixError(f'cannot write {path}')
        return int(writing.notes)

    def _begin(self, start: Any, seed: Optional[int], order: Optional[int], method: str) -> Tuple[Reading, Any]:
        handle = self._handle
        context, differences = self._context_of(start)
        matrix_id = self._choose(context)
        known = self._go_to(matrix_id, context) if context else 0
        if not context:
            handle.select(matrix_id)
            if self._kind != 'numbers':
                self._go_to(matrix_id, ints([]))
        read_id = handle.record(matrix_id).currentMatrixIDLevelUp if self._kind == 'words' else matrix_id
        handle.select(read_id)
        handle.call('setSucessorMethod', METHODS[method])
        handle.call('setSuccessorRandomValue', read_id, random.randrange(2**31) if seed is None else seed)
        record = handle.record(read_id)
        if self._kind == 'text':
            self._reading = LetterReading(handle, read_id, context, order, method, known == 0)
        else:
            if self._kind == 'words' or order is not None and not context:
                context = self._kernel()
            self._reading = Reading(handle, read_id, context, order, differences)
        return self._reading, self._maker(record)

    def _kernel(self) -> List[int]:
        length, dimension = ctypes.c_int(), ctypes.c_int()
        lent = self._handle.call_on(self._handle.call('getMatrixInfo'), 'getKernelOriginalSequenceFlatIndexVector',
                                    ctypes.byref(length), ctypes.byref(dimension))
        items: List[int] = lent[:length.value] if lent else []
        raw.s_Free(lent)
        return items

    def _context_of(self, start: Any) -> Tuple[Any, int]:
        """The items of a start, and how many fewer preprocessed items than original ones it has."""
        if self._kind in ('text', 'words'):
            if not isinstance(start, (str, type(None))):
                raise TypeError('a text is continued from a str')
            return items_of(start or ''), 0
        if self._kind == 'numbers':
            return numbers_of([] if start is None else start), self._handle.record(0).preProcessingType
        return [] if start is None else [(note[0], round(note[1] * QUARTER), round(note[2] * QUARTER)) for note in start], 1

    def _choose(self, context: Any) -> int:
        """The sub-matrix that knows the longest ending of the start; ties go to the one that learned most."""
        handle, best, chosen = self._handle, (-1, -1), -1
        for matrix_id in handle.occupied_ids():
            record = handle.record(matrix_id)
            if self._kind in ('text', 'words') and record.matrixType != raw.ZQMatrixTypeANSIText:
                continue
            if self._kind == 'words' and record.currentMatrixIDLevelUp < 0:
                continue
            known = (self._go_to(matrix_id, context) if context else 0, handle.items_learned(matrix_id))
            if known > best:
                best, chosen = known, matrix_id
        if chosen < 0:
            raise InputError(f'nothing to continue: the model holds no {self._kind}')
        return chosen

    def _go_to(self, matrix_id: int, context: Any) -> int:
        handle = self._handle
        handle.select(matrix_id)
        if self._kind == 'music':
            dimension = handle.record(matrix_id).coordinateDimension
            context = [value for note in context for value in (note + (0,))[:dimension]]
        handle.call('initializeKernelSequenceWithOriginalSequence', ints(context), len(context), 1)
        if self._kind == 'words':
            handle.select(handle.record(matrix_id).currentMatrixIDLevelUp)
        return int(handle.call('getLengthOfKernelPreprocessedSequence'))

    def _maker(self, record: raw.ZQMatrixProperties) -> Any:
        """A function that makes the result of an item and its probability."""
        if self._kind == 'music':
            def note(item: Tuple[int, ...], probability: float) -> Note:
                duration = item[2] / QUARTER if len(item) > 2 else 1.0
                return Note(item[0], item[1] / QUARTER, duration, item[3] if len(item) > 3 else record.midiSoundID, probability)
            return note
        kind: Any = {'text': Character, 'words': Word, 'numbers': Number}[self._kind]
        value: Any = {'text': lambda item: text_of((item,)), 'words': self._word, 'numbers': int}[self._kind]
        known: Dict[int, Any] = {}

        def make(item: Tuple[int, ...], probability: float) -> Any:
            plain = known.get(item[0])
            if plain is None:
                plain = known[item[0]] = value(item[0])
            made = kind(plain)
            made.probability = probability
            return made
        return make

    def _word(self, symbol: int) -> str:
        if symbol == LINE_FEED:
            return '\n'
        return text_of(self._handle.new_array('zq_createPhraseOfSymbol', symbol))

    def _generate(self, reading: Reading, make: Any, count: Optional[int]) -> Iterator[Any]:
        given = 0
        pieces = reading.pieces(_PIECE if count is None else max(1, min(_PIECE, count)))
        while count is None or given < count:
            with self._handle.use():
                if self._reading is not reading:
                    raise InUseError('a later continuation, or learning, has taken the place of this one')
                try:
                    items, probabilities, found = next(pieces)
                except StopIteration:
                    return
                dimension = reading.dimension
                made = [make(tuple(items[at * dimension:(at + 1) * dimension]), probabilities[at]) for at in range(found)]
            yield from made if count is None else made[:count - given]
            given += found

    # --- measuring

    def probability(self, sequence: Any) -> float:
        """The probability that the model generates exactly these items; 0 if an item never followed its context."""
        bits, _ = self._bits(sequence)
        return 0.0 if math.isinf(bits) else math.pow(2.0, -bits)

    def surprise(self, sequence: Any) -> float:
        """The average information of an item of the sequence in bits; infinite if an item never followed its context."""
        bits, items = self._bits(sequence)
        return bits / items if items else 0.0

    def _bits(self, sequence: Any) -> Tuple[float, int]:
        with self._handle.use():
            self._reading = None
            context, _ = self._context_of(sequence)
            matrix_id = self._choose(context)
            self._go_to(matrix_id, context)
            stored, read_id = self._stored(matrix_id, context)
            record = self._handle.record(read_id)
            dimension, longest = record.coordinateDimension, record.maxPhraseLengthForUpdateWithSequence - 1
            self._handle.select(read_id)
            bits = 0.0
            for at in range(0, len(stored), dimension):
                share = self._share(stored[max(0, at - longest * dimension):at], tuple(stored[at:at + dimension]), dimension)
                bits += math.inf if share == 0 else -math.log2(share)
            return bits, len(stored) // dimension

    def _stored(self, matrix_id: int, context: Any) -> Tuple[List[int], int]:
        handle = self._handle
        handle.select(matrix_id)
        if self._kind == 'words':
            unknown, feeds = ctypes.c_int(), ctypes.c_int()
            length = ctypes.c_int()
            symbols = handle.call('getNextLevelSymbolsFromOriginalObjects', ints(context), len(context), ctypes.byref(length),
                                  ctypes.byref(unknown), ctypes.byref(feeds))
            items = symbols[:length.value] if symbols else []
            raw.s_Free(symbols)
            return items + [-1] * unknown.value, handle.record(matrix_id).currentMatrixIDLevelUp
        if self._kind == 'music':
            dimension = handle.record(matrix_id).coordinateDimension
            context = [value for note in context for value in (note + (0,))[:dimension]]
        if not len(context):
            return [], matrix_id
        return handle.new_array('getPreProcessedSequenceFromOriginalSequence', ints(context), len(context)), matrix_id

    def _share(self, context: List[int], item: Tuple[int, ...], dimension: int) -> float:
        """The share of an item among the successors of the longest known ending of a context."""
        for begin in range(0, len(context) + 1, dimension):
            found = successors(self._handle, tuple(context[begin:]), dimension)
            if found:
                return sum(count for other, count, _ in found if other == item) / max(sum(count for _, count, _ in found), 1)
        return 0.0

    # --- contents

    def __len__(self) -> int:
        """The number of items learned."""
        with self._handle.use():
            return self._items()

    def __bool__(self) -> bool:
        return True

    def _items(self) -> int:
        handle = self._handle
        occupied = set(handle.occupied_ids())
        above = {handle.record(matrix_id).currentMatrixIDLevelUp for matrix_id in occupied} & occupied
        wanted = above if self._kind == 'words' else occupied - above if handle.tier == FULL else occupied
        return sum(handle.items_learned(matrix_id) for matrix_id in wanted)

    @property
    def info(self) -> Info:
        """The current contents of the model."""
        with self._handle.use():
            parts = []
            for matrix_id in self._handle.occupied_ids():
                record = self._handle.record(matrix_id)
                self._handle.select(matrix_id)
                names = (self._handle.call('getNamesOfUpdateFiles') or b'').decode('utf-8', 'replace')
                parts.append(SubMatrix(matrix_id, self._handle.items_learned(matrix_id), record.numberOfMatrixElements,
                                       record.maxPhraseLengthForUpdateWithSequence, tuple(names.splitlines())))
            return Info(self._kind, 'full' if self._handle.tier == FULL else 'medium', max((part.order for part in parts), default=0),
                        self._items(), sum(part.elements for part in parts), tuple(parts))

    def __repr__(self) -> str:
        return f'<zmatrix.Model of {self._kind}>' if self._handle.is_open else '<zmatrix.Model, closed>'

    # --- files, pickling, closing

    def save(self, path: Any) -> None:
        """Saves the model to a file. An existing file is replaced as a whole; if saving fails, it is unchanged."""
        with self._handle.use():
            if self._handle.call('saveMatrixToDisk', os.fsencode(path)) != 1:
                raise ZmatrixError(f'cannot save to {path}: {last_message()}')

    @classmethod
    def load(cls, path: Any, *, repair: bool = False) -> 'Model':
        """Loads a model. A damaged file raises a `DamagedError`; with `repair` the undamaged part is loaded."""
        name = os.fsdecode(path)
        if not os.path.isfile(name):
            raise InputError(f'cannot read {name}: no such file')
        tier = raw.s_getMatrixInfoTypeFromFile(name.encode())
        if tier not in (MEDIUM, FULL):
            raise InputError(f'{name} holds no model that learns')
        try:
            handle = Handle(tier, name)
        except LimitError as error:
            raise DamagedError(f'cannot read {name}: {error}') from error
        with handle.use():
            if handle.call_zq('getLoadReport', None) != 1 and not repair:
                raise DamagedError(f'{name} is damaged; load(..., repair=True) goes on with what is left of it')
            return cls(_kind_of(handle), handle)

    def __reduce__(self) -> Tuple[Any, ...]:
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder, 'model')
            self.save(path)
            return _unpickle, (path.read_bytes(),)

    def close(self) -> None:
        """Releases the model's memory. The model can't be used afterwards; closing it again does nothing."""
        self._handle.close()

    def __enter__(self) -> 'Model':
        return self

    def __exit__(self, *_: Any) -> None:
        self.close()


def learn(source: Any, *, words: bool = False, order: Optional[int] = None, coding: str = 'difference') -> Model:
    """Learns a source and returns the model.

    `source`: a str is a text; a path is a file or a folder of files (texts, MIDI, kern, numbers, detected by content); bytes are the
    content of a file; integers are a series of numbers. The members of an iterable of these are learned one after the other.
    `words`: learn texts word by word. `order`: the longest phrase, in items; the default quotes little of the source.
    `coding`: what is learned of numbers: 'difference', 'difference2', 'difference3', or 'plain' for the numbers themselves."""
    sources = list(sources_of(source))
    if not sources:
        raise InputError('nothing to learn')
    kind = _KIND_OF_SOURCE[sources[0].kind]
    if words and kind != 'text':
        raise InputError(f'words are learned of texts, and {sources[0].name} holds {kind}')
    if order is not None and not 1 <= order <= 1024:
        raise ValueError('order is 1 to 1024')
    if coding not in _CODINGS:
        raise ValueError(f'coding is one of {", ".join(_CODINGS)}, not {coding!r}')
    model = Model('words' if words else kind, Handle(FULL if words else MEDIUM))
    is_long = kind == 'text' and sum(len(entry.content) for entry in sources if entry.kind == 'text') >= _LONG_TEXT
    with model._handle.use():
        _prepare(model._handle, model._kind, order, is_long, coding)
    return model._learn(sources)


def load(path: Any, *, repair: bool = False) -> Model:
    """See `Model.load`."""
    return Model.load(path, repair=repair)


def _prepare(handle: Handle, kind: str, order: Optional[int], is_long: bool, coding: str) -> None:
    if kind == 'words':
        handle.call('setMaxNumberOfMatrices', _WORD_IDS)
        handle.call('setMatrixAILevel', 1)
        handle.call('setGlobalSymbolDefaultMatrixPropertiesForSymbols')
        handle.call('setGlobalSymbolMaxPhraseLengthForUpdateWithSequence', order or (3 if is_long else 2))
    if kind in ('text', 'words'):
        handle.call('setGlobalDefaultMatrixPropertiesForANSIText')
        limit = _LONGEST_WORD if kind == 'words' else order or (10 if is_long else 8)
        handle.call('setGlobalMaxPhraseLengthForUpdateWithSequence', limit)
    elif kind == 'numbers':
        handle.call('setGlobalDefaultMatrixPropertiesForIntegerSeries')
        handle.call('setGlobalPreProcessingType', _CODINGS[coding])
        handle.call('setGlobalMaxPhraseLengthForUpdateWithSequence', order or 8)
        handle.select(0)
        handle.call('applyGlobalMatrixProperties')
    else:
        handle.call('setMaxNumberOfMatrices', _MUSIC_IDS)
        _prepare_music(handle, order or 8)


def _prepare_music(handle: Handle, order: int) -> None:
    """Called before each file, since a feed may leave the settings changed."""
    handle.call('setGlobalDefaultMatrixPropertiesForMIDIElementsTriple_NDMT')
    handle.call('setGlobalMaxPhraseLengthForUpdateWithSequence', order)
    handle.call('setGlobalMidiNoteOnQuantization', _GRID)
    handle.call('setGlobalMidiDurationQuantization', _GRID)
    handle.call('setGlobalMidiTrackAnalyze', 2)
    handle.select(0)
    handle.call('setMidiNoteOnQuantization', _GRID)
    handle.call('setMidiDurationQuantization', _GRID)
    handle.call('setGlobalAddUpdateInfo', 1)


def _kind_of(handle: Handle) -> str:
    types = {handle.record(matrix_id).matrixType for matrix_id in handle.occupied_ids()}
    if raw.ZQMatrixTypeANSIText in types:
        return 'words' if handle.tier == FULL and handle.call('getMatrixAILevel') == 1 else 'text'
    if types & set(_MUSIC_TYPES):
        return 'music'
    return 'numbers'


def _unpickle(data: bytes) -> Model:
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder, 'model')
        path.write_bytes(data)
        return Model.load(path)


def _as_array(numbers: List[int]) -> Any:
    try:
        import numpy
    except ImportError:
        return numbers
    return numpy.array(numbers, dtype=numpy.int32)
