// Generation: context, seed and method are set once, then items are read in pieces, one library call per piece.
import * as raw from './raw.js';

export const METHODS = { best: raw.ZQSuccessorMethodMostProbable, middle: raw.ZQSuccessorMethodMiddle, random: raw.ZQSuccessorMethodRandom };
export const LINE_FEED = 10;

const END = -1; // the end of a sentence, as one of the choices
const MOST_FAILURES = 1000; // ends of sequences in a row, with no item between
const MOST_KEPT = 20000;
const STATES_OF_RANDOM = 2147483648;

function appended(values, value) {
  const longer = new values.constructor(values.length + 1);
  longer.set(values);
  longer[values.length] = value;
  return longer;
}

/** Generates from a sub-matrix. `order`: number of context items to use, undefined for all known ones. */
export class Reading {
  constructor(handle, id, context, order, differences) {
    this.handle = handle;
    this.id = id;
    this.order = order;
    this.dimension = handle.record(id).coordinateDimension;
    this.isBulk = false; // true if probabilities are not needed
    this.keep = order === undefined ? 0 : (order + differences) * this.dimension;
    this.context = this.keep > 0 ? Array.from(context.slice(-this.keep)) : [];
  }

  /** The coordinates of up to `count` items and their probabilities; fewer if a sequence ends. */
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

  /** Pieces of up to `size` items, until the sub-matrix gives none any more. */
  *pieces(size) {
    for (let failures = 0; failures < MOST_FAILURES; ) {
      const piece = this.read(size);
      failures = piece.found > 0 ? 0 : failures + 1;
      yield piece;
    }
  }
}

/** Generates letters. A new sentence begins with the counts of learned beginnings; a sequence ends with a line feed. */
export class LetterReading extends Reading {
  #starts;
  #place = null; // the node of the current beginning in SentenceStarts; null before the first letter
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

  /** The letters of beginnings, until the ordinary choice continues. */
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

  /** The next letter of the beginning, a line feed if the sentence ends, or null if the ordinary choice continues. */
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

/** The letters that follow a beginning of sentences, with the number of learned sentences that begin so. Results are cached in a
 * tree of places, one per beginning. */
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

  /** `letters` is null if the counts can't tell. */
  knownAt(place) {
    return (place.known ??= this.#count(place.beginning));
  }

  #newPlace(beginning) {
    this.#places++;
    return { beginning, known: null, next: new Map() };
  }

  #count(beginning) {
    // A phrase must have room for the letters before and after the beginning.
    const found = beginning.length > 0 && beginning.length + 2 > this.phraseLimit ? null
      : this.handle.counted(256, 1, (scratch, capacity, items, counts) =>
        this.handle.call('zq_readSentenceStarts', scratch.ints(beginning), beginning.length, capacity, items, counts));
    const letters = found && found.filter(({ count }) => count > 0).map(({ item, count }) => ({ item: item[0], count }));
    return { letters, goOn: (letters ?? []).reduce((sum, { count }) => sum + count, 0) };
  }
}
