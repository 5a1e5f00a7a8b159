"""Learns texts, music and series of integers, and generates continuations.

    model = zmatrix.learn(pathlib.Path('novel.txt'))
    print(''.join(model.continue_('It was ', 500, seed=7)))
"""
from . import errors
from . import raw as _raw
from ._items import Character, Note, Number, Word
from ._model import Info, Model, SubMatrix, learn, load
from .errors import ClosedError, DamagedError, InputError, InUseError, LimitError, ZmatrixError

__version__ = _raw.zq_version().decode()

__all__ = ['Character', 'ClosedError', 'DamagedError', 'InUseError', 'Info', 'InputError', 'LimitError', 'Model', 'Note', 'Number',
           'SubMatrix', 'Word', 'ZmatrixError', 'errors', 'learn', 'load']
