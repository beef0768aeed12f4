// node build.mjs MODULE.wasm FOLDER: the page as files that need no server: the module is inside the worker, and the worker
// inside the script, because browsers open neither from a file system.
import { copyFile, mkdir, readFile } from 'node:fs/promises';
import { dirname, join, resolve } from 'node:path';
import { fileURLToPath } from 'node:url';

import { build } from 'esbuild';

const here = dirname(fileURLToPath(import.meta.url));
const [module, folder] = process.argv.slice(2).map((path) => resolve(path));

const provide = (name, load) => ({
  name,
  setup({ onResolve, onLoad }) {
    onResolve({ filter: new RegExp(`^${name.replace('.', '\\.')}$`) }, () => ({ path: name, namespace: name }));
    onLoad({ filter: /.*/, namespace: name }, load);
  },
});
const settings = { bundle: true, format: 'iife', minify: true, target: 'es2022', logLevel: 'warning', legalComments: 'none', logOverride: { 'empty-import-meta': 'silent' } };

const worker = await build({
  ...settings,
  entryPoints: [join(here, 'worker.js')],
  external: ['node:*'],
  write: false,
  plugins: [provide('morvane.wasm', async () => ({ contents: await readFile(module), loader: 'binary' }))],
});
await mkdir(folder, { recursive: true });
await build({
  ...settings,
  entryPoints: { page: join(here, 'main.js') },
  outdir: folder,
  plugins: [provide('worker-source', () => ({ contents: worker.outputFiles[0].text, loader: 'text' }))],
});
await build({ entryPoints: { page: join(here, 'all.css') }, outdir: folder, bundle: true, minify: true, logLevel: 'warning' });
await copyFile(join(here, 'index.html'), join(folder, 'index.html'));
