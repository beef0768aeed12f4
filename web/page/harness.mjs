// The built page in a browser, beside the command of the native build, which MORVANE names.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { mkdirSync, mkdtempSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, before } from 'node:test';
import { fileURLToPath } from 'node:url';

import { chromium } from 'playwright-core';

export const path = (relative) => fileURLToPath(new URL(relative, import.meta.url));
export const command = process.env.MORVANE ?? path('../../build/release/tool/morvane');
export const address = new URL('../../build/wasm/web/page/index.html', import.meta.url).href;
export const executablePath = process.env.BROWSER_FOR_TESTS ?? '/usr/bin/chromium-headless-shell';
export const pictures = path('../../out/');
export const directory = mkdtempSync(join(tmpdir(), 'morvane-page-'));
export const at = (name) => join(directory, name);
export const morvane = (...words) => execFileSync(command, words, { stdio: 'pipe' });

let browser;
export let page;

before(async () => {
  mkdirSync(pictures, { recursive: true });
  browser = await chromium.launch({ executablePath, args: ['--no-sandbox'] });
});
after(async () => {
  await browser.close();
  rmSync(directory, { recursive: true });
});

export async function fresh({ hash = '', scheme = 'light', width = 1360, height = 860 } = {}) {
  await page?.context().close();
  page = await browser.newPage({ viewport: { width, height }, colorScheme: scheme });
  page.on('pageerror', (error) => assert.fail(error));
  page.setDefaultTimeout(15_000);
  await page.goto(address + hash);
  await page.waitForSelector('body[data-ready]');
}

export const shownCount = () => page.evaluate(() => Number(document.body.dataset.shown ?? 0));
export const shownAfter = (count) => page.waitForFunction((n) => Number(document.body.dataset.shown ?? 0) > n, count);
export const message = () => page.evaluate(() => (document.getElementById('message').hidden ? '' : document.getElementById('message').textContent));

export async function open(files, input = '#files') {
  const count = await shownCount();
  await page.setInputFiles(input, files);
  await shownAfter(count);
}

// What a key or a click changes in the picture.
export async function shownBy(act) {
  const count = await shownCount();
  await act();
  await shownAfter(count);
}

/** The picture at 1:1, as the canvas has it. */
export const pixels = (width, height) =>
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
export function pixelsOfPng(file) {
  const read = (to) => morvane('convert', file, '-t', to, '-');
  return [...read('rgba')];
}

export const size = '64x12';
export const formats = morvane('formats').toString().split('\n').slice(1).map((line) => line.split(' ')[0]).filter((name) => name !== '');

export async function saved(button) {
  const [download] = await Promise.all([page.waitForEvent('download'), page.click(button)]);
  const file = at(`saved_${download.suggestedFilename()}`);
  await download.saveAs(file);
  return { file, name: download.suggestedFilename() };
}
