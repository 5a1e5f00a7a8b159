// Models: learning, generating, measuring and saving.
import { LetterReading, METHODS, Reading } from './continuing.js';
import { ClosedError, InputError, LimitError, ReplacedError, ZmatrixError } from './errors.js';
import { FULL } from './handle.js';
import { QUARTER, makerOf, notesOf } from './items.js';
import { learnSource } from './learning.js';
import { Measure } from './measuring.js';
import * as raw from './raw.js';
import { KIND_OF_SOURCE, numbersOf, sourcesOf } from './sources.js';
import { itemsOf, textOf } from './text.js';

const PIECE = 256; // items per library call of an iterator
const BULK = 4096;

/** A model. Made by `learn` and `load`; closed by `close()`, or some time after the last reference is gone. */
export class Model {
  #kind;
  #handle;
  #reading = null;

  constructor(kind, handle) {
    this.#kind = kind;
    this.#handle = handle;
  }

  /** text, words, numbers or music. */
  get kind() {
    return this.#kind;
  }

  get isOpen() {
    return this.#handle.isOpen;
  }

  learn(source) {
    return this.learnSources(sourcesOf(source));
  }

  learnSources(sources) {
    const stranger = sources.find(({ key }) => KIND_OF_SOURCE[key] !== this.#kind);
    if (stranger !== undefined) throw new InputError(`${stranger.name} holds ${KIND_OF_SOURCE[stranger.key]}, the model ${this.#kind}`);
    const before = this.#items();
    this.#reading = null;
    for (const source of sources) learnSource(this.#handle, this.#kind, source);
    if (this.#items() === before) throw new InputError(`nothing to learn: the input holds no ${this.#kind}`);
    return this;
  }

  // --- generating

  continue(start, options = {}) {
    const { count = Infinity, seed, order, method } = optionsOf(options);
    const { reading, make } = this.#begin(start, seed, order, method);
    return this.#generate(reading, make, count);
  }

  generate(start, options = {}) {
    const { count = 1000, seed, order, method } = optionsOf(options);
    if (count === Infinity) throw new RangeError('generate needs a count');
    const { reading, make } = this.#begin(start, seed, order, method);
    if (this.#kind === 'music') return Array.from(this.#generate(reading, make, count), ({ value }) => value);
    if (this.#kind === 'words') {
      return Array.from(this.#generate(reading, make, count), ({ value }) => value).join(' ').replaceAll(' \n ', '\n');
    }
    const items = this.#readAll(reading, count);
    return this.#kind === 'text' ? textOf(items) : items;
  }

  midi(count = 200, options = {}) {
    const { seed, order, method } = optionsOf({ ...options, count });
    if (this.#kind !== 'music') throw new InputError('the model holds no music');
    if (count === Infinity) throw new RangeError('a MIDI file needs a count');
    this.#begin(options.start, seed, order, method);
    return this.#handle.memory.scratch((scratch) => this.#midiData(scratch, count));
  }

  #midiData(scratch, count) {
    const { library, memory } = this.#handle;
    const result = scratch.zeros(4), length = scratch.zeros(8), writing = scratch.zeros(raw.zq_ScoreWriting.size);
    const score = this.#handle.call('zq_createGeneratedScore', count, 0, result);
    if (score === 0) throw new ZmatrixError(`no music can be made: ${library.lastMessage() || memory.int(result)}`);
    const data = library.raw.zq_createMidiDataOfScore(score, length, writing);
    library.raw.zq_deleteScore(score);
    if (data === 0) throw new LimitError(`no MIDI file can be made: ${new raw.zq_ScoreWriting(memory, writing).state}`);
    const bytes = memory.bytes(data, memory.longLong(length));
    library.raw.s_Free(data);
    return bytes;
  }

  #readAll(reading, count) {
    const items = new Int32Array(count);
    let given = 0;
    reading.isBulk = true;
    const pieces = reading.pieces(Math.min(BULK, Math.max(count, 1)));
    while (given < count) {
      const { value, done } = pieces.next();
      if (done) return items.slice(0, given);
      items.set(value.found <= count - given ? value.items : value.items.subarray(0, count - given), given);
      given += value.found;
    }
    return items;
  }

  *#generate(reading, make, count) {
    const pieces = reading.pieces(Math.min(PIECE, Math.max(count, 1)));
    for (let given = 0; given < count; ) {
      if (!this.isOpen) throw new ClosedError('the model is closed');
      if (this.#reading !== reading) throw new ReplacedError('a later continuation, or learning, has taken the place of this one');
      const { value, done } = pieces.next();
      if (done) return;
      const made = Array.from(value.probabilities, (probability, at) => make(value.items, at * reading.dimension, probability));
      for (const item of made.slice(0, count - given)) yield item;
      given += value.found;
    }
  }

  #begin(start, seed = Math.floor(Math.random() * 2 ** 31), order, method) {
    const handle = this.#handle;
    let { context, differences } = this.#contextOf(start);
    const id = this.#choose(context);
    const known = context.length > 0 ? this.#goTo(id, context) : 0;
    if (context.length === 0) {
      handle.select(id);
      if (this.#kind !== 'numbers') this.#goTo(id, []);
    }
    const readId = this.#kind === 'words' ? handle.record(id).currentMatrixIDLevelUp : id;
    handle.select(readId);
    handle.call('s_setSucessorMethod', METHODS[method]);
    handle.call('s_setSuccessorRandomValue', readId, seed);
    if (this.#kind === 'text') {
      this.#reading = new LetterReading(handle, readId, context, order, method, known === 0);
    } else {
      if (this.#kind !== 'numbers' || (order !== undefined && context.length === 0)) context = handle.kernel();
      this.#reading = new Reading(handle, readId, context, order, differences);
    }
    return { reading: this.#reading, make: makerOf(this.#kind, handle, readId) };
  }

  /** The items of a start, and how many fewer preprocessed items than original ones it has. For music each item is an array. */
  #contextOf(start) {
    const isMissing = start === undefined || start === null;
    if (this.#kind === 'text' || this.#kind === 'words') {
      if (!isMissing && typeof start !== 'string') throw new TypeError('a text is continued from a text');
      return { context: itemsOf(start ?? ''), differences: 0 };
    }
    if (this.#kind === 'numbers') {
      return { context: isMissing ? new Int32Array() : numbersOf(start), differences: this.#handle.record(0).preProcessingType };
    }
    return { context: isMissing ? [] : notesOf(start), differences: 1 };
  }

  /** The sub-matrix that knows the longest ending of the start; ties go to the one that learned most. */
  #choose(context) {
    const handle = this.#handle;
    let best = { known: -1, learned: -1, id: -1 };
    for (const id of handle.occupiedIds()) {
      if (!this.#isContinued(id)) continue;
      const known = context.length > 0 ? this.#goTo(id, context) : 0, learned = handle.itemsLearned(id);
      if (known > best.known || (known === best.known && learned > best.learned)) best = { known, learned, id };
    }
    if (best.id < 0) throw new InputError(`nothing to continue: the model holds no ${this.#kind}`);
    return best.id;
  }

  #isContinued(id) {
    const { matrixType, currentMatrixIDLevelUp } = this.#handle.record(id);
    const isOfText = this.#kind === 'text' || this.#kind === 'words';
    return (!isOfText || matrixType === raw.ZQMatrixTypeANSIText) && (this.#kind !== 'words' || currentMatrixIDLevelUp >= 0);
  }

  /** Sets the kernel and returns the length of its known ending. */
  #goTo(id, context) {
    const handle = this.#handle;
    handle.select(id);
    handle.setKernel(this.#flat(id, context), 1);
    if (this.#kind === 'words') handle.select(handle.record(id).currentMatrixIDLevelUp);
    return handle.call('s_getLengthOfKernelPreprocessedSequence');
  }

  #flat(id, context) {
    if (this.#kind !== 'music') return context;
    const { coordinateDimension } = this.#handle.record(id);
    return context.flatMap((note) => note.slice(0, coordinateDimension));
  }

  // --- measuring

  probability(sequence) {
    return 2 ** -this.#measure(sequence).bits;
  }

  surprise(sequence) {
    const { bits, items } = this.#measure(sequence);
    return items > 0 ? bits / items : 0;
  }

  #measure(sequence) {
    this.#reading = null;
    const { context } = this.#contextOf(sequence ?? []);
    const id = this.#choose(context);
    this.#goTo(id, context);
    return new Measure(this.#handle).of(this.#kind, id, this.#flat(id, context));
  }

  // --- contents

  get info() {
    const handle = this.#handle;
    const subMatrices = handle.occupiedIds().map((id) => {
      const { numberOfMatrixElements: elements, maxPhraseLengthForUpdateWithSequence: order } = handle.record(id);
      handle.select(id);
      return { id, items: handle.itemsLearned(id), elements, order, names: handle.names() };
    });
    const order = Math.max(0, ...subMatrices.map((part) => part.order));
    const elements = subMatrices.reduce((sum, part) => sum + part.elements, 0);
    return { kind: this.#kind, tier: handle.tier === FULL ? 'full' : 'medium', order, items: this.#items(), elements, subMatrices };
  }

  #items() {
    const handle = this.#handle;
    const occupied = handle.occupiedIds();
    const above = new Set(occupied.map((id) => handle.record(id).currentMatrixIDLevelUp));
    const isCounted = (id) => handle.tier !== FULL || above.has(id) === (this.#kind === 'words');
    return occupied.filter(isCounted).reduce((sum, id) => sum + handle.itemsLearned(id), 0);
  }

  // --- saving, closing

  save() {
    const { library } = this.#handle;
    return library.bytesOfFile((path) => {
      if (this.#handle.call('s_saveMatrixToDisk', path) !== 1) throw new ZmatrixError(`cannot save: ${library.lastMessage()}`);
    });
  }

  close() {
    this.#handle.close();
  }
}

if (Symbol.dispose !== undefined) Model.prototype[Symbol.dispose] = Model.prototype.close;

function optionsOf({ count, seed, order, method = 'random' }) {
  if (count !== undefined && count !== Infinity && !(Number.isSafeInteger(count) && count >= 0)) throw new RangeError('count is an integer from 0');
  if (seed !== undefined && !Number.isSafeInteger(seed)) throw new RangeError('seed is an integer');
  if (order !== undefined && !(Number.isSafeInteger(order) && order >= 1)) throw new RangeError('order is at least 1');
  if (!Object.hasOwn(METHODS, method)) throw new RangeError(`method is one of ${Object.keys(METHODS).join(', ')}, not ${String(method)}`);
  return { count, seed, order, method };
}
