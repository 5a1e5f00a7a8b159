// The exceptions of the library.

/** The library refused a call or failed. The message is the library's, if there is one. */
export class ZmatrixError extends Error {
  get name() {
    return this.constructor.name;
  }
}

/** An input can't be read, or has nothing to learn or to continue. */
export class InputError extends ZmatrixError {}

/** A saved model is damaged. */
export class DamagedError extends InputError {}

/** Memory is exhausted, or the matrix is full. */
export class LimitError extends ZmatrixError {}

/** The model is closed. */
export class ClosedError extends ZmatrixError {}

/** A later continuation, or learning, replaced this iterator. */
export class ReplacedError extends ZmatrixError {}
