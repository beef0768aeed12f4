// The types of the module fit its calls, by the compiler of TypeScript and by the module itself.
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';
import { fileURLToPath } from 'node:url';

import { load } from '../morvane.js';

const path = (relative) => fileURLToPath(new URL(relative, import.meta.url));

test('every call has its types', () => {
  const words = ['--noEmit', '--strict', '--target', 'es2022', '--module', 'es2022', '--moduleResolution', 'bundler', '--lib', 'es2022,dom'];
  const { stdout, status } = spawnSync(process.execPath, [path('node_modules/typescript/bin/tsc'), ...words, path('example_of_calls.ts')]);
  assert.equal(stdout.toString(), '');
  assert.equal(status, 0);
});

test('what has types is there, and what is there has types', async () => {
  const morvane = await load(new URL('../../build/wasm/web/morvane.wasm', import.meta.url));
  const description = { format: 'rgba', width: 2, height: 2 };
  const made = { Morvane: morvane, Picture: morvane.picture(description), Plan: morvane.plan(description, { ...description, format: 'bgra' }) };
  const types = readFileSync(path('../morvane.d.ts'), 'utf8');
  for (const [name, object] of Object.entries(made)) {
    const [, body] = new RegExp(`interface ${name} \\{(.*?)\\n\\}`, 's').exec(types);
    const typed = [...body.matchAll(/^ {2}(?:readonly )?(\w+)[(:]/gm)].map(([, member]) => member);
    const there = [...Object.keys(object), ...Object.getOwnPropertyNames(Object.getPrototypeOf(object))];
    // The handle is for the module's own use.
    const used = there.filter((member) => member !== 'constructor' && member !== 'handle');
    assert.deepEqual(typed.sort(), used.sort(), name);
  }
});
