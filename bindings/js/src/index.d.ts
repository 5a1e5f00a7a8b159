import type { Functions } from './raw.js';

/** The bytes of a file. */
export type Bytes = ArrayBuffer | ArrayBufferView;
/** One input, or several that are learned one after the other. */
export type Several<T> = T | Iterable<T>;
export type Series = Iterable<number>;

/** The input of `learn`. `name` is stored in the model's records. */
export type TextSource = { text: Several<string | Bytes>; name?: string };
/** Texts, learned word by word. */
export type WordsSource = { words: Several<string | Bytes>; name?: string };
export type NumbersSource = { numbers: Series | Iterable<Series>; name?: string };
export type MusicSource = { midi: Several<Bytes>; name?: string } | { kern: Several<string | Bytes>; name?: string };
/** Files whose kind (text, numbers, MIDI or kern) is detected from their content. */
export type FileSource = { file: Several<Bytes>; name?: string };
export type Source = TextSource | WordsSource | NumbersSource | MusicSource | FileSource;

export type Coding = 'difference' | 'difference2' | 'difference3' | 'plain';

export interface LearnOptions {
  /** The longest phrase, in items, 1 to 1024; the default quotes little of the source. */
  order?: number;
  /** What is learned of numbers: their differences, or the numbers themselves. */
  coding?: Coding;
}

export interface ContinueOptions {
  /** The number of items; without it a continuation never ends. */
  count?: number;
  /** The same seed gives the same items. */
  seed?: number;
  /** The largest number of context items to use; items are then read one at a time. */
  order?: number;
  /** 'random' (the default) draws by the counts, 'best' takes the most frequent item, 'middle' the middle one of the candidates. */
  method?: 'random' | 'best' | 'middle';
}

/** An item of a continuation, and the probability with which it was chosen. */
export interface Item<Value> {
  value: Value;
  probability: number;
}

/** A note: pitch as a MIDI note number, start and duration in quarter notes, sound as a class of General MIDI sounds, 0 for none. */
export interface Note {
  pitch: number;
  start: number;
  duration: number;
  sound?: number;
}

export type Kind = 'text' | 'words' | 'numbers' | 'music';

/** A sub-matrix of a model: a language of texts, the words above it, or a kind of track. */
export interface SubMatrix {
  id: number;
  items: number;
  elements: number;
  order: number;
  names: string[];
}

/** The contents of a model. `order`: the longest phrase; `items`: the number learned. */
export interface Info {
  kind: Kind;
  tier: 'full' | 'medium';
  order: number;
  items: number;
  elements: number;
  subMatrices: SubMatrix[];
}

/** A model. Made by `learn` and `load`; closed by `close()`, or some time after the last reference is gone. */
export class Model<Value = any, Bulk = any, Start = any, Learned = any> {
  private constructor();
  readonly kind: Kind;
  readonly isOpen: boolean;
  readonly info: Info;
  /** Learns more of the same kind, and returns the model. */
  learn(source: Learned): this;
  /**
   * Generates items after `start`: a text, numbers or notes. Without a start it begins a new sentence, continues the series learned
   * last, or begins a new tune. A later continuation of the model ends this one.
   */
  continue(start?: Start | null, options?: ContinueOptions): IterableIterator<Item<Value>>;
  /** As `continue`, but all at once and without probabilities; the default count is 1000. */
  generate(start?: Start | null, options?: ContinueOptions): Bulk;
  /** A MIDI file of `count` notes, by default 200. */
  midi(count?: number, options?: Omit<ContinueOptions, 'count'> & { start?: Start }): Uint8Array;
  /** The probability that the model generates exactly these items; 0 if an item never followed its context. */
  probability(sequence: Start): number;
  /** The average information of an item of the sequence in bits; infinite if an item never followed its context. */
  surprise(sequence: Start): number;
  /** The model as the bytes of a model file, which the command and the other languages read too. */
  save(): Uint8Array;
  /** Releases the model's memory; closing it again does nothing. */
  close(): void;
}

export type TextModel = Model<string, string, string, TextSource | FileSource>;
export type WordsModel = Model<string, string, string, WordsSource>;
export type NumbersModel = Model<number, Int32Array, Series, NumbersSource | FileSource>;
export type MusicModel = Model<Note, Note[], Iterable<Note>, MusicSource | FileSource>;

export interface Zmatrix {
  readonly version: string;
  /** The memory that models and the library use, in bytes. */
  readonly usedBytes: number;
  /** The C functions that the layer uses, without any checks. */
  readonly raw: Functions;
  learn(source: TextSource, options?: LearnOptions): TextModel;
  learn(source: WordsSource, options?: LearnOptions): WordsModel;
  learn(source: NumbersSource, options?: LearnOptions): NumbersModel;
  learn(source: MusicSource, options?: LearnOptions): MusicModel;
  learn(source: FileSource, options?: LearnOptions): Model;
  /** Loads a saved model. With `repair` the undamaged part of a damaged model is loaded. */
  load(saved: Bytes, options?: { repair?: boolean }): Model;
}

/**
 * Compiles the module and allocates its memory.
 * `wasm`: the module's bytes, a response, a compiled module, or its URL; by default the file beside this one.
 */
export function createZmatrix(options?: { wasm?: Bytes | Response | Promise<Response> | WebAssembly.Module | URL | string }): Promise<Zmatrix>;

/** The library refused a call or failed. The message is the library's, if there is one. */
export class ZmatrixError extends Error {}
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
