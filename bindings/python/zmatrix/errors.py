"""The exceptions of the library."""


class ZmatrixError(Exception):
    """The library refused a call or failed. The text has the library's message, if there is one."""


class InputError(ZmatrixError, ValueError):
    """An input can't be read, or has nothing to learn or to continue."""


class DamagedError(InputError):
    """The file of a model is damaged."""


class LimitError(ZmatrixError, MemoryError):
    """Memory is exhausted, or the matrix is full."""


class ClosedError(ZmatrixError, ValueError):
    """The model is closed."""


class InUseError(ZmatrixError, RuntimeError):
    """Another thread is using the model, or a later continuation replaced this one."""
