// What the page takes raw files for whose names say nothing: pictures made by the command, without a browser.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';
import { fileURLToPath } from 'node:url';

import { load } from '../morvane.js';
import { guess, shown } from './guess.js';

const path = (relative) => fileURLToPath(new URL(relative, import.meta.url));
const command = process.env.MORVANE ?? path('../../build/release/tool/morvane');
const run = (words, input) => execFileSync(command, words, { input, stdio: 'pipe', maxBuffer: 1 << 28 });
const library = await load(new URL('../../build/wasm/web/morvane.wasm', import.meta.url));
const offered = 9;

/** A photograph as rgba of a size, its top left stretched without steps. */
function photograph(name, width, height) {
  const png = path(`../../examples/pictures/${name}.png`);
  const [ownWidth, ownHeight] = [readFileSync(png).readUInt32BE(16), readFileSync(png).readUInt32BE(20)];
  const stored = run(['convert', png, '-t', 'rgba', '-']);
  const scale = Math.min(1, ownWidth / width, ownHeight / height);
  const result = Buffer.alloc(width * height * 4);
  for (let y = 0, to = 0; y < height; ++y) {
    const v = Math.min(ownHeight - 1.01, y * scale);
    const down = v % 1;
    for (let x = 0; x < width; ++x) {
      const u = Math.min(ownWidth - 1.01, x * scale);
      const right = u % 1;
      const from = (Math.floor(v) * ownWidth + Math.floor(u)) * 4;
      for (let c = 0; c < 4; ++c, ++to) {
        const [upper, lower] = [from + c, from + c + ownWidth * 4].map((i) => stored[i] * (1 - right) + stored[i + 4] * right);
        result[to] = upper * (1 - down) + lower * down;
      }
    }
  }
  return result;
}

const guessed = async (...parts) => shown(await guess(library, parts.map((bytes) => new File([bytes], 'photo'))), offered);
const placeOf = (guesses, format, width, height) =>
  guesses.findIndex((g) => g.format === format && g.width === width && g.height === height && !g.strides && !g.offset);

const table = ['uyvy', 'yuy2', 'nv12', 'i420', 'p010', 'v210', 'bgra', 'rgb24', 'yuv422p10'];
// Which of two colours comes first does not show in bytes.
const twins = { rgb: 'bgr' };

for (const [width, height] of [[1920, 1080], [400, 424]])
  test(`photographs of ${width}x${height} are taken for what they are`, async () => {
    const wrong = [];
    for (const name of ['cat', 'astronaut']) {
      const photo = photograph(name, width, height);
      for (const called of table) {
        const bytes = run(['convert', '-f', 'rgba', '-s', `${width}x${height}`, '-t', called, '-', '-'], photo);
        const [format] = library.formatsCalled(called);
        const guesses = await guessed(bytes);
        const place = placeOf(guesses, format.name, width, height);
        const isFirst = place === 0 || (place === 1 && guesses[0].format === twins[format.name]);
        if (!isFirst) wrong.push(`${name} in ${called}: ${place}, first ${guesses[0]?.format} ${guesses[0]?.width}x${guesses[0]?.height}`);
      }
    }
    assert.deepEqual(wrong, []);
  });

test('clips of unusual sizes are among what is offered', async () => {
  const photo = photograph('cat', 300, 200);
  for (const called of ['nv12', 'v210']) {
    const frame = run(['convert', '-f', 'rgba', '-s', '300x200', '-t', called, '-', '-'], photo);
    const [{ name }] = library.formatsCalled(called);
    const guesses = await guessed(Buffer.concat([frame, frame, frame]));
    const place = placeOf(guesses, name, 300, 200);
    assert.ok(place >= 0 && guesses[place].frames === 3, `${called}: ${guesses.map((g) => `${g.format} ${g.width}x${g.height}`)}`);
  }
});
