// The example page does its work in a browser, if the machine has one.
import assert from 'node:assert/strict';
import { execFile } from 'node:child_process';
import { existsSync, readFileSync } from 'node:fs';
import { createServer } from 'node:http';
import { test } from 'node:test';
import { promisify } from 'node:util';

const BROWSER = '/usr/bin/chromium';
const TYPES = { html: 'text/html', js: 'text/javascript', wasm: 'application/wasm', txt: 'text/plain' };

function serve(request, response) {
  const path = request.url.replace('/build/js/package/', '/node_modules/zmatrix/');
  const file = new URL(`..${path}`, import.meta.url);
  response.writeHead(existsSync(file) ? 200 : 404, { 'Content-Type': TYPES[path.split('.').pop()] ?? 'text/plain' });
  response.end(existsSync(file) ? readFileSync(file) : '');
}

test('the example page learns and continues', { skip: !existsSync(BROWSER) && 'no browser', timeout: 120000 }, async () => {
  const server = createServer(serve);
  await new Promise((ready) => server.listen(0, '127.0.0.1', ready));
  const page = `http://127.0.0.1:${server.address().port}/examples/browser.html`;
  try {
    const flags = ['--headless', '--no-sandbox', '--disable-gpu', '--virtual-time-budget=20000', '--dump-dom'];
    const { stdout } = await promisify(execFile)(BROWSER, [...flags, page], { maxBuffer: 1 << 24 });
    assert.match(stdout, /16671 letters learned/);
    assert.equal(stdout.match(/<span style="--probability/g).length, 600);
  } finally {
    server.close();
  }
});
