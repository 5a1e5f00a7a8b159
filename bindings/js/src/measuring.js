// Measures how well a matrix knows a sequence: the share of each item among the successors of the longest known ending before it.

export class Measure {
  #handle;

  constructor(handle) {
    this.#handle = handle;
  }

  /** The information of a sequence in bits, infinite if an item never followed its context, and the number of stored items. */
  of(kind, id, items) {
    const handle = this.#handle;
    const { stored, readId } = this.#stored(kind, id, items);
    const { coordinateDimension: dimension, maxPhraseLengthForUpdateWithSequence: longest } = handle.record(readId);
    handle.select(readId);
    let bits = 0;
    for (let at = 0; at < stored.length; at += dimension) {
      const context = stored.subarray(Math.max(0, at - (longest - 1) * dimension), at);
      bits -= Math.log2(this.#share(context, stored.subarray(at, at + dimension)));
    }
    return { bits, items: stored.length / dimension };
  }

  #stored(kind, id, items) {
    const handle = this.#handle;
    handle.select(id);
    if (kind === 'words') return { stored: this.#symbols(items), readId: handle.record(id).currentMatrixIDLevelUp };
    const stored = items.length === 0 ? new Int32Array() : handle.newArray((scratch, length) =>
      handle.call('s_getPreProcessedSequenceFromOriginalSequence', scratch.ints(items), items.length, length));
    return { stored, readId: id };
  }

  /** The symbols of the words, -1 for a word without one. */
  #symbols(items) {
    let numberOfUnknown = 0;
    const known = this.#handle.newArray((scratch, length) => {
      const unknown = scratch.zeros(4);
      const made = this.#handle.call('s_getNextLevelSymbolsFromOriginalObjects', scratch.ints(items), items.length, length, unknown, scratch.zeros(4));
      numberOfUnknown = this.#handle.memory.int(unknown);
      return made;
    });
    return Int32Array.from([...known, ...Array(numberOfUnknown).fill(-1)]);
  }

  #share(context, item) {
    for (let begin = 0; begin <= context.length; begin += item.length) {
      const found = this.#handle.successors(context.subarray(begin), item.length);
      if (found === null || found.length === 0) continue;
      const all = found.reduce((sum, { count }) => sum + count, 0);
      const same = found.filter((successor) => successor.item.every((value, at) => value === item[at]));
      return same.reduce((sum, { count }) => sum + count, 0) / Math.max(all, 1);
    }
    return 0;
  }
}
