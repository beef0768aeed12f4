// All reading and converting happens here, so that the page stays alive. A message is { id, call, args }; the answer has
// the same id, and what takes long answers { id, progress } before.
import { load } from '../morvane.js';
import wasm from 'morvane.wasm';
import { componentsOf, valuesIn } from './components.js';
import { guess, guessRange, shown } from './guess.js';
import { fillAndKey, hasKey } from './key.js';
import { charts, compare } from './measure.js';
import { writePng } from './png.js';
import { Colours, difference, render, thumbnail } from './render.js';
import { examine, sourceOf } from './source.js';

let morvane;
let colours;
let stopped = false;
const slots = [{}, {}];
const pixelsOfThumbnail = 144;

const settled = (slot) => ({
  frames: slot.source.frames,
  layout: slot.source.layout,
  offset: slot.source.offset,
  hasKey: hasKey(morvane, slot.source),
  components: componentsOf(morvane.formats.get(slot.source.description.format)).map(({ key, name, bits }) => ({ key, name, bits })),
});

function release(slot) {
  slot.picture?.free();
  slot.picture = undefined;
  slot.frame = undefined;
}

async function hold(slot, frame) {
  if (!slot.source) throw new Error('No file is open.');
  const source = slot.source;
  const at = Math.min(Math.max(frame, 0), source.frames - 1);
  slot.picture ??= source.picture();
  if (slot.frame === at) return slot.picture;
  const { picture } = slot;
  slot.frame = undefined;
  await source.read(at, picture);
  slot.frame = at;
  return picture;
}

const rendered = async (slot, frame, look) => render(morvane, colours, await hold(slot, frame), { ...look, ...slot.look });

/** The second picture in the format of the first, so that their samples can be compared. */
function alike(a, b, look) {
  const { width, height, format } = a.description;
  if (b.description.width !== width || b.description.height !== height)
    throw new Error(`The pictures have different sizes: ${width}×${height} and ${b.description.width}×${b.description.height}.`);
  return b.description.format === format ? b : colours.convert(b, { format, matrix: look.matrix, range: look.range }, look);
}

/** As the command has it: the matrix is that of both pictures, and the range where both are of one kind. */
async function converted(slot, frame, format, look) {
  const picture = await hold(slot, frame);
  const all = { ...look, ...slot.look };
  const [from, to] = [picture.description.format, format].map((name) => morvane.formats.get(name).model);
  return colours.convert(picture, { format, matrix: all.matrix, range: from === to ? all.range : undefined }, all);
}

const transferable = (pixels) => [pixels.buffer];

const calls = {
  async open(slotIndex, files) {
    const slot = slots[slotIndex];
    release(slot);
    slot.source = undefined;
    const keyed = fillAndKey(files);
    slot.files = keyed ?? files;
    slot.found = await examine(slot.files, morvane);
    if (slot.found.kind === 'raw') return { kind: 'raw', isKeyed: keyed !== undefined, files: slot.files };
    slot.source = sourceOf(files, morvane, slot.found, {});
    if (slot.source.frames < 1) throw new Error('This file ends before its first frame does.');
    return { kind: slot.found.kind, rate: slot.found.rate, settings: slot.found.settings, ...settled(slot) };
  },

  async guess(slotIndex, given) {
    const { files } = slots[slotIndex];
    const guesses = await guess(morvane, given.isKeyed ? [files[0]] : files, given);
    return guesses.map((g) => ({ ...g, isKeyed: given.isKeyed }));
  },

  async thumbnails(slotIndex, guesses, look, most) {
    const made = [];
    const { files, found } = slots[slotIndex];
    for (const g of shown(guesses, most)) {
      const source = sourceOf(files, morvane, found, g);
      const picture = source.picture();
      try {
        await source.read(0, picture);
        made.push({ guess: g, ...thumbnail(render(morvane, colours, picture, look), g.width, g.height, pixelsOfThumbnail) });
      } finally {
        picture.free();
      }
    }
    return made;
  },

  async configure(slotIndex, settings) {
    const slot = slots[slotIndex];
    const source = sourceOf(slot.files, morvane, slot.found, settings);
    release(slot);
    slot.source = source;
    return { ...settled(slot), range: await guessRange(morvane, source) };
  },

  /** Matrix, range, filter and siting of one file alone. */
  look(slotIndex, look) {
    slots[slotIndex].look = look;
  },

  close(slotIndex) {
    release(slots[slotIndex]);
    slots[slotIndex] = {};
  },

  /** Pixels of the first file, and of the second where one is open; or their difference. */
  async show(frame, look, mode) {
    const [a, b] = slots;
    const pixels = await rendered(a, frame, look);
    const { width, height } = a.source.description;
    if (!b.source || mode === 'none') return { width, height, pixels };
    const second = await rendered(b, frame, look);
    if (mode !== 'difference') return { width, height, pixels, second: { ...b.source.description, pixels: second } };
    alike(a.picture, b.picture, look);
    return { width, height, pixels: difference(pixels, second, look.gain) };
  },

  values(slotIndex, area) {
    const { picture } = slots[slotIndex];
    return picture === undefined ? [] : valuesIn(morvane, picture, area);
  },

  charts: async (slotIndex, frame) => charts(morvane, await hold(slots[slotIndex], frame)),

  async compareClip(look, report) {
    const [a, b] = slots;
    const frames = Math.min(a.source.frames, b.source.frames);
    const results = [];
    let first;
    for (let frame = 0; frame < frames && !stopped; ++frame) {
      const one = await hold(a, frame);
      const result = compare(morvane, one, alike(one, await hold(b, frame), look));
      if (result.first && !first) first = { frame, ...result.first };
      results.push(result.components);
      report({ done: frame + 1, of: frames });
    }
    return { results, first, stopped: results.length < frames };
  },

  async firstDifference(look, report) {
    const [a, b] = slots;
    const frames = Math.min(a.source.frames, b.source.frames);
    for (let frame = 0; frame < frames && !stopped; ++frame) {
      const one = await hold(a, frame);
      const { first } = compare(morvane, one, alike(one, await hold(b, frame), look));
      if (first) return { frame, ...first };
      report({ done: frame + 1, of: frames });
    }
    return undefined;
  },

  async png(slotIndex, frame, look) {
    const slot = slots[slotIndex];
    const { hasAlpha } = morvane.formats.get(slot.source.description.format);
    const made = await converted(slot, frame, hasAlpha ? 'rgba' : 'rgb', look);
    const { width, height } = made.description;
    return writePng(made.bytes.slice(), width, height, hasAlpha ? 4 : 3);
  },

  async convert(slotIndex, { to, first, count }, look, report) {
    const slot = slots[slotIndex];
    const parts = [];
    const frames = Math.min(count, slot.source.frames - first);
    for (let i = 0; i < frames && !stopped; ++i) {
      const bytes = (await converted(slot, first + i, to, look)).bytes.slice();
      parts.push(new Blob([bytes]));
      report({ done: i + 1, of: frames });
    }
    return { stopped, blob: new Blob(parts) };
  },
};

// One call after the other; only a stop overtakes.
let queue = load(wasm).then((module) => {
  morvane = module;
  colours = new Colours(module);
  const formats = [...module.formats.values()];
  postMessage({ id: 0, result: formats });
});

async function answer({ id, call, args }) {
  stopped = false;
  const report = (progress) => postMessage({ id, progress });
  try {
    const result = await calls[call](...args, report);
    const pixels = [result?.pixels, result?.second?.pixels].filter((p) => p !== undefined);
    postMessage({ id, result }, pixels.flatMap(transferable));
  } catch (error) {
    postMessage({ id, error: error.message });
  }
}

onmessage = ({ data }) => {
  if (data.call === 'stop') stopped = true;
  else queue = queue.then(() => answer(data)).catch((error) => postMessage({ id: data.id, error: error.message }));
};
