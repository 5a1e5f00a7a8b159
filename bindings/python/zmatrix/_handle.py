"""A matrix of the library: calls the functions of its tier, allows one thread at a time, and releases the matrix."""
import ctypes
import threading
import weakref
from contextlib import contextmanager
from typing import Any, Dict, Iterator, Optional, Sequence, Tuple

from . import raw
from .errors import ClosedError, InUseError, LimitError

MEDIUM, FULL = raw.ZQMatrixInfoTypeMedium, raw.ZQMatrixInfoTypeFull
_TIERS: Dict[int, Tuple[str, Any, Any, Any]] = {
    MEDIUM: ('_Medium', raw.createAndInitMatrixMedium, raw.createAndInitMatrixMediumWithFile, raw.deleteMatrixMedium),
    FULL: ('', raw.createAndInitMatrix, raw.createAndInitMatrixWithFile, raw.deleteMatrix),
}


def last_message() -> str:
    """The last error or warning that the library gave in this thread."""
    return (raw.zq_lastMessage() or b'').decode('latin-1').strip()


class Handle:
    """Owns a matrix. `call` and `call_zq` call the function of its tier; both must be called inside `with use()`. Different threads can
    use different matrices at the same time, because ctypes releases the interpreter lock during a call."""

    def __init__(self, tier: int, path: Optional[str] = None) -> None:
        suffix, create, load, delete = _TIERS[tier]
        pointer = create() if path is None else load(path.encode(), -1)
        if not pointer:
            raise LimitError('no memory for a matrix' if path is None else last_message())
        self.tier = tier
        self._suffix = suffix
        self._pointer = pointer
        self._functions: Dict[str, Any] = {}
        self._lock = threading.Lock()
        self._finalizer = weakref.finalize(self, delete, pointer)

    @contextmanager
    def use(self) -> Iterator[None]:
        if not self._lock.acquire(blocking=False):
            raise InUseError('the model is being used, by another thread or by the call that this one came from')
        try:
            if not self._finalizer.alive:
                raise ClosedError('the model is closed')
            yield
        finally:
            self._lock.release()

    def call(self, name: str, *arguments: Any) -> Any:
        return self._function('s_' + name)(self._pointer, *arguments)

    def call_on(self, thing: Any, name: str, *arguments: Any) -> Any:
        """Calls a function whose first argument is an element or a record of the matrix."""
        return self._function('s_' + name)(thing, *arguments)

    def call_zq(self, name: str, *arguments: Any) -> Any:
        return self._function('zq_' + name)(self._pointer, *arguments)

    def _function(self, name: str) -> Any:
        function = self._functions.get(name)
        if function is None:
            function = self._functions[name] = getattr(raw, name + self._suffix)
        return function

    def close(self) -> None:
        if not self._lock.acquire(blocking=False):
            raise InUseError('the model is being used')
        try:
            self._finalizer()
        finally:
            self._lock.release()

    @property
    def is_open(self) -> bool:
        return self._finalizer.alive

    # --- helpers, to be called inside use()

    def select(self, matrix_id: int) -> None:
        self.call('setCurrentMatrixID', matrix_id)

    def record(self, matrix_id: int) -> raw.ZQMatrixProperties:
        """A copy of the sub-matrix's settings and counters. Its pointers must not be read, they lead to the library's memory."""
        selected = self.call('getCurrentMatrixID')
        self.select(matrix_id)
        lent = self.call_on(self.call('getMatrixInfo'), 'getGlobalMatrixInfoParameters')
        self.select(selected)
        if not lent:
            raise LimitError('out of memory')
        copy = raw.ZQMatrixProperties()
        ctypes.memmove(ctypes.byref(copy), lent, ctypes.sizeof(copy))
        return copy

    def occupied_ids(self) -> Sequence[int]:
        count = self.call('getMaxNumberOfMatrices')
        return [matrix_id for matrix_id in range(count) if self.record(matrix_id).numberOfMatrixElements > 0]

    def items_learned(self, matrix_id: int) -> int:
        """The items that a sub-matrix has learned, counted by its root; the root's handle is the ID."""
        if matrix_id > self.call('getMatrixStackPointer'):
            return 0
        root = self.call('getMatrixElementFromMatrixHandle', matrix_id)
        return int(self.call_on(root, 'getWriteCountWithSuccessorFromElement')) if root else 0

    def new_array(self, name: str, *arguments: Any) -> 'list[int]':
        """Calls a function that returns a new array and its length in the last argument; copies the array and releases it."""
        length = ctypes.c_int()
        result = self.call(name, *arguments, ctypes.byref(length)) if not name.startswith('zq_') else self.call_zq(
            name[3:], *arguments, ctypes.byref(length))
        if not result:
            return []
        items: 'list[int]' = result[:length.value]
        raw.s_Free(result)
        return items


def ints(values: Any) -> Any:
    """An array of C integers for a call; the C interface has 32-bit lengths."""
    if len(values) > 0x7FFFFFFF:
        raise LimitError(f'{len(values)} integers are more than a call takes')
    if hasattr(values, 'buffer_info'):
        return (ctypes.c_int * len(values)).from_buffer(values) if len(values) else (ctypes.c_int * 0)()
    return (ctypes.c_int * len(values))(*values)
