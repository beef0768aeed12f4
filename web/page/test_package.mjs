// What npm packs, installed elsewhere and called from node.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { mkdtempSync, rmSync, statSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { test } from 'node:test';
import { fileURLToPath } from 'node:url';

const mostBytes = 1 << 20;
const program = `
  import { load } from 'morvane';
  const morvane = await load();
  const [from, to] = ['uyvy', 'rgba'].map((format) => ({ format, width: 2, height: 1 }));
  const [white, shown] = [morvane.picture(from), morvane.picture(to)];
  white.bytes.set([128, 235, 128, 235]);
  morvane.plan(from, to).run(white, shown);
  console.log([...shown.bytes].join());
`;

test('a package of less than a megabyte is all that node needs', () => {
  const directory = mkdtempSync(join(tmpdir(), 'morvane-package-'));
  const run = (...words) => execFileSync(...words, { cwd: directory, stdio: 'pipe' }).toString().trim();
  try {
    const packed = fileURLToPath(new URL('../../build/wasm/web', import.meta.url));
    const name = run('npm', ['pack', '--silent', packed]);
    assert.ok(statSync(join(directory, name)).size < mostBytes);
    writeFileSync(join(directory, 'package.json'), '{}');
    run('npm', ['install', '--silent', '--offline', '--no-audit', '--no-fund', `./${name}`]);
    writeFileSync(join(directory, 'program.mjs'), program);
    assert.equal(run(process.execPath, ['program.mjs']), '255,255,255,255,255,255,255,255');
  } finally {
    rmSync(directory, { recursive: true });
  }
});
