// Files that are made otherwise than usual, and formats of chroma alone.
import assert from 'node:assert/strict';
import { readFileSync, writeFileSync } from 'node:fs';
import { test } from 'node:test';
import { deflateSync } from 'node:zlib';

import { at, formats, fresh, message, morvane, open, page, pixels, pixelsOfPng, shownBy } from './harness.mjs';

test('lines before frames of YUV4MPEG2 may differ in length', async () => {
  morvane('pattern', 'key', '-s', '48x16', '--frames', '4', at('even.y4m'));
  const even = readFileSync(at('even.y4m'));
  const end = even.indexOf('\n') + 1;
  const step = (even.length - end) / 4;
  const frames = [0, 1, 2, 3].map((n) => even.subarray(end + n * step + 'FRAME\n'.length, end + (n + 1) * step));
  const lines = ['FRAME\n', 'FRAME Ip\n', 'FRAME\n', 'FRAME XFIRST XSECOND\n'];
  writeFileSync(at('uneven.y4m'), Buffer.concat([even.subarray(0, end), ...frames.flatMap((frame, n) => [Buffer.from(lines[n]), frame])]));
  await fresh();
  await open(at('uneven.y4m'));
  assert.match(await page.textContent('#facts'), /4 frames/);
  for (const frame of [0, 1, 2, 3]) {
    if (frame > 0) await shownBy(() => page.keyboard.press('ArrowRight'));
    morvane('convert', at('even.y4m'), at('even.png'), '-t', 'rgb', '--skip', `${frame}`, '--frames', '1');
    assert.deepEqual(await pixels(48, 16), pixelsOfPng(at('even.png')), `frame ${frame}`);
  }
});

/** A PNG whose header says that it is interlaced. */
function interlacedPng() {
  const chunk = (type, data) => {
    const length = Buffer.alloc(4);
    length.writeUInt32BE(data.length);
    return Buffer.concat([length, Buffer.from(type), data, Buffer.alloc(4)]);
  };
  const header = Buffer.from([0, 0, 0, 8, 0, 0, 0, 8, 8, 2, 0, 0, 1]);
  const magic = Buffer.from([137, 80, 78, 71, 13, 10, 26, 10]);
  return Buffer.concat([magic, chunk('IHDR', header), chunk('IDAT', deflateSync(Buffer.alloc(400))), chunk('IEND', Buffer.alloc(0))]);
}

test('an interlaced PNG is refused in words', async () => {
  writeFileSync(at('interlaced.png'), interlacedPng());
  await fresh();
  await page.setInputFiles('#files', at('interlaced.png'));
  await page.waitForSelector('#message:not([hidden])');
  assert.match(await message(), /This PNG is interlaced, which is not read here/);
});

test('formats of chroma alone show their first component, a sample for each of its pixels', async () => {
  const [width, height] = [64, 12];
  const alone = JSON.parse(morvane('formats', '--json')).filter(({ name }) => formats.includes(name) && /^cb_?cr/.test(name));
  assert.ok(alone.length > 0);
  for (const { name, planes } of alone) {
    const file = at(`chroma_64x12.${name}.raw`);
    morvane('pattern', 'bars', '-f', name, '-s', `${width}x${height}`, file);
    const bytes = readFileSync(file);
    const [{ components, group_bytes: groupBytes, group_pixels: across, image_rows: down }] = planes;
    const isCbFirst = components.startsWith('Cb');
    assert.ok(isCbFirst, components);
    const words = components.split(' ').length;
    const sampleBytes = groupBytes / words;
    const stride = Math.ceil(width / across) * groupBytes;
    const expected = [];
    for (let y = 0; y < height; ++y)
      for (let x = 0; x < width; ++x) {
        const from = Math.floor(y / down) * stride + Math.floor(x / across) * groupBytes;
        // The upper eight bits: of little-endian words, the last byte.
        const grey = bytes[from + sampleBytes - 1];
        expected.push(grey, grey, grey, 255);
      }
    await fresh({ hash: `#format=${name}&size=64x12` });
    await open(file);
    assert.deepEqual(await pixels(width, height), expected, name);
  }
});
