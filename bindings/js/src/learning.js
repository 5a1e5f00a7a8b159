// Setting up a matrix for a kind of input, and learning.
import { InputError, LimitError } from './errors.js';
import { FULL, Handle, MEDIUM } from './handle.js';
import * as raw from './raw.js';
import { KIND_OF_SOURCE } from './sources.js';
import { itemsOf } from './text.js';

const LONG_TEXT = 256 * 1024; // characters; longer texts get longer phrases, since more contexts have several successors
const CODINGS = { plain: 0, difference: 1, difference2: 2, difference3: 3 };
const GRID = 16; // music: steps per whole note
const MUSIC_IDS = 64; // sub-matrices; each meter, texture and sound needs one
const WORD_IDS = 8; // letters and words of German, English, unknown language, and one more
const LONGEST_WORD = 16;
const HIGHEST_CODE_POINT = 0x10ffff;
const LONGEST_ORDER = 1024;
const KEPT_OF_SERIES = 64;

/** A matrix set up for the sources, and the kind of its model. */
export function prepared(library, sources, { order, coding = 'difference' }) {
  if (sources.length === 0) throw new InputError('nothing to learn');
  if (order !== undefined && !(Number.isInteger(order) && order >= 1 && order <= LONGEST_ORDER)) {
    throw new RangeError(`order is 1 to ${LONGEST_ORDER}`);
  }
  if (!Object.hasOwn(CODINGS, coding)) throw new RangeError(`coding is one of ${Object.keys(CODINGS).join(', ')}, not ${String(coding)}`);
  const kind = KIND_OF_SOURCE[sources[0].key];
  const handle = new Handle(library, kind === 'words' ? FULL : MEDIUM);
  const length = sources.reduce((sum, { content }) => sum + (typeof content === 'string' ? content.length : 0), 0);
  setUp[kind](handle, order, length >= LONG_TEXT, coding);
  return { kind, handle };
}

const setUp = {
  text(handle, order, isLong) {
    setUpLetters(handle, order ?? (isLong ? 10 : 8));
  },

  words(handle, order, isLong) {
    handle.call('s_setMaxNumberOfMatrices', WORD_IDS);
    handle.call('s_setMatrixAILevel', 1);
    handle.call('s_setGlobalSymbolDefaultMatrixPropertiesForSymbols');
    handle.call('s_setGlobalSymbolMaxPhraseLengthForUpdateWithSequence', order ?? (isLong ? 3 : 2));
    setUpLetters(handle, LONGEST_WORD);
  },

  numbers(handle, order, _, coding) {
    handle.call('s_setGlobalDefaultMatrixPropertiesForIntegerSeries');
    handle.call('s_setGlobalPreProcessingType', CODINGS[coding]);
    handle.call('s_setGlobalMaxPhraseLengthForUpdateWithSequence', order ?? 8);
    handle.select(0);
    handle.call('s_applyGlobalMatrixProperties');
  },

  music(handle, order) {
    handle.call('s_setMaxNumberOfMatrices', MUSIC_IDS);
    setUpMusic(handle, order ?? 8);
  },
};

function setUpLetters(handle, order) {
  handle.call('s_setGlobalDefaultMatrixPropertiesForANSIText');
  handle.call('s_setGlobalMaxPhraseLengthForUpdateWithSequence', order);
}

/** Called before each file, since a feed may leave the settings changed. */
function setUpMusic(handle, order) {
  handle.call('s_setGlobalDefaultMatrixPropertiesForMIDIElementsTriple_NDMT');
  handle.call('s_setGlobalMaxPhraseLengthForUpdateWithSequence', order);
  handle.call('s_setGlobalMidiNoteOnQuantization', GRID);
  handle.call('s_setGlobalMidiDurationQuantization', GRID);
  handle.call('s_setGlobalMidiTrackAnalyze', 2);
  handle.select(0);
  handle.call('s_setMidiNoteOnQuantization', GRID);
  handle.call('s_setMidiDurationQuantization', GRID);
  handle.call('s_setGlobalAddUpdateInfo', 1);
}

export function learnSource(handle, kind, source) {
  if (source.content.length === 0) return;
  handle.memory.scratch((scratch) => {
    if (kind === 'numbers') learnNumbers(handle, source, scratch);
    else if (kind === 'music') learnMusic(handle, source, scratch);
    else learnText(handle, kind, source, scratch);
  });
}

function check(handle, result, name) {
  if (result < 1) throw new LimitError(`the matrix could not take all of ${name}: ${handle.library.lastMessage()}`);
}

function learnText(handle, kind, { content, name }, scratch) {
  if (content.trim() === '') return;
  const values = itemsOf(content), items = scratch.ints(values);
  if (handle.call('zq_prepareMatrixForText', items, values.length, scratch.text(name)) < 0) throw new LimitError(handle.library.lastMessage());
  const highest = values.reduce((high, item) => (item > high ? item : high), 0);
  if (highest > handle.call('s_getMaximalMatrixIndex')) handle.call('s_setMaximalMatrixIndex', HIGHEST_CODE_POINT);
  if (kind === 'words') {
    const result = handle.call('zq_updateMatrixWithWordsOfLongANSISequence', items, values.length, 0);
    check(handle, result || 1, name); // 0: all words are too long
  } else {
    check(handle, handle.call('s_updateMatrixWithLongANSISequence', items, values.length), name);
  }
}

function learnNumbers(handle, { content, name }, scratch) {
  const nameOfSeries = scratch.text(name);
  handle.select(0);
  handle.call('s_setNameOfUpdateFile', nameOfSeries);
  handle.call('s_addNameOfUpdateFile', nameOfSeries);
  check(handle, handle.call('s_updateMatrixWithLongINTSequence', scratch.ints(content), content.length), name);
  handle.setKernel(content.slice(-KEPT_OF_SERIES), 1);
}

function learnMusic(handle, { key, content, name }, scratch) {
  const { raw: functions } = handle.library;
  setUpMusic(handle, handle.call('s_getGlobalMaxPhraseLengthForUpdateWithSequence'));
  const bytes = scratch.bytes(content);
  const score = key === 'midi' ? functions.zq_createScoreFromMidiData(bytes, content.length)
                               : functions.zq_createScoreFromKernData(bytes, content.length, 0);
  const report = score === 0 ? 0 : handle.call('zq_updateMatrixWithScore', score, scratch.text(name), 0);
  functions.zq_deleteScore(score);
  if (report === 0) throw new LimitError('out of memory');
  const { leftOut } = new raw.zq_ScoreFeedReport(handle.memory, report);
  functions.zq_deleteScoreFeedReport(report);
  if (leftOut[raw.zq_ScoreNoSubMatrix] > 0) {
    throw new LimitError(`${name} needs more sub-matrices than the model has, one for each meter, kind and sound`);
  }
  if (leftOut[raw.zq_ScoreNotTaken] > 0) throw new LimitError(`the matrix could not take all of ${name}`);
}

const MUSIC_TYPES = new Set([raw.ZQMatrixTypeMIDINoteAndQuanta, raw.ZQMatrixTypeMIDITriple_NDMT, raw.ZQMatrixTypeMIDIGMQuadruple_NDMTS]);

/** The kind of a loaded matrix. */
export function kindOf(handle) {
  const types = handle.occupiedIds().map((id) => handle.record(id).matrixType);
  if (types.includes(raw.ZQMatrixTypeANSIText)) return handle.tier === FULL && handle.call('s_getMatrixAILevel') === 1 ? 'words' : 'text';
  return types.some((type) => MUSIC_TYPES.has(type)) ? 'music' : 'numbers';
}
