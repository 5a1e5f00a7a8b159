// Tests the example page in a browser, if one is installed.
import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import { existsSync, mkdtempSync, readFileSync, rmSync } from 'node:fs';
import { createServer } from 'node:http';
import { tmpdir } from 'node:os';
import { test } from 'node:test';

const BROWSER = '/usr/bin/chromium';
const TYPES = { html: 'text/html', js: 'text/javascript', wasm: 'application/wasm', txt: 'text/plain' };

// Added to the page: sends the page's output when it is no longer loading.
const REPORT = `<script type="module">
  const look = () => document.getElementById('state').textContent === 'loading'
    ? setTimeout(look, 20) : fetch('/shown', { method: 'POST', body: document.body.innerHTML });
  look();
</script>`;

function serve(request, response) {
  const path = request.url.replace('/build/js/package/', '/node_modules/zmatrix/');
  const file = new URL(`..${path}`, import.meta.url);
  response.writeHead(existsSync(file) ? 200 : 404, { 'Content-Type': TYPES[path.split('.').pop()] ?? 'text/plain' });
  response.write(existsSync(file) ? readFileSync(file) : '');
  response.end(path.endsWith('.html') ? REPORT : '');
}

/** The page's output, or the error if the browser can't be started. */
function shownBy(server) {
  return new Promise((resolve, reject) => {
    server.on('request', (request, response) => {
      if (request.method !== 'POST') return serve(request, response);
      let body = '';
      request.on('data', (part) => { body += part; }).on('end', () => { response.end(); resolve(body); });
    });
    server.on('error', reject);
  });
}

test('the example page learns and continues', { skip: !existsSync(BROWSER) && 'no browser', timeout: 120000 }, async () => {
  const profile = mkdtempSync(`${tmpdir()}/zmatrix-browser-`);
  const server = createServer();
  const shown = shownBy(server);
  await new Promise((ready) => server.listen(0, '127.0.0.1', ready));
  const page = `http://127.0.0.1:${server.address().port}/examples/browser.html`;
  const flags = ['--headless', '--no-sandbox', '--disable-gpu', `--user-data-dir=${profile}`];
  const browser = spawn(BROWSER, [...flags, page], { stdio: 'ignore' });
  const gone = new Promise((resolve) => browser.on('close', resolve));
  try {
    const html = await Promise.race([shown, gone.then(() => assert.fail('the browser ended before the page was done'))]);
    assert.match(html, /16671 letters learned/);
    assert.equal(html.match(/<span style="--probability/g).length, 600);
  } finally {
    browser.kill();
    await gone;
    server.close();
    server.closeAllConnections?.();
    rmSync(profile, { recursive: true, force: true, maxRetries: 10 });
  }
});
