// node web/page/speed.mjs: how fast the module is under node and in Chromium, beside a loop in JavaScript.
import { readFile } from 'node:fs/promises';
import { fileURLToPath } from 'node:url';

import { build } from 'esbuild';
import { chromium } from 'playwright-core';

const path = (relative) => fileURLToPath(new URL(relative, import.meta.url));
const module = { name: 'module', setup: ({ onResolve }) => onResolve({ filter: /^morvane\.wasm$/ }, () => ({ path: path('../../build/wasm/web/morvane.wasm') })) };
const outfile = path('../../build/wasm/web/speed.js');
await build({
  entryPoints: [path('speed_of_uyvy.js')],
  bundle: true, format: 'iife', globalName: 'speed', outfile, external: ['node:*'], loader: { '.wasm': 'binary' }, plugins: [module],
  logOverride: { 'empty-import-meta': 'silent' },
});
const script = await readFile(outfile, 'utf8');

const print = (where, sizes) => {
  for (const [size, times] of Object.entries(sizes))
    console.log(where.padEnd(9), size, ...Object.entries(times).map(([name, ms]) => `${name} ${ms.toFixed(2)} ms (${Math.round(1000 / ms)} frames/s)`));
};
print('node', await new Function(`${script}; return speed.measure()`)());
const browser = await chromium.launch({ executablePath: process.env.BROWSER_FOR_TESTS ?? '/usr/bin/chromium-headless-shell', args: ['--no-sandbox'] });
const page = await browser.newPage();
print('Chromium', await page.evaluate(`(() => { ${script}; return speed.measure(); })()`));
await browser.close();
