"""Finds and loads the shared library: the one that the wheel brings, or the one that ZMATRIX_LIBRARY names."""
import ctypes
import os
import pathlib


def _load() -> ctypes.CDLL:
    # CDLL lets other threads of the interpreter run while the library does.
    path = os.environ.get('ZMATRIX_LIBRARY') or str(pathlib.Path(__file__).with_name('libzmatrix.so'))
    try:
        return ctypes.CDLL(path)
    except OSError as error:
        raise ImportError(f'the library of zmatrix cannot be loaded from {path}: {error}') from error


library = _load()
