// What goes wrong, as exceptions.

/** The library refused something or failed; the message says what, in the library's own words where it has any. */
export class ZmatrixError extends Error {
  get name() {
    return this.constructor.name;
  }
}

/** An input that can't be read, or that holds nothing to learn or to continue. */
export class InputError extends ZmatrixError {}

/** A saved model that is damaged. */
export class DamagedError extends InputError {}

/** Memory, or what a matrix has room for, is exhausted. */
export class LimitError extends ZmatrixError {}

/** The model is closed. */
export class ClosedError extends ZmatrixError {}

/** A later continuation, or learning, has taken the place of this one. */
export class ReplacedError extends ZmatrixError {}
