// Sources of learning: texts, words, numbers and music.
import { InputError, LimitError } from './errors.js';
import { decode } from './text.js';

export const KIND_OF_SOURCE = { text: 'text', words: 'words', numbers: 'numbers', midi: 'music', kern: 'music' };

const KEYS = [...Object.keys(KIND_OF_SOURCE), 'file'];
const MOST_NUMBERS = 0x1fffffff; // 4 bytes each, in a 32-bit address space
const NUMBERS = /^[\s,;]*(?:[+-]?\d+[\s,;]+)*[+-]?\d+[\s,;]*$/;

/** The sources of the argument of `learn`: `{text}`, `{words}`, `{numbers}`, `{midi}`, `{kern}` or `{file}`. */
export function sourcesOf(given) {
  const keys = typeof given === 'object' && given !== null ? KEYS.filter((key) => key in given) : [];
  if (keys.length !== 1) throw new TypeError(`an object with one of ${KEYS.join(', ')} is learned`);
  const [key] = keys;
  const name = given.name ?? key;
  if (typeof name !== 'string') throw new TypeError('name is a text');
  const contents = key === 'numbers' ? seriesOf(given.numbers) : isContent(given[key]) ? [given[key]] : listOf(given[key], key);
  return contents.map((content) => sourceOf(key, content, name));
}

function isContent(value) {
  return typeof value === 'string' || value instanceof ArrayBuffer || ArrayBuffer.isView(value);
}

function listOf(values, key) {
  if (typeof values?.[Symbol.iterator] !== 'function') throw new TypeError(`${key} is a text, bytes, or several of these`);
  return [...values];
}

function sourceOf(key, content, name) {
  if (key === 'numbers') return { key, content, name };
  if (key === 'file') return told(bytesOf(content), name);
  if (key === 'midi') return { key, content: bytesOf(content), name };
  if (key === 'kern') return { key, content: typeof content === 'string' ? new TextEncoder().encode(content) : bytesOf(content), name };
  return { key, content: typeof content === 'string' ? content : decode(bytesOf(content)), name };
}

/** The bytes of a buffer or of a view of one. */
export function bytesOf(content) {
  if (content instanceof ArrayBuffer) return new Uint8Array(content);
  if (ArrayBuffer.isView(content)) return new Uint8Array(content.buffer, content.byteOffset, content.byteLength);
  throw new TypeError('bytes are a Uint8Array, another view or an ArrayBuffer');
}

/** Detects the kind of a file from its bytes. */
function told(bytes, name) {
  if (bytes[0] === 0x4d && bytes[1] === 0x54 && bytes[2] === 0x68 && bytes[3] === 0x64) return { key: 'midi', content: bytes, name };
  const text = decode(bytes);
  if (isKern(text)) return { key: 'kern', content: bytes, name };
  if (NUMBERS.test(text)) return { key: 'numbers', content: numbersOf(text.match(/[+-]?\d+/g).map(Number)), name };
  return { key: 'text', content: text, name };
}

function isKern(text) {
  for (const line of text.slice(0, 65536).split(/\r\n|\r|\n/)) {
    if (line.startsWith('**')) return line.split('\t').includes('**kern');
    if (line !== '' && !line.startsWith('!')) return false;
  }
  return false;
}

function seriesOf(given) {
  if (given instanceof Int32Array) return [given];
  if (typeof given?.[Symbol.iterator] !== 'function') throw new TypeError('numbers are integers, or several series of these');
  const values = ArrayBuffer.isView(given) ? given : taken(given);
  const isOfSeries = values.length > 0 && typeof values[0] === 'object' && values[0] !== null;
  return isOfSeries ? Array.from(values, numbersOf) : [numbersOf(values)];
}

function taken(iterable) {
  const values = [];
  for (const value of iterable) {
    if (values.length === MOST_NUMBERS) throw new LimitError(`a series has at most ${MOST_NUMBERS} numbers`);
    values.push(value);
  }
  return values;
}

/** An array of 32-bit integers. */
export function numbersOf(given) {
  if (given instanceof Int32Array) return given;
  if (typeof given?.[Symbol.iterator] !== 'function') throw new TypeError('a series is an iterable of integers');
  return Int32Array.from(Array.isArray(given) || ArrayBuffer.isView(given) ? given : taken(given), number);
}

function number(value) {
  if (!Number.isInteger(value)) throw new TypeError(`a number is an integer, not ${String(value)}`);
  if ((value | 0) !== value) throw new InputError(`the number ${value} does not fit 32 bits`);
  return value;
}
