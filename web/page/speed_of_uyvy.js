// uyvy to rgba by the module and by a loop in JavaScript, in milliseconds a frame, without reading and drawing.
import { load } from '../morvane.js';
import wasm from 'morvane.wasm';

function byLoop(source, destination) {
  for (let i = 0, to = 0; i < source.length; i += 4) {
    const cb = source[i] - 128;
    const cr = source[i + 2] - 128;
    const r = 459 * cr;
    const g = 55 * cb + 136 * cr;
    const b = 541 * cb;
    for (let k = 1; k < 4; k += 2, to += 4) {
      const y = 298 * (source[i + k] - 16) + 128;
      destination[to] = (y + r) >> 8;
      destination[to + 1] = (y - g) >> 8;
      destination[to + 2] = (y + b) >> 8;
      destination[to + 3] = 255;
    }
  }
}

const fastest = (runs, convert) => {
  let least = Infinity;
  for (let i = 0; i < runs; ++i) {
    const began = performance.now();
    convert();
    least = Math.min(least, performance.now() - began);
  }
  return least;
};

export async function measure(runs = 60) {
  const morvane = await load(wasm);
  const result = {};
  for (const [width, height] of [[1920, 1080], [3840, 2160]]) {
    const [from, to] = ['uyvy', 'rgba'].map((format) => ({ format, width, height }));
    const [source, destination] = [morvane.picture(from), morvane.picture(to)];
    const plan = morvane.plan(from, to, { filter: 'nearest' });
    const linear = morvane.plan(from, to);
    source.bytes.forEach((_, i, all) => (all[i] = (i * 2654435761) >>> 24));
    const [bytes, loop] = [source.bytes.slice(), new Uint8ClampedArray(width * height * 4)];
    result[`${width}x${height}`] = {
      module: fastest(runs, () => plan.run(source, destination)),
      linear: fastest(runs, () => linear.run(source, destination)),
      loop: fastest(runs, () => byLoop(bytes, loop)),
    };
    for (const taken of [plan, linear, source, destination]) taken.free();
  }
  return result;
}
