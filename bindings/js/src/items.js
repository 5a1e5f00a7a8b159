// The items of a continuation: values with the probability with which they were chosen.
import { InputError } from './errors.js';
import { LINE_FEED } from './continuing.js';
import { textOf } from './text.js';

export const QUARTER = 3072; // quanta per quarter note

/** A function that makes the result of the item at an index and its probability. */
export function makerOf(kind, handle, id) {
  const { coordinateDimension, midiSoundID } = handle.record(id);
  if (kind === 'numbers') return (items, at, probability) => ({ value: items[at], probability });
  if (kind === 'music') {
    return (items, at, probability) => ({ value: noteOf(items.subarray(at, at + coordinateDimension), midiSoundID), probability });
  }
  const valueOf = kind === 'text' ? (item) => textOf([item]) : (item) => (item === LINE_FEED ? '\n' : handle.phraseOfSymbol(item));
  const known = new Map();
  return (items, at, probability) => {
    const item = items[at];
    if (!known.has(item)) known.set(item, valueOf(item));
    return { value: known.get(item), probability };
  };
}

function noteOf([pitch, start, duration = QUARTER, sound], soundOfMatrix) {
  return { pitch, start: start / QUARTER, duration: duration / QUARTER, sound: sound ?? soundOfMatrix };
}

/** Notes as coordinates: pitch, start and duration in quanta, sound. */
export function notesOf(notes) {
  if (typeof notes?.[Symbol.iterator] !== 'function' || typeof notes === 'string') throw new TypeError('music is continued from notes');
  return Array.from(notes, (note) => [
    coordinate(note?.pitch), coordinate(note?.start * QUARTER), coordinate(note?.duration * QUARTER), coordinate(note?.sound ?? 0),
  ]);
}

function coordinate(value) {
  if (typeof value !== 'number' || Number.isNaN(value)) throw new TypeError('a note has pitch, start and duration, and may have sound');
  const rounded = Math.round(value);
  if ((rounded | 0) !== rounded) throw new InputError(`a note of ${value} does not fit 32 bits`);
  return rounded;
}
