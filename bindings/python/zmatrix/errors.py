"""What goes wrong, as exceptions."""


class ZmatrixError(Exception):
    """The library refused something or failed; the text says what, in the library's own words where it has any."""


class InputError(ZmatrixError, ValueError):
    """An input that can't be read, or that holds nothing to learn or to continue."""


class DamagedError(InputError):
    """A file of a model that is damaged."""


class LimitError(ZmatrixError, MemoryError):
    """Memory, or what a matrix has room for, is exhausted."""


class ClosedError(ZmatrixError, ValueError):
    """The model is closed."""


class InUseError(ZmatrixError, RuntimeError):
    """Another thread is using the model, or a later continuation has taken its place."""
