// How a model goes on: context, seed and choice are set once, then items come in pieces that a single call reads.
import * as raw from './raw.js';

export const METHODS = { best: raw.ZQSuccessorMethodMostProbable, middle: raw.ZQSuccessorMethodMiddle, random: raw.ZQSuccessorMethodRandom };
export const LINE_FEED = 10;

const END = -1; // of a sentence, among the letters to choose from
const MOST_FAILURES = 1000; // ends of sequences in a row, with no item between
const MOST_KEPT = 20000;
const STATES_OF_RANDOM = 2147483648;

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
    this.isBulk = false; // whether nobody asks for probabilities
    this.keep = order === undefined ? 0 : (order + differences) * this.dimension;
    this.context = this.keep > 0 ? Array.from(context.slice(-this.keep)) : [];
  }

  /** Up to `count` items, flat, and their probabilities; fewer behind the end of a sequence. */
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
      const items = scratch.room(4 * count * dimension), probabilities = this.isBulk ? 0 : scratch.room(8 * count);
      const found = handle.call('zq_readItems', count, items, probabilities, 0);
      const shares = this.isBulk ? null : handle.memory.doubles(probabilities, found);
      return { items: handle.memory.ints(items, found * dimension), probabilities: shares, found };
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
  #starts;
  #place = null; // in the beginning of a sentence; null before its first letter
  #sentencesSo = 0;

  constructor(handle, id, context, order, method, begins) {
    super(handle, id, context, order, 0);
    this.#starts = new SentenceStarts(handle, handle.record(id).maxPhraseLengthForUpdateWithSequence);
    this.method = method;
    this.begins = begins;
  }

  read(count) {
    if (this.begins) {
      const beginning = this.#readBeginning(count);
      if (beginning.found > 0) return beginning;
    }
    const piece = super.read(count);
    if (piece.found === count || (piece.found > 0 && this.order !== undefined)) return piece;
    this.begins = true;
    return {
      items: appended(piece.items, LINE_FEED), probabilities: this.isBulk ? null : appended(piece.probabilities, 1), found: piece.found + 1,
    };
  }

  /** Letters of beginnings, up to where the ordinary choice is to go on. */
  #readBeginning(count) {
    const items = [], probabilities = [];
    this.handle.select(this.id);
    while (items.length < count) {
      const drawn = this.#begin();
      if (drawn === null) break;
      items.push(drawn.item);
      probabilities.push(drawn.probability);
    }
    return { items: Int32Array.from(items), probabilities, found: items.length };
  }

  /** A letter of the beginning, a line feed at its end, or null where the ordinary choice is to go on. */
  #begin() {
    const place = this.#place ?? this.#starts.root();
    const { letters, goOn } = this.#starts.knownAt(place);
    if (place.beginning.length === 0) this.#sentencesSo = goOn;
    if (letters === null || this.#sentencesSo === 0 || goOn > this.#sentencesSo) {
      this.#goOnFrom(place.beginning);
      return null;
    }
    const ends = goOn === 0 || (goOn < this.#sentencesSo && this.method !== 'middle') ? this.#sentencesSo - goOn : null;
    const { item, count } = this.#choose(ends === null ? letters : [...letters, { item: END, count: ends }], goOn + (ends ?? 0));
    const probability = count / Math.max(goOn + (ends ?? 0), 1);
    if (item === END) {
      this.#place = null;
      this.#goTo([]);
      return { item: LINE_FEED, probability };
    }
    this.#place = this.#starts.behind(place, item);
    this.#sentencesSo = count;
    return { item, probability };
  }

  #goOnFrom(beginning) {
    this.begins = false;
    this.#place = null;
    if (beginning.length > 0) this.#goTo(beginning);
  }

  #goTo(beginning) {
    if (this.order !== undefined) this.context = beginning;
    else this.handle.setKernel(beginning, 1);
  }

  #choose(letters, all) {
    if (this.method === 'middle') return letters[letters.length >> 1];
    if (this.method === 'best') return letters.reduce((best, letter) => (letter.count > best.count ? letter : best));
    let rest = (this.handle.call('s_getSuccessorRandomValue', this.id) / STATES_OF_RANDOM) * all;
    const last = letters.length - 1;
    for (let at = 0; at < last; at++) {
      rest -= letters[at].count;
      if (rest < 0) return letters[at];
    }
    return letters[last];
  }
}

/** The letters that go on from the beginning of a sentence, with how many learned sentences go on so. What was asked for once is
 * kept, place by place. */
class SentenceStarts {
  #root = null;
  #places = 0;

  constructor(handle, phraseLimit) {
    this.handle = handle;
    this.phraseLimit = phraseLimit;
  }

  root() {
    if (this.#root === null || this.#places > MOST_KEPT) {
      this.#places = 0;
      this.#root = this.#newPlace([]);
    }
    return this.#root;
  }

  behind(place, letter) {
    let next = place.next.get(letter);
    if (next === undefined) place.next.set(letter, (next = this.#newPlace([...place.beginning, letter])));
    return next;
  }

  /** `letters` is null where the counts can't tell. */
  knownAt(place) {
    return (place.known ??= this.#count(place.beginning));
  }

  #newPlace(beginning) {
    this.#places++;
    return { beginning, known: null, next: new Map() };
  }

  #count(beginning) {
    // What stands before a longer one is not known together with what follows.
    const found = beginning.length > 0 && beginning.length + 2 > this.phraseLimit ? null
      : this.handle.counted(256, 1, (scratch, capacity, items, counts) =>
        this.handle.call('zq_readSentenceStarts', scratch.ints(beginning), beginning.length, capacity, items, counts));
    const letters = found && found.filter(({ count }) => count > 0).map(({ item, count }) => ({ item: item[0], count }));
    return { letters, goOn: (letters ?? []).reduce((sum, { count }) => sum + count, 0) };
  }
}
