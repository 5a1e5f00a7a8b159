"""What is wrong is an exception; nothing crashes, and nothing leaks."""
import ctypes
import gc
import pathlib
import pickle
import threading

import pytest

import zmatrix
from zmatrix import raw


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


def test_one_model_is_for_one_thread_at_a_time():
    model, refused = zmatrix.learn([1, 2, 3]), []
    with model._handle.use():
        def intrude():
            try:
                len(model)
            except zmatrix.InUseError as error:
                refused.append(error)
        thread = threading.Thread(target=intrude)
        thread.start()
        thread.join()
    assert len(refused) == 1


def test_threads_with_models_of_their_own_give_what_one_thread_gives():
    def work(seed):
        return zmatrix.learn('The tide comes in. The tide goes out. ' * 50).generate('The ', 500, seed=seed)

    results = {}
    threads = [threading.Thread(target=lambda seed=seed: results.update({seed: work(seed)})) for seed in range(4)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert results == {seed: work(seed) for seed in range(4)}


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
