// What somebody does with the page, and what it says and shows then.
import assert from 'node:assert/strict';
import { readFileSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';

import { at, fresh, morvane, open, page, path, pictures, pixels, pixelsOfPng, shownBy } from './harness.mjs';

/** uyvy whose luma is what a function says of column, row and frame, without colour. */
function grey(name, width, height, luma, frames = 1) {
  const bytes = Buffer.alloc(width * height * 2 * frames, 128);
  for (let i = 0; i < width * height * frames; ++i) bytes[2 * i + 1] = luma(i % width, Math.floor(i / width) % height, Math.floor(i / width / height));
  writeFileSync(at(name), bytes);
  return at(name);
}

async function drop(files, selector) {
  const given = files.map((file) => ({ name: file.split('/').at(-1), bytes: [...readFileSync(file)] }));
  const transfer = await page.evaluateHandle((list) => {
    const made = new DataTransfer();
    for (const { name, bytes } of list) made.items.add(new File([new Uint8Array(bytes)], name));
    return made;
  }, given);
  await page.dispatchEvent('#view', 'dragover', { dataTransfer: transfer });
  assert.equal(await page.isVisible('#drop'), true);
  await shownBy(() => page.dispatchEvent(selector, 'drop', { dataTransfer: transfer }));
  assert.equal(await page.isVisible('#drop'), false);
}

test('files are dropped on either half', async () => {
  const [a, b] = ['dropped_32x16.uyvy', 'beside_32x16.uyvy'].map(at);
  for (const file of [a, b]) morvane('pattern', file === a ? 'bars' : 'ramp', '-f', 'uyvy', '-s', '32x16', file);
  await fresh();
  await drop([a], '#view');
  assert.match(await page.textContent('#facts'), /dropped_32x16/);
  assert.equal(await page.isVisible('#compare-section'), false);
  await drop([b], '#drop [data-slot="1"]');
  assert.equal(await page.isVisible('#compare-section'), true);
  assert.match(await page.textContent('#title'), /dropped_32x16\.uyvy.*beside_32x16\.uyvy/);
});

test('clips play at the rate that is set', async () => {
  const clip = grey('rate_32x16.uyvy', 32, 16, (x, y, frame) => 16 + frame, 200);
  await fresh();
  await open(clip);
  for (const rate of [10, 40]) {
    await page.fill('#rate', String(rate));
    await page.keyboard.press('Tab');
    const moved = await page.evaluate(async () => {
      const frame = () => Number(document.body.dataset.frame);
      document.getElementById('play').click();
      await new Promise((resolve) => setTimeout(resolve, 300));
      const [from, began] = [frame(), performance.now()];
      await new Promise((resolve) => setTimeout(resolve, 1500));
      const rate = ((frame() - from) * 1000) / (performance.now() - began);
      document.getElementById('play').click();
      return rate;
    });
    assert.ok(Math.abs(moved - rate) < rate * 0.2, `${moved} frames a second for ${rate}`);
  }
});

/** The colour's columns of a chart, each by the rows of the canvas that are inked. */
const inked = (index) =>
  page.locator('.chart canvas').nth(index).evaluate((canvas) => {
    const { data, width, height } = canvas.getContext('2d').getImageData(0, 0, canvas.width, canvas.height);
    return Array.from({ length: width }, (_, x) => Array.from({ length: height }, (_, y) => y).filter((y) => data[(y * width + x) * 4 + 3] > 40));
  });

test('histogram and waveform have the samples', async () => {
  await fresh();
  // Left half 64, right half 192, but for a quarter of the rows.
  await open(grey('chart_64x32.uyvy', 64, 32, (x, y) => (x < 32 ? 64 : y < 8 ? 100 : 192)));
  await page.waitForSelector('.chart');
  const luma = page.locator('.chart', { hasText: /^Y/ });
  assert.match(await luma.textContent(), /64 to 192, mean 116.5/);
  const index = await page.locator('.chart').evaluateAll((charts) => charts.findIndex((c) => c.textContent.startsWith('Y')));
  const bars = (await inked(index)).map((rows) => rows.length);
  const barOf = (value) => bars[Math.floor((value * 640) / 256) + 1];
  const [full, half, quarter] = [64, 192, 100].map(barOf);
  // 1024, 768 and 256 samples; their roots are drawn.
  assert.ok(Math.abs(half / full - Math.sqrt(3 / 4)) < 0.02, `${half} of ${full}`);
  assert.ok(Math.abs(quarter / full - 1 / 2) < 0.02, `${quarter} of ${full}`);
  assert.deepEqual(bars.filter((n, i) => n > 0 && ![64, 100, 192].some((v) => Math.abs((v * 640) / 256 - i) < 3)), []);
  await page.click('[data-chart="waveform"]');
  await page.waitForSelector('.chart canvas[aria-label^="waveform"]');
  const wave = await inked(index);
  const heightOf = (rows) => rows.map((y) => 255 - Math.round((y * 256) / 148));
  for (const [column, values] of [[100, [64]], [500, [100, 192]]]) {
    const heights = heightOf(wave[column]);
    for (const value of values) assert.ok(heights.some((h) => Math.abs(h - value) < 4), `${value} in column ${column}: ${heights}`);
    assert.deepEqual(heights.filter((h) => !values.some((v) => Math.abs(h - v) < 6)), [], `column ${column}`);
  }
});

test('long work stops', async () => {
  const clip = grey('long_640x360.uyvy', 640, 360, (x, y, frame) => 16 + ((x * y + frame) % 200), 60);
  const changed = readFileSync(clip).map((value, i) => (i % 2 ? value ^ 1 : value));
  writeFileSync(at('changed_640x360.uyvy'), changed);
  await fresh();
  await open(clip);
  await open(at('changed_640x360.uyvy'), '#second-files');
  await page.click('#measure');
  await page.waitForFunction(() => document.getElementById('progress').value > 0.04);
  await page.click('#stop');
  await page.waitForSelector('#work', { state: 'hidden' });
  const words = await page.textContent('#compared');
  const [, frames] = /^(\d+) frames \(stopped\)/.exec(words) ?? [];
  assert.ok(Number(frames) > 0 && Number(frames) < 60, words);
});

test('the wipe is dragged on the picture', async () => {
  const [a, b] = [grey('dark_64x32.uyvy', 64, 32, () => 16), grey('bright_64x32.uyvy', 64, 32, () => 235)];
  await fresh();
  await open(a);
  await open(b, '#second-files');
  await shownBy(() => page.click('[data-mode="wipe"]'));
  const brightFrom = async () => {
    const shown = await pixels(64, 32);
    return Array.from({ length: 64 }, (_, x) => shown[x * 4]).findIndex((value) => value > 128);
  };
  assert.equal(await brightFrom(), 32);
  const box = await page.locator('#view').boundingBox();
  const [middle, y] = [Math.round(box.x + box.width / 2), box.y + box.height / 2];
  await page.mouse.move(middle, y);
  await page.mouse.down();
  await page.mouse.move(middle - 10, y);
  await page.mouse.move(middle - 16, y);
  await page.mouse.up();
  assert.equal(await brightFrom(), 16);
  assert.equal(await page.inputValue('#wipe-at'), '250');
});

test('a key in a file of its own is the alpha of its fill', async () => {
  const ramp = (x) => Math.round(16 + (x * 219) / 63);
  const fill = grey('title_64x32.uyvy', 64, 32, () => 235);
  const key = grey('title_key_64x32.uyvy', 64, 32, ramp);
  const checker = (x, y) => (((x >> 3) + (y >> 3)) & 1 ? 204 : 255);
  for (const files of [[fill, key], [key, fill]]) {
    await fresh();
    await open(files);
    assert.equal(await page.isVisible('#alpha-form'), true);
    assert.equal(await page.textContent('#title'), 'title_64x32.uyvy, with the key title_key_64x32.uyvy');
    const alpha = Array.from({ length: 64 }, (_, x) => Math.round(((ramp(x) - 16) * 255) / 219));
    const expected = (back) => Array.from({ length: 64 * 32 }, (_, i) => Math.floor((255 * alpha[i % 64] + back(i % 64, Math.floor(i / 64)) * (255 - alpha[i % 64]) + 127) / 255));
    const reds = async () => (await pixels(64, 32)).filter((_, i) => i % 4 === 0);
    assert.deepEqual(await reds(), expected(checker));
    await shownBy(() => page.click('#components button:text-is("Alpha")'));
    assert.deepEqual(await reds(), Array.from({ length: 64 * 32 }, (_, i) => alpha[i % 64]));
  }
  await shownBy(() => page.click('#components button:text-is("Colour")'));
  await page.screenshot({ path: join(pictures, 'page_key.png') });
  // Fill and key behind each other in one file.
  writeFileSync(at('both_64x32.uyvy_uyvy'), Buffer.concat([fill, key].map((f) => readFileSync(f))));
  const apart = await pixels(64, 32);
  await fresh({ hash: '#format=uyvy_uyvy&size=64x32' });
  await open(at('both_64x32.uyvy_uyvy'));
  assert.deepEqual(await pixels(64, 32), apart);
});

test('full range shows in luma and may be set back', async () => {
  const photo = path('../../examples/pictures/astronaut.png');
  for (const range of ['full', 'video']) {
    const file = at(`range_${range}_400x424.uyvy`);
    const words = ['convert', photo, '-t', 'uyvy', file];
    morvane(...words, ...(range === 'full' ? ['--range', 'full'] : []));
    await fresh();
    await open(file);
    assert.equal(await page.inputValue('#range'), range === 'full' ? 'full' : '', range);
    morvane('convert', file, '-f', 'uyvy', '-s', '400x424', '-t', 'rgb', '--range', range, at('range.png'));
    assert.deepEqual(await pixels(400, 424), pixelsOfPng(at('range.png')), range);
    if (range === 'video') continue;
    assert.equal(await page.locator('#range option:checked').textContent(), 'full (guessed)');
    await shownBy(() => page.selectOption('#range', 'video'));
    await shownBy(() => page.fill('#offset', '0').then(() => page.selectOption('#matrix', 'BT.601')));
    assert.equal(await page.inputValue('#range'), 'video');
    assert.match(await page.textContent('#command'), /--range video/);
  }
});
