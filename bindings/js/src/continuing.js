// How a model goes on: context, seed and choice are set once, then items come in pieces that a single call reads.
import * as raw from './raw.js';

export const METHODS = { best: raw.ZQSuccessorMethodMostProbable, middle: raw.ZQSuccessorMethodMiddle, random: raw.ZQSuccessorMethodRandom };
export const LINE_FEED = 10;

const MOST_FAILURES = 1000; // ends of sequences in a row, with no item between
const MOST_KEPT = 20000;
const STATES_OF_RANDOM = 2147483648;

/** Items, flat, and their probabilities. */
const pieceOf = (items, probabilities) => ({ items, probabilities, found: probabilities.length });

function appended(values, value) {
  const longer = new values.constructor(values.length + 1);
  longer.set(values);
  longer[values.length] = value;
  return longer;
}

/** Reads a sub-matrix on from its context. `order`: items of the context that count, undefined for all that are known. */
export class Reading {
  constructor(handle, id, context, order, differences) {
    this.handle = handle;
    this.id = id;
    this.order = order;
    this.dimension = handle.record(id).coordinateDimension;
    this.keep = order === undefined ? 0 : (order + differences) * this.dimension;
    this.context = this.keep > 0 ? Array.from(context.slice(-this.keep)) : [];
  }

  /** Up to `count` items; fewer behind the end of a sequence. */
  read(count) {
    this.handle.select(this.id);
    if (this.order === undefined) return this.readItems(count);
    this.handle.setKernel(this.context, 0);
    const piece = this.readItems(1);
    this.context = piece.found > 0 ? [...this.context, ...piece.items].slice(-this.keep) : [];
    return piece;
  }

  readItems(count) {
    const { handle, dimension } = this;
    return handle.memory.scratch((scratch) => {
      const items = scratch.room(4 * count * dimension), probabilities = scratch.room(8 * count);
      const found = handle.call('zq_readItems', count, items, probabilities, 0);
      return pieceOf(handle.memory.ints(items, found * dimension), handle.memory.doubles(probabilities, found));
    });
  }

  /** Pieces of up to `size` items, until the sub-matrix has no more to give. */
  *pieces(size) {
    for (let failures = 0; failures < MOST_FAILURES; ) {
      const piece = this.read(size);
      failures = piece.found > 0 ? 0 : failures + 1;
      yield piece;
    }
  }
}

/** Letters: a new sentence begins as learned ones begin. What a sequence ends with is a line feed. */
export class LetterReading extends Reading {
  constructor(handle, id, context, order, method, begins) {
    super(handle, id, context, order, 0);
    this.starts = new SentenceStarts(handle, handle.record(id).maxPhraseLengthForUpdateWithSequence);
    this.method = method;
    this.begins = begins;
    this.beginning = [];
    this.sentencesSo = 0;
  }

  read(count) {
    if (this.begins) {
      this.handle.select(this.id);
      const drawn = this.begin();
      if (drawn !== null) return pieceOf(Int32Array.of(drawn.item), Float64Array.of(drawn.probability));
    }
    const piece = super.read(count);
    if (piece.found === count || (piece.found > 0 && this.order !== undefined)) return piece;
    this.begins = true;
    return pieceOf(appended(piece.items, LINE_FEED), appended(piece.probabilities, 1));
  }

  /** A letter of the beginning, a line feed at its end, or null where the ordinary choice is to go on. */
  begin() {
    const known = this.starts.after(this.beginning);
    const letters = [...(known ?? [])];
    const goOn = sumOf(letters);
    if (this.beginning.length === 0) this.sentencesSo = goOn;
    if (known === null || this.sentencesSo === 0 || goOn > this.sentencesSo) {
      this.begins = false;
      this.beginning = [];
      return null;
    }
    if (goOn === 0 || (goOn < this.sentencesSo && this.method !== 'middle')) letters.push({ item: -1, count: this.sentencesSo - goOn });
    const { item, count } = this.choose(letters);
    const probability = count / Math.max(sumOf(letters), 1);
    this.beginning = item === -1 ? [] : [...this.beginning, item];
    if (item !== -1) this.sentencesSo = count;
    this.handle.setKernel(this.beginning, 1);
    if (this.order !== undefined) this.context = [...this.beginning];
    return { item: item === -1 ? LINE_FEED : item, probability };
  }

  choose(letters) {
    if (this.method === 'middle') return letters[letters.length >> 1];
    if (this.method === 'best') return letters.reduce((best, letter) => (letter.count > best.count ? letter : best));
    let rest = (this.handle.call('s_getSuccessorRandomValue', this.id) / STATES_OF_RANDOM) * sumOf(letters);
    return letters.slice(0, -1).find((letter) => (rest -= letter.count) < 0) ?? letters[letters.length - 1];
  }
}

function sumOf(letters) {
  return letters.reduce((sum, letter) => sum + letter.count, 0);
}

/** The letters that go on from the beginning of a sentence, with how many learned sentences go on so. */
class SentenceStarts {
  #known = new Map();

  constructor(handle, phraseLimit) {
    this.handle = handle;
    this.phraseLimit = phraseLimit;
  }

  after(beginning) {
    const key = beginning.join();
    if (!this.#known.has(key)) {
      if (this.#known.size >= MOST_KEPT) this.#known.clear();
      this.#known.set(key, this.#count(beginning));
    }
    return this.#known.get(key);
  }

  #count(beginning) {
    // What stands before a longer one is not known together with what follows.
    if (beginning.length > 0 && beginning.length + 2 > this.phraseLimit) return null;
    const found = this.handle.counted(256, 1, (scratch, capacity, items, counts) =>
      this.handle.call('zq_readSentenceStarts', scratch.ints(beginning), beginning.length, capacity, items, counts));
    return found && found.filter(({ count }) => count > 0).map(({ item, count }) => ({ item: item[0], count }));
  }
}
