"""Wrong use raises exceptions; nothing crashes or leaks."""
import ctypes
import gc
import pathlib
import pickle
import threading

import pytest

import zmatrix
from zmatrix import raw

NOTES = b''.join(bytes([0, 0x90, pitch, 64, 96, 0x80, pitch, 64]) for pitch in (60, 62, 64, 62, 60, 64, 65, 67) * 4)
TRACK = b'\0\xff\x58\4\4\2\x18\x08' + NOTES + b'\0\xff\x2f\0'
SMALL_MIDI = [b'MThd\0\0\0\6\0\0\0\1\0\x60MTrk', len(TRACK).to_bytes(4, 'big'), TRACK]


@pytest.mark.parametrize('source', ['', '   ', [], [2**31], b'\0\0', object(), pathlib.Path('no such file'), [1.5]])
def test_what_holds_nothing_to_learn_is_refused(source):
    with pytest.raises((zmatrix.ZmatrixError, TypeError)):
        zmatrix.learn(source)


@pytest.mark.parametrize('options', [dict(method='worst'), dict(order=0), dict(count=-1)])
def test_wrong_options_are_refused(harbour, options):
    with pytest.raises(ValueError):
        harbour.continue_('The ', **options)
    for wrong in (dict(order=0), dict(coding='odd'), dict(order=5000)):
        with pytest.raises(ValueError):
            zmatrix.learn([1, 2, 3], **wrong)


def test_a_closed_model_and_another_kind_are_refused():
    with zmatrix.learn([1, 2, 3, 5, 8]) as model:
        with pytest.raises(zmatrix.InputError):
            model.learn('a text')
        with pytest.raises(TypeError):
            model.continue_(['one'])
        pending = model.continue_()
        next(pending)
    model.close()
    for use in (lambda: len(model), model.continue_, lambda: model.learn([1]), lambda: pickle.dumps(model),
                lambda: list(zip(range(1000), pending))):
        with pytest.raises(zmatrix.ClosedError):
            use()


def test_a_later_continuation_ends_an_earlier_one(harbour):
    first = harbour.continue_('The ', seed=1)
    next(first)
    next(harbour.continue_('The ', seed=2))
    with pytest.raises(zmatrix.InUseError):
        list(zip(range(1000), first))


def test_damaged_files_are_told(harbour, tmp_path):
    path = tmp_path / 'model'
    harbour.save(path)
    whole = path.read_bytes()
    for length in (0, 10, len(whole) // 2):
        path.write_bytes(whole[:length])
        with pytest.raises(zmatrix.InputError):
            zmatrix.load(path)
    with pytest.raises(zmatrix.DamagedError):
        zmatrix.load(path)
    with pytest.raises(zmatrix.ZmatrixError):
        harbour.save(tmp_path / 'no folder' / 'model')


def test_raw_functions_refuse_other_tiers_and_types():
    full, medium = raw.createAndInitMatrix(), raw.createAndInitMatrixMedium()
    items = (ctypes.c_int * 3)(1, 2, 3)
    for arguments in ((full, items, 3), (medium, 'text', 3), (medium, items)):
        with pytest.raises((ctypes.ArgumentError, TypeError)):
            raw.s_updateMatrixWithLongINTSequence_Medium(*arguments)
    raw.deleteMatrix(full)
    raw.deleteMatrixMedium(medium)


def in_threads(*works):
    threads = [threading.Thread(target=work) for work in works]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()


def test_one_model_is_for_one_thread_at_a_time():
    model, refused = zmatrix.learn([1, 2, 3]), []

    def intrude():
        for use in (lambda: len(model), model.close, lambda: model.learn([4])):
            with pytest.raises(zmatrix.InUseError) as error:
                use()
            refused.append(error)

    with model._handle.use():
        in_threads(intrude)
    model.close()
    assert len(refused) == 3


def test_a_model_that_learns_in_one_thread_refuses_another():
    model, learning, refused = zmatrix.learn('A text.', order=16), threading.Event(), []

    def learn():
        learning.set()
        while learning.is_set():
            try:
                model.learn('The tide comes in. The boats go out. ' * 20000)
                learning.clear()
            except zmatrix.InUseError:
                pass  # the other thread was using the model

    def intrude():
        learning.wait()
        while learning.is_set() and not refused:
            try:
                len(model)
            except zmatrix.InUseError as error:
                refused.append(error)

    in_threads(learn, intrude)
    assert refused and len(model) > 700000


def test_threads_with_models_of_their_own_give_what_one_thread_gives(examples, tmp_path):
    sources = [(examples / 'harbour.txt', {}), (examples / 'muehle.txt', dict(words=True)),
               ([examples / 'canon.krn', examples / 'tide.mid'], {}), (examples / 'primes.txt', dict(coding='plain'))]

    def work(seed):
        source, options = sources[seed % len(sources)]
        model = zmatrix.learn(source, **options)
        model.save(tmp_path / str(seed))
        return [list(one.continue_(count=300, seed=seed)) for one in (model, zmatrix.load(tmp_path / str(seed)))]

    results = {}
    in_threads(*[lambda seed=seed: results.update({seed: work(seed)}) for seed in range(8)])
    assert results == {seed: work(seed) for seed in range(8)}


def test_messages_are_those_of_the_thread():
    told = []
    raw.zq_initMath()
    raw.s_getMatrixInfoTypeFromFile(b'no such file')
    in_threads(lambda: told.append(raw.zq_lastMessage()))
    assert told == [b''] and raw.zq_lastMessage() != b''


def resident():
    return int(pathlib.Path('/proc/self/statm').read_text().split()[1]) * 4096


def test_ten_thousand_models_leave_nothing_behind():
    def make(count):
        for seed in range(count):
            model = zmatrix.learn([1, 2, 4, 5, 7, 8, 10], order=3)
            model.generate([20, 21], 3, seed=seed)
            next(model.continue_())
        del model
        gc.collect()

    make(500)
    before = resident()
    make(10000)
    assert resident() - before < 4 << 20


def test_threads_that_end_leave_nothing_behind():
    def work():
        model = zmatrix.learn(b''.join(SMALL_MIDI))
        list(model.continue_(count=10, seed=1))
        raw.zq_primePi(1000)

    def make(count):
        for _ in range(count):
            in_threads(work, work)
        gc.collect()

    raw.zq_initFirstNPrimes(1000)
    make(50)
    before = resident()
    make(500)
    raw.zq_deinitPrimes()
    assert resident() - before < 4 << 20
