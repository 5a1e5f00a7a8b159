// Wrong use raises exceptions; nothing crashes or leaks.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { setImmediate as turn } from 'node:timers/promises';
import { ClosedError, DamagedError, InputError, LimitError, ReplacedError, ZmatrixError, createZmatrix } from 'zmatrix';
import { example, STEPS, zmatrix } from './support.mjs';

const harbour = zmatrix.learn({ text: example('harbour.txt') });

test('what holds nothing to learn is refused', () => {
  const empty = [{ text: '' }, { text: '  ' }, { text: [] }, { numbers: [] }, { numbers: [2 ** 31] }, { file: new Uint8Array(2) }];
  for (const source of [...empty, { midi: example('harbour.txt') }, { kern: '' }]) {
    assert.throws(() => zmatrix.learn(source), ZmatrixError, JSON.stringify(source));
  }
  const wrong = [undefined, null, 'text', {}, { text: 5 }, { text: [5] }, { numbers: [1.5] }, { numbers: ['1'] }, { numbers: [1n] }, { midi: 'x' }];
  for (const source of [...wrong, { text: 'a', numbers: [1] }, { numbers: 'abc' }]) assert.throws(() => zmatrix.learn(source), TypeError);
});

test('wrong options are refused', () => {
  for (const options of [{ method: 'worst' }, { order: 0 }, { count: -1 }, { count: 0.5 }, { seed: 'a' }, { seed: 1.5 }]) {
    assert.throws(() => harbour.continue('The ', options), RangeError);
  }
  for (const options of [{ order: 0 }, { order: 5000 }, { coding: 'odd' }, { coding: 'toString' }]) {
    assert.throws(() => zmatrix.learn({ numbers: [1, 2, 3] }, options), RangeError);
  }
  assert.throws(() => harbour.generate('The ', { count: Infinity }), RangeError);
});

test('a closed model and another kind are refused', () => {
  const model = zmatrix.learn({ numbers: [1, 2, 3, 5, 8] });
  assert.throws(() => model.learn({ text: 'a text' }), InputError);
  assert.throws(() => model.midi(), InputError);
  for (const start of [['one'], 5, 'text']) assert.throws(() => model.continue(start), TypeError);
  for (const start of [5, ['notes']]) assert.throws(() => harbour.surprise(start), TypeError);
  const pending = model.continue();
  pending.next();
  model.close();
  model.close();
  const uses = [() => model.info, () => model.continue(), () => model.learn({ numbers: [1] }), () => model.save(), () => model.surprise([1])];
  for (const use of [...uses, () => { for (let at = 0; at < 1000; at++) pending.next(); }]) assert.throws(use, ClosedError);
});

test('a later continuation ends an earlier one', () => {
  const first = harbour.continue('The ', { seed: 1 });
  first.next();
  harbour.continue('The ', { seed: 2 }).next();
  assert.throws(() => { for (let at = 0; at < 1000; at++) first.next(); }, ReplacedError);
});

test('damaged models are told', () => {
  const whole = harbour.save();
  for (const length of [0, 10, whole.length >> 1]) assert.throws(() => zmatrix.load(whole.slice(0, length)), InputError);
  const half = whole.slice(0, whole.length >> 1);
  assert.throws(() => zmatrix.load(half), DamagedError);
  assert.equal(zmatrix.load(half, { repair: true }).kind, 'text');
  assert.throws(() => zmatrix.load('path'), TypeError);
  const small = zmatrix.learn({ words: 'A cat sat. A dog ran.' }).save();
  for (let at = 0; at < small.length; at += 3) {
    const bytes = small.slice();
    bytes[at] ^= 1 << at % 8;
    try {
      zmatrix.load(bytes, { repair: true }).close();
    } catch (error) {
      assert.ok(error instanceof ZmatrixError, `${error}`);
    }
  }
});

test('what memory has no room for is refused, and the rest goes on', async () => {
  const own = await createZmatrix();
  const model = own.learn({ numbers: STEPS });
  assert.throws(() => own.learn({ numbers: new Int32Array(2 ** 29) }), LimitError);
  assert.throws(() => own.learn({ numbers: Int32Array.from({ length: 6e6 }, (_, at) => (at * 7919) % 1000003) }, { order: 64 }), ZmatrixError);
  assert.deepEqual([...model.generate([100, 101, 103], { count: 3, seed: 7 })], [104, 106, 107]);
});

test('ten thousand models leave nothing behind', async () => {
  const use = (count, end) => {
    for (let seed = 0; seed < count; seed++) {
      const model = zmatrix.learn(seed % 50 === 0 ? { words: 'A cat sat. A dog ran.' } : { numbers: STEPS }, { order: 3 });
      model.generate(undefined, { count: 3, seed });
      model.continue().next();
      if (seed % 20 === 0) zmatrix.load(model.save()).close();
      assert.throws(() => model.learn({ midi: new Uint8Array(3) }), InputError);
      end(model);
    }
  };
  use(100, (model) => model.close());
  const before = zmatrix.usedBytes;
  use(10000, (model) => model.close());
  assert.equal(zmatrix.usedBytes, before);
  use(200, () => {}); // not closed: released by the FinalizationRegistry
  for (let tries = 0; tries < 50 && zmatrix.usedBytes > before; tries++) {
    globalThis.gc();
    await turn();
  }
  assert.equal(zmatrix.usedBytes, before);
});
