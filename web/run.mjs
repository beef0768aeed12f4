// node web/run.mjs PROGRAM.wasm [ARGUMENT...]: runs a program for WASI.
import { readFile } from 'node:fs/promises';
import { WASI } from 'node:wasi';

const wasi = new WASI({ version: 'preview1', args: process.argv.slice(2), env: process.env, returnOnExit: true });
const { instance } = await WebAssembly.instantiate(await readFile(process.argv[2]), wasi.getImportObject());
process.exitCode = wasi.start(instance);
