// Runs the code of docs/javascript.md in order and compares the output with the page.
import assert from 'node:assert/strict';
import { readFileSync, writeFileSync } from 'node:fs';
import { test } from 'node:test';
import { format } from 'node:util';

test('the page does what it says', async () => {
  const page = readFileSync(new URL('javascript.md', import.meta.url), 'utf8');
  const blocks = [...page.matchAll(/```js\n(.*?)```(?:\s*```text\n(.*?)```)?/gs)];
  const code = blocks.map(([, code], at) => `${code}\nblock(${at});`).join('\n');
  const program = new URL('page.mjs', import.meta.url);
  writeFileSync(program, `const block = (at) => globalThis.printedBlock(at);\n${code}`);
  const printed = [];
  let text = '';
  const { log } = console;
  globalThis.printedBlock = (at) => { printed[at] = text; text = ''; };
  console.log = (...values) => { text += `${format(...values)}\n`; };
  try {
    await import(program);
  } finally {
    console.log = log;
  }
  const told = blocks.filter(([, , expected]) => expected !== undefined);
  assert.ok(told.length >= 4);
  blocks.forEach(([, , expected], at) => expected === undefined || assert.equal(printed[at], expected));
});
