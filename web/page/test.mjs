// node --test web/page/test*.mjs: what the page shows and saves, beside the command.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { openSync, ftruncateSync, closeSync, readFileSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';

import { at, command, directory, formats, fresh, message, morvane, open, page, path, pictures, pixels, pixelsOfPng, saved, shownBy, size } from './harness.mjs';

test('every format shows the pixels of the command', async () => {
  await fresh();
  for (const format of formats) {
    const { alpha } = JSON.parse(morvane('formats', format, '--json')).find((f) => f.name === format);
    const file = at(`bars_${size}.${format}.raw`);
    morvane('pattern', alpha ? 'key' : 'bars', '-f', format, '-s', size, file);
    // The command shows fills alone.
    await fresh({ hash: `#format=${format}&size=${size}${format === 'uyvy_uyvy' ? '&alpha=ignore' : ''}` });
    await open(file);
    // Of chroma alone the command shows no pixels of the picture, but samples.
    if (/^cb_?cr/.test(format)) continue;
    const expected = at('expected.png');
    morvane('show', file, expected, '-f', format, '-s', size);
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
  await page.mouse.move(view.x + view.width / 2 + 130, view.y + view.height / 2 + 1);
  await page.waitForSelector('#position[data-at="5,2"]');
  const values = () => page.locator('#values tr').evaluateAll((rows) => rows.map((r) => [r.cells[0].textContent, r.cells[1].textContent]));
  // Six pixels in four words: Cb0 Y0 Cr0, Y1 Cb2 Y2, Cr2 Y3 Cb4, Y4 Cr4 Y5.
  const word = (i) => readFileSync(file).readUInt32LE(128 * 2 + 4 * i);
  const expected = [['Cb', (word(2) >>> 20) & 1023], ['Y', (word(3) >>> 20) & 1023], ['Cr', (word(3) >>> 10) & 1023]];
  assert.deepEqual(await values(), expected.map(([name, value]) => [name, `${value}`]));
  await page.screenshot({ path: join(pictures, 'page_pixels.png') });
});

test('what is saved has the bytes of the command', async () => {
  const file = at('save_66x20.yuva444p');
  morvane('pattern', 'key', '-f', 'yuva444p', '-s', '66x20', '--frames', '3', file);
  await fresh({ hash: '#frame=1&matrix=BT.601' });
  await open(file);
  const png = await saved('#save-png');
  assert.equal(png.name, 'save_66x20_1.png');
  const line = await page.textContent('#command');
  assert.equal(line, 'morvane convert -f y_u_v_a_444 -s 66x20 --skip 1 --frames 1 --matrix bt601 -t rgba save_66x20.yuva444p save_66x20_1.png');
  execFileSync('sh', ['-c', line.replace('morvane', command)], { cwd: directory });
  assert.deepEqual(pixelsOfPng(png.file), pixelsOfPng(at('save_66x20_1.png')));
  await page.fill('#to', 'v210');
  await page.selectOption('#which', 'all');
  const clip = await saved('#save');
  execFileSync('sh', ['-c', (await page.textContent('#command')).replace('morvane', command)], { cwd: directory });
  assert.deepEqual(readFileSync(clip.file), readFileSync(at('save_66x20.v210')));
  assert.equal(readFileSync(clip.file).length, 2 * 256 * 20);
});

test('headers and odd strides are settings, and the command has them', async () => {
  const raw = at('tight.uyvy');
  morvane('pattern', 'bars', '-f', 'uyvy', '-s', '40x8', '--stride', '83', raw);
  const file = at('odd.bin');
  writeFileSync(file, Buffer.concat([Buffer.alloc(7, 1), readFileSync(raw)]));
  await fresh({ hash: '#format=uyvy&size=40x8&stride=83&header=7' });
  await open(file);
  morvane('show', raw, at('odd.png'), '-f', 'uyvy', '-s', '40x8', '--stride', '83');
  assert.deepEqual(await pixels(40, 8), pixelsOfPng(at('odd.png')));
  const line = await page.textContent('#command');
  execFileSync('sh', ['-c', line.replace('morvane', command)], { cwd: directory });
  assert.deepEqual(pixelsOfPng(at('odd_0.png')), await pixels(40, 8));
  const shared = new URL(page.url()).hash;
  await fresh({ hash: shared });
  await open(file);
  assert.equal(await page.inputValue('#strides'), '83');
});

test('YUV4MPEG2, PNG and planes in files of their own are opened', async () => {
  for (const name of ['clip.y4m', 'still.png']) {
    morvane('pattern', 'bars', '-s', '48x16', at(name), ...(name === 'clip.y4m' ? ['--frames', '3'] : []));
    await fresh();
    await open(at(name));
    morvane('convert', at(name), at('opened.png'), '-t', 'rgb', '--frames', '1');
    assert.deepEqual(await pixels(48, 16), pixelsOfPng(at('opened.png')), name);
  }
  const planes = ['y', 'u', 'v'].map((p) => at(`plane_48x16_${p}.bin`));
  morvane('pattern', 'bars', '-f', 'y_u_v_420', '-s', '48x16', '--planes', planes.join(','));
  morvane('show', '--planes', planes.join(','), at('planes.png'), '-f', 'y_u_v_420', '-s', '48x16');
  await fresh({ hash: '#format=y_u_v_420&size=48x16' });
  await open(planes);
  assert.deepEqual(await pixels(48, 16), pixelsOfPng(at('planes.png')));
});

test('two files are compared', async () => {
  const [a, b] = ['first_64x32.uyvy', 'second_64x32.uyvy'].map(at);
  morvane('pattern', 'key', '-f', 'uyvy', '-s', '64x32', '--frames', '4', a);
  const bytes = readFileSync(a);
  const changed = 2 * 64 * 32 * 2 + 5 * 128 + 2 * 10 + 1;
  bytes[changed] ^= 32;
  writeFileSync(b, bytes);
  await fresh();
  await open(a);
  await open(b, '#second-files');
  await page.screenshot({ path: join(pictures, 'page_side.png') });
  await page.click('#measure');
  await page.waitForSelector('#plot canvas');
  let json;
  try {
    json = morvane('compare', a, b, '-f', 'uyvy', '-s', '64x32', '--json');
  } catch (differs) {
    json = differs.stdout;
  }
  const { first_difference: first } = JSON.parse(json);
  assert.match(await page.textContent('#compared'), new RegExp(`frame ${first.frame}, x ${first.x}, y ${first.y}, ${first.component}: ${first.values[0]} and ${first.values[1]}`));
  assert.match(await page.textContent('#compared'), /Cb identical/);
  await page.click('#jump');
  await page.waitForSelector('#position[data-at="10,5"]');
  assert.equal(await page.inputValue('#frame'), '2');
  await shownBy(() => page.click('[data-mode="difference"]'));
  const shown = await pixels(64, 32);
  const differing = shown.flatMap((value, i) => (i % 4 !== 3 && value !== 128 ? [Math.floor(i / 4)] : []));
  assert.deepEqual([...new Set(differing)], [5 * 64 + 10]);
  await shownBy(() => page.click('[data-mode="wipe"]'));
  await page.screenshot({ path: join(pictures, 'page_compare.png') });
});

test('wrong files get a clear line', async () => {
  const files = {
    'empty.uyvy': ['', /is empty/],
    'short_64x64.uyvy': ['abc', /fewer than one frame|No usual format/],
    'what.xyz': ['seven..', /No usual format/],
    'cut.png': [Buffer.from([137, 80, 78, 71, 13, 10, 26, 10, 0, 0]), /PNG/],
    'odd.y4m': ['YUV4MPEG2 W4 H4 C411\nFRAME\n', /"411"/],
    'none.y4m': ['YUV4MPEG2 W4 H4\n', /before its first frame/],
  };
  for (const [name, [content, expected]] of Object.entries(files)) {
    writeFileSync(at(name), content);
    await fresh();
    await page.setInputFiles('#files', at(name));
    await page.waitForSelector('#message:not([hidden])');
    assert.match(await message(), expected, name);
  }
  await page.screenshot({ path: join(pictures, 'page_wrong.png') });
  const good = at('good_64x12.uyvy');
  morvane('pattern', 'bars', '-f', 'uyvy', '-s', size, good);
  await fresh();
  await open(good);
  await page.fill('#width', '100000');
  await page.locator('#width').blur();
  await page.waitForSelector('#message:not([hidden])');
  assert.match(await message(), /fewer than one frame/);
  await shownBy(async () => {
    await page.fill('#width', '64');
    await page.locator('#width').blur();
  });
  assert.equal(await message(), '');
});

test('a file of 5 GB opens at once', async () => {
  const file = at('large_1920x1080.uyvy');
  const descriptor = openSync(file, 'w');
  ftruncateSync(descriptor, 5e9);
  closeSync(descriptor);
  await fresh();
  await open(file);
  assert.match(await page.textContent('#facts'), /1,205 frames/);
  await shownBy(() => page.locator('#frame').evaluate((slider) => {
    slider.value = '1204';
    slider.dispatchEvent(new Event('input'));
  }));
  assert.match(await page.textContent('#frame-number'), /1204/);
});

test('pictures come in time', async () => {
  const large = at('large_3840x2160.v210');
  morvane('pattern', 'zone', '-f', 'v210', '-s', '3840x2160', large);
  const clip = at('clip_1920x1080.v210');
  morvane('pattern', 'zone', '-f', 'v210', '-s', '1920x1080', '--frames', '12', clip);
  await fresh();
  let began = Date.now();
  await open(large);
  const first = Date.now() - began;
  await fresh();
  await open(clip);
  await page.waitForTimeout(800);
  const steps = [];
  for (let i = 0; i < 9; ++i) {
    await shownBy(() => page.keyboard.press('ArrowRight'));
    steps.push(Number(await page.evaluate(() => document.body.dataset.took)));
  }
  const step = steps.sort((a, b) => a - b)[4];
  console.log(`first picture of 3840x2160 v210: ${first} ms; a step of 1920x1080 v210: ${step} ms`);
  assert.ok(first < 1000, `${first} ms`);
  assert.ok(step < 50, `${step} ms`);
});

test('keys do what they say', async () => {
  const file = at('keys_64x12.uyvy_a');
  morvane('pattern', 'key', '-f', 'uyvy_a', '-s', size, '--frames', '5', file);
  await fresh();
  await open(file);
  const frame = () => page.inputValue('#frame');
  await shownBy(() => page.keyboard.press('ArrowRight'));
  await shownBy(() => page.keyboard.press('End'));
  assert.equal(await frame(), '4');
  await shownBy(() => page.keyboard.press('Home'));
  assert.equal(await frame(), '0');
  await page.keyboard.press('1');
  assert.equal(await page.textContent('#zoom'), '100 %');
  await page.keyboard.press('+');
  assert.equal(await page.textContent('#zoom'), '200 %');
  await page.keyboard.press('Shift+ArrowRight');
  await page.keyboard.press('Shift+ArrowRight');
  await page.waitForSelector('#position[data-at="1,0"]');
  await shownBy(() => page.keyboard.press('c'));
  assert.equal(await page.textContent('#components [aria-pressed="true"]'), 'Cb');
  await page.keyboard.press(' ');
  await page.waitForFunction(() => Number(document.body.dataset.frame) > 1);
  await page.keyboard.press(' ');
  assert.equal(await page.getAttribute('#play', 'aria-pressed'), 'false');
  for (const mode of ['checker', 'colour', 'ignore']) await page.selectOption('#alpha', mode);
});

test('nothing stands in the way of a screen reader, in both themes and at 360 pixels', async () => {
  const axe = readFileSync(path('node_modules/axe-core/axe.min.js'), 'utf8');
  const photo = at('photo_320x240.uyvy');
  morvane('convert', path('../../examples/pictures/cat.png'), '-t', 'uyvy', '--crop', '320x240', photo);
  for (const [scheme, width] of [['light', 1360], ['dark', 1360], ['dark', 360], ['light', 360]]) {
    await fresh({ scheme, width, height: width === 360 ? 740 : 860 });
    for (const state of ['empty', 'open']) {
      if (state === 'open') {
        await open(photo);
        await open(photo, '#second-files');
        await page.waitForSelector('.chart');
      }
      await page.evaluate(axe);
      const { violations } = await page.evaluate(() => globalThis.axe.run());
      assert.deepEqual(violations.map((v) => `${v.id}: ${v.nodes.map((n) => n.target.join(' ')).join(', ')}`), [], `${scheme} ${width} ${state}`);
      const overflow = await page.evaluate(() => document.documentElement.scrollWidth - innerWidth);
      assert.ok(overflow <= 0, `${width}: ${overflow} too wide`);
      await page.screenshot({ path: join(pictures, `page_${state}_${scheme}_${width}.png`) });
    }
  }
});
