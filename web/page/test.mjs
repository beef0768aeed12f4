// node --test web/page/test.mjs: the built page in a browser, beside the command of the native build, which MORVANE names.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { mkdirSync, mkdtempSync, openSync, ftruncateSync, closeSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, before, test } from 'node:test';
import { fileURLToPath } from 'node:url';

import { chromium } from 'playwright-core';

const path = (relative) => fileURLToPath(new URL(relative, import.meta.url));
const command = process.env.MORVANE ?? path('../../build/release/tool/morvane');
const address = new URL('../../build/wasm/web/page/index.html', import.meta.url).href;
const executablePath = process.env.BROWSER_FOR_TESTS ?? '/usr/bin/chromium-headless-shell';
const pictures = path('../../out/');
const directory = mkdtempSync(join(tmpdir(), 'morvane-page-'));
const at = (name) => join(directory, name);
const morvane = (...words) => execFileSync(command, words, { stdio: 'pipe' });

let browser;
let page;

before(async () => {
  mkdirSync(pictures, { recursive: true });
  browser = await chromium.launch({ executablePath, args: ['--no-sandbox'] });
});
after(async () => {
  await browser.close();
  rmSync(directory, { recursive: true });
});

async function fresh({ hash = '', scheme = 'light', width = 1360, height = 860 } = {}) {
  await page?.context().close();
  page = await browser.newPage({ viewport: { width, height }, colorScheme: scheme });
  page.on('pageerror', (error) => assert.fail(error));
  page.setDefaultTimeout(15_000);
  await page.goto(address + hash);
  await page.waitForSelector('body[data-ready]');
}

const shownCount = () => page.evaluate(() => Number(document.body.dataset.shown ?? 0));
const shownAfter = (count) => page.waitForFunction((n) => Number(document.body.dataset.shown ?? 0) > n, count);
const message = () => page.evaluate(() => (document.getElementById('message').hidden ? '' : document.getElementById('message').textContent));

async function open(files, input = '#files') {
  const count = await shownCount();
  await page.setInputFiles(input, files);
  await shownAfter(count);
}

// What a key or a click changes in the picture.
async function shownBy(act) {
  const count = await shownCount();
  await act();
  await shownAfter(count);
}

/** The picture at 1:1, as the canvas has it. */
const pixels = (width, height) =>
  page.evaluate(
    async ([w, h]) => {
      document.getElementById('one').click();
      const view = document.getElementById('view');
      const canvas = document.getElementById('canvas');
      const [x, y] = [Math.round((view.clientWidth - w) / 2), Math.round((view.clientHeight - h) / 2)];
      const { data } = canvas.getContext('2d').getImageData(x, y, w, h);
      return [...data];
    },
    [width, height],
  );

/** A PNG of the command as RGB with alpha, which it reads as bgra or bgrx. */
function pixelsOfPng(file) {
  const read = (to) => morvane('convert', file, '-t', to, '-');
  return [...read('rgba')];
}

const size = '64x12';
const formats = morvane('formats').toString().split('\n').slice(1).map((line) => line.split(' ')[0]).filter((name) => name !== '');

test('every format shows the pixels of the command', async () => {
  await fresh();
  for (const format of formats) {
    const file = at(`bars_${size}.${format}.raw`);
    morvane('pattern', 'bars', '-f', format, '-s', size, file);
    await fresh({ hash: `#format=${format}&size=${size}` });
    await open(file);
    const chroma = /^cb_?cr/.test(format);
    const expected = at('expected.png');
    morvane('show', file, expected, '-f', format, '-s', size, ...(chroma ? ['--plane', 'Cb'] : []));
    if (chroma) continue;
    assert.deepEqual(await pixels(64, 12), pixelsOfPng(expected), format);
  }
});

test('formats and sizes are guessed from names', async () => {
  const wrong = [];
  for (const format of ['uyvy', 'v210', 'nv12', 'p010', 'rgbaf16', 'r210', 'y_u_v_a_444_12u16']) {
    const file = at(`clip_320x180_${format}.raw`);
    morvane('pattern', 'key', '-f', format, '-s', '320x180', '--frames', '2', file);
    await fresh();
    await open(file);
    const facts = await page.inputValue('#format');
    const { name } = JSON.parse(morvane('formats', format, '--json'))[0];
    if (facts !== name) wrong.push(`${format}: ${facts}`);
    assert.equal(await page.inputValue('#width'), '320');
  }
  assert.deepEqual(wrong, []);
});

test('files without a name are guessed from their content', async () => {
  const photo = path('../../examples/pictures/cat.png');
  const raw = at('photo');
  for (const [format, width, height] of [['uyvy', 320, 240], ['y_uv_420', 352, 288], ['v210', 320, 240], ['y_u_v_420', 320, 240]]) {
    morvane('convert', photo, '-t', format, '--crop', '320x240', raw);
    if (width === 352) morvane('pattern', 'ramp', '-f', format, '-s', '352x288', raw);
    await fresh();
    await open(raw);
    assert.deepEqual([await page.inputValue('#format'), await page.inputValue('#width'), await page.inputValue('#height')], [format, `${width}`, `${height}`]);
  }
  await page.waitForSelector('#guess-list button:nth-child(3)');
  await page.screenshot({ path: join(pictures, 'page_guesses.png') });
  const third = page.locator('#guess-list button').nth(2);
  const label = await third.textContent();
  await shownBy(() => third.click());
  assert.ok(label.startsWith(await page.inputValue('#format')));
});

test('code values stand under the pointer and in the pixels', async () => {
  const file = at('value_8x4.v210');
  morvane('pattern', 'bars', '-f', 'v210', '-s', '8x4', file);
  await fresh();
  await open(file);
  const view = await page.locator('#view').boundingBox();
  await page.mouse.move(view.x + view.width / 2 + 1, view.y + view.height / 2 + 1);
  await page.waitForSelector('#position[data-at="4,2"]');
  const values = () => page.locator('#values tr').evaluateAll((rows) => rows.map((r) => [r.cells[0].textContent, r.cells[1].textContent]));
  // Six pixels in four words: Cb0 Y0 Cr0, Y1 Cb2 Y2, Cr2 Y3 Cb4, Y4 Cr4 Y5.
  const word = (i) => readFileSync(file).readUInt32LE(128 * 2 + 4 * i);
  const expected = [['Cb', (word(2) >>> 20) & 1023], ['Y', word(3) & 1023], ['Cr', (word(3) >>> 10) & 1023]];
  assert.deepEqual(await values(), expected.map(([name, value]) => [name, `${value}`]));
  await page.screenshot({ path: join(pictures, 'page_pixels.png') });
});
