"""Loads the shared library: the one in the wheel, or the one that the environment variable ZMATRIX_LIBRARY names."""
import ctypes
import os
import pathlib


def _load() -> ctypes.CDLL:
    # CDLL releases the interpreter lock during each call.
    path = os.environ.get('ZMATRIX_LIBRARY') or str(pathlib.Path(__file__).with_name('libzmatrix.so'))
    try:
        return ctypes.CDLL(path)
    except OSError as error:
        raise ImportError(f'the library of zmatrix cannot be loaded from {path}: {error}') from error


library = _load()
