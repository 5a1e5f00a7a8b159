// Measures WebAssembly beside the native library built from the same sources.
//   scripts/js --bench [TEXT]
import { execFileSync } from 'node:child_process';
import { readFileSync } from 'node:fs';
import { createZmatrix } from 'zmatrix';

const COUNT = 400000;
const ORDER = 8;
const TIMES = 3; // runs, of which the fastest counts, since other programs can only slow a run down

const [, , native, text] = process.argv;
const zmatrix = await createZmatrix();
const source = readFileSync(text, 'latin1');

function seconds(work) {
  const begin = process.cpuUsage().user;
  const result = work();
  return [(process.cpuUsage().user - begin) / 1e6, result];
}

function measured() {
  const [learning, model] = seconds(() => zmatrix.learn({ text: source }, { order: ORDER }));
  const [bulk] = seconds(() => model.generate(source.slice(0, 16), { count: COUNT, seed: 1 }));
  const [single] = seconds(() => { for (const _ of model.continue(source.slice(0, 16), { count: COUNT, seed: 1 })); });
  model.close();
  return [learning, bulk, single];
}

const runs = (run) => Array.from({ length: TIMES }, run).reduce((best, times) => best.map((time, at) => Math.min(time, times[at])));
const ofNative = runs(() => execFileSync(native, [text, COUNT, ORDER], { encoding: 'utf8' }).split(' ').map(Number));
const own = runs(measured);

const row = (what, time, other) => console.log(
  `${what.padEnd(22)} ${time.toFixed(2)} s, native ${other.toFixed(2)} s: ${(time / other).toFixed(2)} times`);
console.log(`${text}: ${source.length} characters, phrases of ${ORDER}, ${COUNT} items`);
row('learning', own[0], ofNative[0]);
row('generating in bulk', own[1], ofNative[1]);
row('generating one by one', own[2], ofNative[1]);
console.log(`${Math.round(COUNT / own[1]).toLocaleString('en')} items a second in bulk, ${Math.round(COUNT / own[2]).toLocaleString('en')} one by one`);
