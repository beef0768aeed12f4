// node web/page/speed_in_cache.mjs: uyvy to bgra by the module and by the native AVX2 code, in turns, with pictures that
// stay in the cache: medians, because other work on the computer disturbs single runs.
import { execFileSync } from 'node:child_process';
import { fileURLToPath } from 'node:url';

import { load } from '../morvane.js';

const path = (relative) => fileURLToPath(new URL(relative, import.meta.url));
const bench = process.env.MORVANE_BENCH ?? path('../../build/release/bench/morvane_bench');
const morvane = await load(new URL('../../build/wasm/web/morvane.wasm', import.meta.url));
const [from, to] = ['uyvy', 'bgra'].map((format) => ({ format, width: 1920, height: 16 }));
const [source, destination] = [morvane.picture(from), morvane.picture(to)];
// The entry point is what the native side measures; the rules have the same picture with chroma interpolated.
const [byEntryPoint, byRules] = [{ via: 'uyvy::bgra' }, {}].map((options) => morvane.plan(from, to, options));
source.bytes.forEach((_, i, all) => (all[i] = (i * 2654435761) >>> 24));
const turns = 9;
const [repetitions, runs] = [60, 200];
const median = (values) => [...values].sort((a, b) => a - b)[values.length >> 1];

function byModule(plan) {
  const times = Array.from({ length: repetitions }, () => {
    const began = process.hrtime.bigint();
    for (let i = 0; i < runs; ++i) plan.run(source, destination);
    return Number(process.hrtime.bigint() - began) / runs;
  });
  return median(times);
}

function native() {
  const words = ['^uyvy::bgra/1920x16/tight/avx2', '--json', '--benchmark_min_time=0.05'];
  return JSON.parse(execFileSync(bench, words, { stdio: 'pipe' }))[0].nanoseconds;
}

byModule(byEntryPoint);
byModule(byRules);
const measured = Array.from({ length: turns }, () => [byModule(byEntryPoint), native(), byModule(byRules)]);
const [ours, theirs, rules] = [0, 1, 2].map((i) => median(measured.map((times) => times[i])) / 1000);
const share = median(measured.map(([module, avx2]) => avx2 / module));
console.log(`uyvy::bgra: module ${ours.toFixed(2)} us, AVX2 ${theirs.toFixed(2)} us, ${share.toFixed(2)} of its speed; module by the rules ${rules.toFixed(2)} us`);
