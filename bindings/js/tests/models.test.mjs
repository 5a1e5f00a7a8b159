// Learning, continuing, measuring, and saving.
import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';
import { createZmatrix } from 'zmatrix';
import { example, STEPS, values, zmatrix } from './support.mjs';

const SEEDS = new URL('seeds.json', import.meta.url); // results that all languages share; copied here by scripts/js

function sourceOf({ name, files, numbers, words }) {
  const contents = files?.map(example);
  if (words) return { words: contents };
  return name === 'music' ? { kern: contents } : contents ? { file: contents } : { numbers };
}

const plain = (value) => (typeof value === 'object' ? [value.pitch, value.start, value.duration] : value);

for (const { name, items, start, count, seed, ...source } of JSON.parse(readFileSync(SEEDS, 'utf8'))) {
  test(`seeds give the items that every language gives: ${name}`, () => {
    const model = zmatrix.learn(sourceOf({ name, ...source }));
    for (const one of [model, zmatrix.load(model.save())]) {
      const given = values(one.continue(start, { count, seed })).map(plain);
      assert.deepEqual(Array.isArray(items) ? given : given.join(''), items);
      one.close();
    }
  });
}

const harbour = zmatrix.learn({ text: example('harbour.txt') });

test('items carry their probability, and all at once gives what one by one gives', () => {
  const items = Array.from(harbour.continue('The ', { count: 6000, seed: 5 }));
  assert.ok(items.every(({ value, probability }) => [...value].length === 1 && probability > 0 && probability <= 1));
  assert.equal(harbour.generate('The ', { count: 6000, seed: 5 }), values(items).join(''));
  const numbers = zmatrix.learn({ numbers: STEPS });
  assert.deepEqual([...numbers.generate([100, 101, 103], { count: 50, seed: 3 })],
                   values(numbers.continue([100, 101, 103], { count: 50, seed: 3 })));
});

test('an order beyond the learned one changes nothing and a small one forgets', () => {
  assert.equal(harbour.generate('The ', { count: 200, seed: 2, order: 50 }), harbour.generate('The ', { count: 200, seed: 2 }));
  const written = zmatrix.learn({ text: 'abcabdabcabd' }, { order: 4 }).generate('a', { count: 400, seed: 1, order: 1 });
  assert.ok(written.includes('bc') && written.includes('bd'));
});

test('probability is the product of shares and surprise its bits', () => {
  const coin = zmatrix.learn({ numbers: Array(50).fill([1, 2, 1, 3]).flat() }, { coding: 'plain', order: 2 });
  assert.ok(Math.abs(-Math.log2(coin.probability([1, 2, 1, 3])) - 4 * coin.surprise([1, 2, 1, 3])) < 1e-9);
  assert.ok(Math.abs(coin.probability([1, 2, 1, 2]) - 0.125) < 0.01);
  assert.deepEqual([coin.probability([2, 2]), coin.surprise([9]), coin.surprise([])], [0, Infinity, 0]);
});

test('a text comes back in its characters', () => {
  const text = 'Ünï “quotes” 日本 \u{1F600} \x85 … '.repeat(3);
  const model = zmatrix.learn({ text }, { order: 20 });
  assert.ok([...model.generate('Ü', { count: 200, seed: 1 })].every((character) => text.includes(character) || character === '\n'));
  assert.ok(model.generate('Ünï “quotes” ', { count: 30, seed: 1 }).includes('日本'));
});

test('texts, bytes, arrays, iterables and files are told apart', () => {
  const kindOf = (source) => zmatrix.learn(source).kind;
  assert.deepEqual(['canon.krn', 'tide.mid', 'primes.txt', 'muehle.txt'].map((name) => kindOf({ file: example(name) })),
                   ['music', 'music', 'numbers', 'text']);
  const items = (source) => zmatrix.learn(source).info.items;
  const series = items({ numbers: STEPS });
  assert.deepEqual([Int32Array.from(STEPS), Float64Array.from(STEPS), new Set(STEPS), [STEPS]].map((numbers) => items({ numbers })),
                   [series, series, series, series]);
  assert.ok(items({ text: ['One text. ', Uint8Array.of(0xff, 0xfe, 0x41, 0, 0x62, 0)] }) > items({ text: 'One text. ' }));
  assert.deepEqual(zmatrix.learn({ text: 'Hello there.', name: 'greeting' }).info.subMatrices[0].names, ['greeting']);
});

test('music goes on from notes and is written as MIDI', () => {
  const tunes = zmatrix.learn({ kern: [example('canon.krn'), example('song.krn')] });
  const start = tunes.generate(undefined, { count: 4, seed: 1 });
  assert.equal(tunes.generate(start, { count: 8, seed: 1 }).length, 8);
  assert.ok(tunes.probability(start) > 0);
  assert.equal(zmatrix.learn({ midi: tunes.midi(40, { seed: 1 }) }).kind, 'music');
});

test('learning on adds to the model', () => {
  const model = zmatrix.learn({ text: 'A first sentence stands here.' });
  const before = model.info.items;
  assert.ok(model.learn({ text: 'A second sentence stands here.' }).info.items > before);
});

test('another instance has memory of its own and gives the same', async () => {
  const wasm = readFileSync(new URL(import.meta.resolve?.('zmatrix/zmatrix.wasm') ?? '../node_modules/zmatrix/zmatrix.wasm', import.meta.url));
  const other = await createZmatrix({ wasm });
  assert.equal(other.load(harbour.save()).generate('The ', { count: 50, seed: 1 }), harbour.generate('The ', { count: 50, seed: 1 }));
  await assert.rejects(createZmatrix({ wasm: Uint8Array.of(1, 2, 3) }), WebAssembly.CompileError);
});
