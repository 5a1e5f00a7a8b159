// A matrix of the library: calls the functions of its tier, reads its records, and releases the matrix.
import { ClosedError, LimitError } from './errors.js';
import * as raw from './raw.js';
import { textOf } from './text.js';

export const MEDIUM = raw.ZQMatrixInfoTypeMedium;
export const FULL = raw.ZQMatrixInfoTypeFull;

const TIERS = {
  [MEDIUM]: { suffix: '_Medium', create: 'createAndInitMatrixMedium', load: 'createAndInitMatrixMediumWithFile', remove: 'deleteMatrixMedium' },
  [FULL]: { suffix: '', create: 'createAndInitMatrix', load: 'createAndInitMatrixWithFile', remove: 'deleteMatrix' },
};
const SILENT = -1;

// Releases matrices some time after their last reference is gone; close() does so at once.
const forgotten = new FinalizationRegistry(({ library, remove, pointer }) => library.raw[remove](pointer));

export class Handle {
  #pointer;
  #functions;

  /** Makes a new matrix, or loads one from a file whose path is a C string. */
  constructor(library, tier, path = null) {
    const { suffix, create, load, remove } = TIERS[tier];
    const { raw: functions, memory } = library;
    const pointer = path === null ? functions[create]() : functions[load](path, SILENT);
    if (pointer === 0) throw new LimitError(path === null ? 'no memory for a matrix' : library.lastMessage());
    this.library = library;
    this.memory = memory;
    this.tier = tier;
    this.suffix = suffix;
    this.#functions = new Map();
    this.#pointer = pointer;
    forgotten.register(this, { library, remove, pointer }, this);
  }

  get isOpen() {
    return this.#pointer !== 0;
  }

  close() {
    if (!this.isOpen) return;
    forgotten.unregister(this);
    this.library.raw[TIERS[this.tier].remove](this.#pointer);
    this.#pointer = 0;
  }

  /** Calls the function of the tier on the matrix. */
  call(name, ...rest) {
    if (!this.isOpen) throw new ClosedError('the model is closed');
    return this.#function(name)(this.#pointer, ...rest);
  }

  /** Calls the function of the tier on an element or a record. */
  callOn(pointer, name, ...rest) {
    return this.#function(name)(pointer, ...rest);
  }

  #function(name) {
    let found = this.#functions.get(name);
    if (found === undefined) this.#functions.set(name, (found = this.library.raw[name + this.suffix]));
    return found;
  }

  select(id) {
    this.call('s_setCurrentMatrixID', id);
  }

  /** The settings and counters of a sub-matrix; valid until the next call. */
  record(id) {
    const selected = this.call('s_getCurrentMatrixID');
    this.select(id);
    const lent = this.callOn(this.call('s_getMatrixInfo'), 's_getGlobalMatrixInfoParameters');
    this.select(selected);
    if (lent === 0) throw new LimitError('out of memory');
    return new raw.ZQMatrixProperties(this.memory, lent);
  }

  occupiedIds() {
    const ids = Array.from({ length: this.call('s_getMaxNumberOfMatrices') }, (_, id) => id);
    return ids.filter((id) => this.record(id).numberOfMatrixElements > 0);
  }

  /** The items that a sub-matrix has learned, counted by its root; the root's handle is the ID. */
  itemsLearned(id) {
    if (id > this.call('s_getMatrixStackPointer')) return 0;
    const root = this.call('s_getMatrixElementFromMatrixHandle', id);
    return root === 0 ? 0 : this.callOn(root, 's_getWriteCountWithSuccessorFromElement');
  }

  /** The names of the inputs that the selected sub-matrix learned. */
  names() {
    const bytes = this.memory.textBytes(this.call('s_getNamesOfUpdateFiles'));
    return new TextDecoder().decode(bytes).split('\n').filter((name) => name !== '');
  }

  setKernel(items, replaces) {
    return this.memory.scratch((scratch) =>
      this.call('s_initializeKernelSequenceWithOriginalSequence', scratch.ints(items), items.length, replaces));
  }

  /** The original items of the selected kernel. */
  kernel() {
    const info = this.call('s_getMatrixInfo');
    return this.newArray((scratch, length) =>
      this.callOn(info, 's_getKernelOriginalSequenceFlatIndexVector', length, scratch.zeros(4)));
  }

  /** A copy of the array that `work` returns; `work` writes its length to the given address. The library's array is released. */
  newArray(work) {
    return this.memory.scratch((scratch) => {
      const length = scratch.zeros(4);
      const made = work(scratch, length);
      if (made === 0) return new Int32Array();
      const copy = this.memory.ints(made, this.memory.int(length));
      this.library.raw.s_Free(made);
      return copy;
    });
  }

  phraseOfSymbol(symbol) {
    return textOf(this.newArray((scratch, length) => this.call('zq_createPhraseOfSymbol', symbol, length)));
  }

  /** The successors of a context of stored items, as [{item, count}]; null if the context was not learned. */
  successors(context, dimension) {
    return this.counted(256, dimension, (scratch, capacity, items, counts) =>
      this.call('zq_readSuccessors', scratch.ints(context), context.length, capacity, items, counts, 0));
  }

  /** Calls `read` to fill arrays of items and counts, again with larger arrays if they are too small; null if it fails. */
  counted(capacity, dimension, read) {
    return this.memory.scratch((scratch) => {
      const items = scratch.room(4 * capacity * dimension), counts = scratch.room(4 * capacity);
      const found = read(scratch, capacity, items, counts);
      if (found < 0) return null;
      if (found > capacity) return this.counted(found, dimension, read);
      const item = (at) => this.memory.ints(items + 4 * at * dimension, dimension);
      return Array.from({ length: found }, (_, at) => ({ item: item(at), count: this.memory.int(counts + 4 * at) }));
    });
  }
}
