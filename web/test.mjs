// node --test web/test.mjs: the module that build/wasm has, beside the command of the native build, which MORVANE names.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, test } from 'node:test';
import { gzipSync } from 'node:zlib';

import { load, MorvaneError } from '../build/wasm/web/morvane.js';

const command = process.env.MORVANE ?? new URL('../build/release/tool/morvane', import.meta.url).pathname;
const morvane = await load();
const directory = mkdtempSync(join(tmpdir(), 'morvane-'));
after(() => rmSync(directory, { recursive: true }));

const width = 70;
const height = 6;

// The same bytes in every run, without a pattern.
function fill(bytes) {
  for (let i = 0, state = 1; i < bytes.length; ++i) {
    state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
    bytes[i] = state >>> 24;
  }
}

// What the command makes of a file, or undefined where it knows no way.
function byCommand(from, to, size, source) {
  const [input, output] = ['in', 'out'].map((name) => join(directory, name));
  writeFileSync(input, source);
  try {
    execFileSync(command, ['convert', '-f', from, '-t', to, '-s', size, input, output], { stdio: 'pipe' });
  } catch (failure) {
    assert.match(failure.stderr.toString(), /cannot be made of/);
    return undefined;
  }
  return readFileSync(output);
}

function byModule(from, to) {
  const [source, destination] = [from, to].map((description) => morvane.picture(description));
  const result = { source: new Uint8Array() };
  try {
    fill(source.bytes);
    result.source = source.bytes.slice();
    const plan = morvane.plan(from, to);
    destination.bytes.fill(0);
    plan.run(source, destination);
    plan.free();
    result.destination = destination.bytes.slice();
  } catch (error) {
    assert.ok(error instanceof MorvaneError);
    assert.equal(error.code, 'no way');
  } finally {
    source.free();
    destination.free();
  }
  return result;
}

const names = [...morvane.formats.keys()];

test('there are the formats of the command', () => {
  const lines = execFileSync(command, ['formats']).toString().split('\n').slice(1);
  assert.deepEqual(names, lines.map((line) => line.split(' ')[0]).filter((name) => name !== ''));
});

names.forEach((name, i) => {
  test(`${name} has the bytes of the command`, () => {
    const pairs = [[name, names[(i + 1) % names.length]]];
    for (const other of ['rgba', 'y_u_v_420', 'v210']) pairs.push([name, other], [other, name]);
    for (const [from, to] of pairs) {
      const made = byModule({ format: from, width, height }, { format: to, width, height });
      const expected = byCommand(from, to, `${width}x${height}`, made.source);
      assert.deepEqual(made.destination && Buffer.from(made.destination), expected, `${from} to ${to}`);
    }
  });
});

test('bands make the picture', () => {
  const [from, to] = ['uyvy', 'y_u_v_420'].map((format) => ({ format, width, height }));
  const whole = byModule(from, to);
  const source = morvane.picture(from);
  const destination = morvane.picture(to);
  source.bytes.set(whole.source);
  const plan = morvane.plan(from, to);
  for (let y = 0; y < height; y += plan.rowGranularity) plan.runRows(source, destination, y, plan.rowGranularity);
  assert.deepEqual(destination.bytes.slice(), whole.destination);
  assert.throws(() => plan.runRows(source, destination, 1, 2), { code: 'rows', argument: 'first', got: 1 });
  plan.free();
  assert.throws(() => plan.run(source, destination), /freed/);
});

test('what cannot be right is refused as the library says it', () => {
  const good = { format: 'uyvy', width, height };
  const refused = (call, expected) => assert.throws(call, { name: 'MorvaneError', ...expected });
  refused(() => morvane.layOut({ ...good, format: 'nothing' }), { code: 'unknown format' });
  refused(() => morvane.picture({ ...good, width: 0 }), { code: 'size', argument: 'description.width' });
  refused(() => morvane.plan(good, { ...good, width: 2 }), { code: 'no way' });
  refused(() => morvane.plan(good, { ...good, matrix: 'BT.1' }), { code: 'option' });
  refused(() => morvane.plan(good, good, { filter: 'cubic' }), { code: 'option', argument: 'options.filter' });
  refused(() => morvane.plan(good, good, { via: 'uyvy::"' }), { code: 'via' });
  refused(() => morvane.plan(good, good, { threads: 2 }), { code: 'option', message: /no threads/ });
});

test('a plan tells its steps and what they lose', () => {
  const plan = morvane.plan({ format: 'rgba64', width, height }, { format: 'rgb', width, height });
  assert.ok(plan.steps.length > 0);
  assert.ok(plan.losses.includes('16 to 8 bits') && plan.losses.includes('alpha dropped'));
  plan.free();
});

test('views show the memory of the library after it has grown', () => {
  const picture = morvane.picture({ format: 'rgba', width: 2, height: 1 });
  picture.bytes[0] = 7;
  const large = morvane.picture({ format: 'rgba', width: 4096, height: 4096 });
  assert.equal(picture.bytes[0], 7);
  assert.equal(picture.plane(0).length, 8);
  assert.equal(picture.clamped[0], 7);
  large.free();
  picture.free();
  assert.throws(() => picture.bytes, /freed/);
});

test('rows are code values', () => {
  const picture = morvane.picture({ format: 'v210', width: 6, height: 2 });
  picture.bytes.fill(0);
  new Uint32Array(picture.bytes.buffer, picture.plane(0).byteOffset, 2).set([(3 << 20) | (2 << 10) | 1, 4]);
  const [y, cb, cr, a, unused] = morvane.readRow(picture, 0, 0).map((line) => [...line.slice(0, 2)]);
  assert.deepEqual({ y, cb, cr, a, unused }, { y: [2, 4], cb: [1, 0], cr: [3, 0], a: [], unused: [] });
  assert.throws(() => morvane.readRow(picture, 0, 2), { code: 'rows' });
  picture.free();
});

test('strides are free', () => {
  const description = { format: 'y_u_v_420', width, height };
  const tight = byModule(description, { format: 'rgba', width, height });
  const strides = [71, 37, 36];
  const source = morvane.picture(description, { strides });
  assert.equal(source.layout.bytes, 71 * 6 + 37 * 3 + 36 * 3);
  morvane.layOut(description).planes.forEach((p, i) => {
    for (let y = 0; y < p.rows; ++y) {
      const from = p.offset + y * p.stride;
      source.plane(i).set(tight.source.subarray(from, from + p.rowBytes), y * strides[i]);
    }
  });
  const destination = morvane.picture({ format: 'rgba', width, height });
  const plan = morvane.plan(description, destination.description);
  plan.run(source, destination);
  assert.deepEqual(destination.bytes.slice(), tight.destination);
  assert.throws(() => morvane.layOut(description, { strides: [69, 35, 35] }), { code: 'stride', needed: 70 });
  assert.throws(() => morvane.layOut(description, { strides: [70] }), { code: 'stride' });
  for (const taken of [source, destination, plan]) taken.free();
});

test('formats answer to the names of other systems', () => {
  assert.deepEqual(morvane.formatsCalled('nv12').map((f) => f.name), ['y_uv_420']);
  assert.deepEqual(morvane.formatsCalled('no such format'), []);
});

test('the module imports nothing and is small', () => {
  const code = readFileSync(new URL('../build/wasm/web/morvane.wasm', import.meta.url));
  assert.deepEqual(WebAssembly.Module.imports(new WebAssembly.Module(code)), []);
  assert.ok(gzipSync(code, { level: 9 }).length < 400_000);
});
