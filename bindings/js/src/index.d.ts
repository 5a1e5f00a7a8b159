import type { Functions } from './raw.js';

/** The bytes of a file. */
export type Bytes = ArrayBuffer | ArrayBufferView;
/** One thing to learn, or several, one after the other. */
export type Several<T> = T | Iterable<T>;
export type Series = Iterable<number>;

/** What is learned. `name` stands in the model's records. */
export type TextSource = { text: Several<string | Bytes>; name?: string };
/** Texts, learned word by word. */
export type WordsSource = { words: Several<string | Bytes>; name?: string };
export type NumbersSource = { numbers: Series | Iterable<Series>; name?: string };
export type MusicSource = { midi: Several<Bytes>; name?: string } | { kern: Several<string | Bytes>; name?: string };
/** Files: what each holds, a text, numbers, MIDI or kern, is told by its content. */
export type FileSource = { file: Several<Bytes>; name?: string };
export type Source = TextSource | WordsSource | NumbersSource | MusicSource | FileSource;

export type Coding = 'difference' | 'difference2' | 'difference3' | 'plain';

export interface LearnOptions {
  /** The longest phrase, in items, 1 to 1024; the default quotes little of the source. */
  order?: number;
  /** Of numbers, what is learned: the steps from one to the next, or the numbers themselves. */
  coding?: Coding;
}

export interface ContinueOptions {
  /** Items; without it a continuation never ends. */
  count?: number;
  /** The same seed gives the same items. */
  seed?: number;
  /** At most so many items of context decide; they are then read one at a time. */
  order?: number;
  /** 'random' by what was counted (the default), 'best' the most frequent, 'middle' the middle one of the choice. */
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

/** A part of a model: a language of texts, the words above it, a kind of track. */
export interface SubMatrix {
  id: number;
  items: number;
  elements: number;
  order: number;
  names: string[];
}

/** What a model holds. `order`: the longest phrase; `items`: those learned. */
export interface Info {
  kind: Kind;
  tier: 'full' | 'medium';
  order: number;
  items: number;
  elements: number;
  subMatrices: SubMatrix[];
}

/** What was learned. Made by `learn` and `load`; closed by `close()`, or some time after the last reference has gone. */
export class Model<Value = any, Bulk = any, Start = any, Learned = any> {
  private constructor();
  readonly kind: Kind;
  readonly isOpen: boolean;
  readonly info: Info;
  /** Learns more of the same kind, and returns the model. */
  learn(source: Learned): this;
  /**
   * Goes on from `start`: a text, numbers or notes; without one from a new sentence, the end of the series learned last, or a new
   * tune. A later continuation of the model ends this one.
   */
  continue(start?: Start | null, options?: ContinueOptions): IterableIterator<Item<Value>>;
  /** As `continue`, all at once, without probabilities; 1000 items if no count is given. */
  generate(start?: Start | null, options?: ContinueOptions): Bulk;
  /** A MIDI file of so many notes, 200 if no count is given. */
  midi(count?: number, options?: Omit<ContinueOptions, 'count'> & { start?: Start }): Uint8Array;
  /** How probable it is that the model makes just these items; 0 where one never followed what is before it. */
  probability(sequence: Start): number;
  /** The bits of information that an item of the sequence is to the model, on average; infinite where one is impossible. */
  surprise(sequence: Start): number;
  /** The model as the bytes of a file, the same that the command and the other languages read. */
  save(): Uint8Array;
  /** Releases the model's memory; closing again does nothing. */
  close(): void;
}

export type TextModel = Model<string, string, string, TextSource | FileSource>;
export type WordsModel = Model<string, string, string, WordsSource>;
export type NumbersModel = Model<number, Int32Array, Series, NumbersSource | FileSource>;
export type MusicModel = Model<Note, Note[], Iterable<Note>, MusicSource | FileSource>;

export interface Zmatrix {
  readonly version: string;
  /** The memory that models and the library itself take, in bytes. */
  readonly usedBytes: number;
  /** The functions of the C headers that the layer needs, with no checks at all. */
  readonly raw: Functions;
  learn(source: TextSource, options?: LearnOptions): TextModel;
  learn(source: WordsSource, options?: LearnOptions): WordsModel;
  learn(source: NumbersSource, options?: LearnOptions): NumbersModel;
  learn(source: MusicSource, options?: LearnOptions): MusicModel;
  learn(source: FileSource, options?: LearnOptions): Model;
  /** The model that was saved. Of a damaged one, with `repair`, what is left of it. */
  load(saved: Bytes, options?: { repair?: boolean }): Model;
}

/**
 * Compiles the module and gives it memory of its own.
 * `wasm`: its bytes, a response with them, a compiled module, or where it lies; by default beside this file.
 */
export function createZmatrix(options?: { wasm?: Bytes | Response | Promise<Response> | WebAssembly.Module | URL | string }): Promise<Zmatrix>;

/** The library refused something or failed; the message says what, in the library's own words where it has any. */
export class ZmatrixError extends Error {}
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
