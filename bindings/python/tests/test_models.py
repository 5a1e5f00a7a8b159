"""Learning, continuing, measuring, and files."""
import ctypes
import json
import math
import pathlib
import pickle

import numpy
import pytest

import zmatrix

STEPS = [0, 1, 3, 4, 6, 7, 9, 10, 12, 13, 15, 16]
CASES = json.loads(pathlib.Path(__file__).with_name('seeds.json').read_text())


@pytest.mark.parametrize('case', CASES, ids=lambda case: case['name'])
def test_seeds_give_the_items_that_every_language_gives(case, examples, tmp_path):
    learned = [examples / name for name in case['files']] if 'files' in case else case['numbers']
    model = zmatrix.learn(learned, words=case.get('words', False))
    model.save(tmp_path / 'model')
    for one in (model, zmatrix.load(tmp_path / 'model'), pickle.loads(pickle.dumps(model))):
        items = list(one.continue_(case['start'], case['count'], seed=case['seed']))
        if case['name'] == 'music':
            items = [[note.pitch, note.start, note.duration] for note in items]
        assert items == case['items'] if isinstance(case['items'], list) else ''.join(items) == case['items']


def test_items_carry_their_probability(harbour):
    for character in harbour.continue_('The ', 500, seed=1):
        assert isinstance(character, str) and len(character) == 1 and 0 < character.probability <= 1


def test_bulk_gives_what_the_generator_gives(harbour):
    assert harbour.generate('The ', 3000, seed=5) == ''.join(harbour.continue_('The ', 3000, seed=5))
    numbers = zmatrix.learn(STEPS)
    bulk = numbers.generate([100, 101, 103], 50, seed=3)
    assert isinstance(bulk, numpy.ndarray)
    assert bulk.tolist() == list(numbers.continue_([100, 101, 103], 50, seed=3))


def test_an_order_beyond_the_learned_one_changes_nothing_and_a_small_one_forgets(harbour):
    assert harbour.generate('The ', 200, seed=2, order=50) == harbour.generate('The ', 200, seed=2)
    pairs = zmatrix.learn('abcabdabcabd', order=4)
    written = pairs.generate('a', 400, seed=1, order=1)
    assert {b for a, b in zip(written, written[1:]) if a == 'b'} >= {'c', 'd'}


def test_probability_is_the_product_of_shares_and_surprise_its_bits():
    coin = zmatrix.learn([1, 2, 1, 3] * 50, coding='plain', order=2)
    items = [1, 2, 1, 3]
    assert math.isclose(-math.log2(coin.probability(items)), coin.surprise(items) * len(items))
    assert coin.probability([1, 2, 1, 2]) == pytest.approx(0.5 * 0.5 * 1 * 0.5, rel=0.05)
    assert coin.probability([2, 2]) == 0 and math.isinf(coin.surprise([9]))


def test_a_text_comes_back_in_its_characters():
    text = 'Ünï “quotes” 日本 \U0001F600 \x85 … ' * 3
    model = zmatrix.learn(text, order=20)
    assert set(model.generate('Ü', 200, seed=1)) <= set(text) | {'\n'}
    assert '日本' in model.generate('Ünï “quotes” ', 30, seed=1)


def test_bytes_paths_arrays_and_iterables_are_told_apart(examples, tmp_path):
    assert zmatrix.learn((examples / 'canon.krn').read_bytes()).info.kind == 'music'
    assert zmatrix.learn((examples / 'tide.mid').read_bytes()).info.kind == 'music'
    assert zmatrix.learn(examples / 'primes.txt').info.kind == 'numbers'
    assert len(zmatrix.learn(numpy.arange(100, dtype=numpy.int64))) == len(zmatrix.learn(range(100)))
    assert zmatrix.learn(b'\xff\xfeA\x00b\x00').info.kind == 'text'
    assert len(zmatrix.learn(['One text. ', 'Another text. '])) > len(zmatrix.learn('One text. '))
    (tmp_path / 'a.txt').write_text('Hello there.')
    assert zmatrix.learn(tmp_path).info.sub_matrices[0].names == (str(tmp_path / 'a.txt'),)


def test_music_is_written_as_midi(examples, tmp_path):
    tunes = zmatrix.learn([examples / 'canon.krn', examples / 'song.krn'])
    start = list(tunes.continue_(count=4, seed=1))
    assert list(tunes.continue_(start, 8, seed=1)) and tunes.generate(start, 8, seed=1)
    assert tunes.probability(start) > 0
    assert tunes.write_midi(tmp_path / 'new.mid', 40, seed=1) > 30
    assert (tmp_path / 'new.mid').read_bytes()[:4] == b'MThd'


def test_learning_on_adds_to_the_model(harbour):
    model = zmatrix.learn('A first sentence stands here.')
    before = len(model)
    info = model.learn('A second sentence stands here.').info
    assert info.items == len(model) > before and info.kind == 'text' and info.tier == 'medium' and info.order == 8


def test_bulk_functions_say_what_the_single_ones_say():
    one, other = (zmatrix.learn('A cat sat. A dog sat down. The cat ran. ' * 5) for _ in range(2))
    handle, probability, stop = one._handle, ctypes.c_double(), ctypes.c_double()
    with handle.use():
        single = []
        handle.call('setSuccessorRandomValue', 0, 5)
        while len(single) < 300:
            item = handle.call('readObjexFromMatrix', ctypes.byref(probability), ctypes.byref(stop))
            single.append((item[0], probability.value, stop.value) if item else None)
    handle = other._handle
    with handle.use():
        handle.call('setSuccessorRandomValue', 0, 5)
        bulk, items, shares, stops = [], (ctypes.c_int * 300)(), (ctypes.c_double * 300)(), (ctypes.c_double * 300)()
        while len(bulk) < 300:
            found = handle.call_zq('readItems', 300, items, shares, stops)
            bulk += list(zip(items[:found], shares, stops)) + [None]
        assert bulk[:300] == single
        counts = (ctypes.c_int * 9)()
        assert handle.call_zq('readSuccessors', (ctypes.c_int * 2)(*b'A '), 2, 1, items, counts, None) == 2
        assert handle.call_zq('readSuccessors', (ctypes.c_int * 2)(*b'A '), 2, 9, items, counts, None) == 2
        assert dict(zip(items[:2], counts)) == {ord('c'): 5, ord('d'): 5}
        assert handle.call_zq('readSuccessors', (ctypes.c_int * 2)(*b'xx'), 2, 9, items, counts, None) == -1
        found = handle.call_zq('readSentenceStarts', (ctypes.c_int * 1)(*b'T'), 1, 9, items, counts)
        assert (found, items[0], counts[0]) == (1, ord('h'), 5)
        found = handle.call_zq('readSentenceStarts', None, 0, 300, items, (many := (ctypes.c_int * 300)()))
        assert {items[at]: many[at] for at in range(found) if many[at]} == {ord('A'): 10, ord('T'): 5}
