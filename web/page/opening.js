// From files to settings: what files say of themselves, what the address says, and guesses for the rest.
import { at, engine, refresh, say, view } from './app.js';
import { fillForm } from './controls.js';
import { blank, shownLook, state } from './state.js';

const mostThumbnails = 9;
const bytesWords = (n) => {
  const units = ['bytes', 'kB', 'MB', 'GB', 'TB'];
  const power = Math.min(units.length - 1, Math.floor(Math.log10(Math.max(n, 1)) / 3));
  return `${power === 0 ? n : (n / 1000 ** power).toFixed(1)} ${units[power]}`;
};

const isComplete = ({ format, width, height }) => Boolean(format && width && height);

/** Several files are the planes of one picture where a format has them, and else the first and the one beside it. */
export async function open(index, files) {
  const list = [...files];
  if (list.length === 0) return;
  if (index === 1 && state.slots[0].frames === 0) index = 0;
  if (!(await openAs(index, list)) && list.length === 2 && index === 0) {
    await openAs(0, [list[0]]);
    await openAs(1, [list[1]]);
  }
}

async function openAs(index, files) {
  const wish = state.slots[index].files ? blank() : state.slots[index];
  // Settings made by hand stay for the next file of the same length.
  const before = state.slots[index];
  if (before.files && before.kind === 'raw' && before.files[0].size === files[0].size) Object.assign(wish, { settings: before.settings, look: before.look, isRangeSet: before.isRangeSet });
  const isRangeSet = wish.isRangeSet ?? (!wish.files && wish.look.range !== undefined);
  const slot = Object.assign(blank(), { settings: wish.settings, look: wish.look, isRangeSet, files, name: files.map((f) => f.name).join(', ') });
  state.slots[index] = slot;
  state.active = index;
  if (index === 0 && before.files) state.frame = 0;
  delete at('message').dataset.kept;
  say('');
  at('empty').hidden = true;
  try {
    const opened = await engine.call('open', index, files);
    slot.kind = opened.kind;
    if (opened.kind === 'raw') {
      slot.settings = { ...slot.settings, isKeyed: opened.isKeyed };
      slot.files = opened.files;
      if (opened.isKeyed) slot.name = `${slot.files[0].name}, with the key ${slot.files[1].name}`;
      return await openRaw(index, slot, slot.files);
    }
    const { format, width, height, siting, range } = opened.settings;
    slot.settings = { format, width, height, strides: undefined, offset: 0 };
    slot.look.siting ??= siting;
    slot.look.range ??= range;
    if (opened.rate) at('rate').value = String(Math.round(opened.rate * 1000) / 1000);
    settle(index, slot, opened);
    return true;
  } catch (error) {
    return fail(index, slot, error.message);
  }
}

function fail(index, slot, text) {
  slot.frames = 0;
  engine.call('close', index);
  if (index === 0) view.clear();
  say(text);
  at('message').dataset.kept = 'yes';
  fillForm();
  return false;
}

async function openRaw(index, slot, files) {
  let guesses = [];
  if (!isComplete(slot.settings)) {
    guesses = await engine.call('guess', index, slot.settings);
    if (guesses.length === 0) {
      if (files.length === 1) unknown(slot, files);
      else return fail(index, slot, 'No format has planes of these lengths. Choose format and size by hand, or open the files one by one.');
      fillForm();
      return true;
    }
    const { format, width, height, strides, offset = 0 } = guesses[0];
    slot.settings = { ...slot.settings, format, width, height, strides, offset };
  }
  slot.guesses = guesses;
  if (!(await configure(index))) return false;
  showThumbnails(index, slot);
  return true;
}

function unknown(slot, files) {
  const [{ size, name }] = files;
  say(`No usual format and size makes whole frames of the ${size.toLocaleString('en')} bytes of "${name}". Set format, width and height by hand.`);
  at('message').dataset.kept = 'yes';
  slot.frames = 0;
}

function settle(index, slot, { frames, components, layout, hasKey, range }) {
  if (slot.kind === 'raw' && !slot.isRangeSet) Object.assign(slot, { isRangeGuessed: range !== undefined, look: { ...slot.look, range } });
  Object.assign(slot, { frames, components, layout, hasKey });
  at('guesses').hidden = slot.guesses.length < 2;
  if (index === 1) {
    engine.call('look', 1, { ...slot.look });
    if (state.mode === 'none') state.mode = 'side';
  }
  state.frame = Math.min(state.frame, Math.max(0, state.slots[0].frames - 1));
  const [first] = state.slots;
  const isThere = first.components.some((c) => c.key === state.component) || (first.hasKey && state.component === 'A');
  if (!isThere) state.component = '';
  delete at('message').dataset.kept;
  fillForm();
  refresh();
}

/** Takes the settings of a slot; says what is wrong with them. */
export async function configure(index) {
  const slot = state.slots[index];
  if (!slot.files || slot.kind !== 'raw' || !isComplete(slot.settings)) return false;
  try {
    settle(index, slot, await engine.call('configure', index, { ...slot.settings }));
    return true;
  } catch (error) {
    say(error.message);
    at('message').dataset.kept = 'yes';
    fillForm();
    return false;
  }
}

async function showThumbnails(index, slot) {
  const pending = slot.guesses[0]?.sure ? await engine.call('guess', index, { ...slot.settings, format: undefined }) : slot.guesses;
  const made = await engine.call('thumbnails', index, pending.slice(0, 40), shownLook(), mostThumbnails).catch(() => []);
  if (slot !== state.slots[index]) return;
  slot.thumbnails = made;
  drawThumbnails(index, made);
}

function drawThumbnails(index, made) {
  at('guesses').hidden = made.length < 2;
  const buttons = made.map(({ guess, width, height, pixels }) => {
    const button = document.createElement('button');
    const canvas = Object.assign(document.createElement('canvas'), { width, height });
    canvas.getContext('2d').putImageData(new ImageData(pixels, width, height), 0, 0);
    const { format, width: w, height: h, frames, strides, offset } = guess;
    const more = [frames > 1 && `${frames} frames`, strides && `rows of ${strides.join(', ')}`, offset && `header ${offset}`].filter(Boolean).join(', ');
    button.append(canvas, `${format} ${w}×${h}${more ? `, ${more}` : ''}`);
    const { settings } = state.slots[index];
    button.setAttribute('aria-pressed', String(settings.format === format && settings.width === w && settings.height === h));
    button.onclick = () => {
      state.slots[index].settings = { ...settings, format, width: w, height: h, strides, offset: offset ?? 0 };
      for (const other of at('guess-list').children) other.setAttribute('aria-pressed', String(other === button));
      configure(index);
    };
    return button;
  });
  at('guess-list').replaceChildren(...buttons);
}

export function factsOf(slot) {
  if (!slot.files) return 'No file is open.';
  const size = bytesWords(slot.files.reduce((sum, f) => sum + f.size, 0));
  const frames = slot.frames === 0 ? 'no frame yet' : `${slot.frames.toLocaleString('en')} ${slot.frames === 1 ? 'frame' : 'frames'}`;
  const kind = { png: 'PNG', y4m: 'YUV4MPEG2', raw: 'raw' }[slot.kind] ?? '';
  const { layout, settings } = slot;
  const over = slot.kind === 'raw' && layout && slot.files.length === 1 ? (slot.files[0].size - (settings.offset ?? 0)) % layout.bytes : 0;
  return `${slot.name}: ${[size, kind, frames].filter(Boolean).join(', ')}${over ? `, and ${over.toLocaleString('en')} bytes behind the last` : ''}`;
}

/** A ring and a disc in v210, made here. */
export async function example() {
  const [width, height] = [640, 360];
  const bytes = new Uint8Array(width * height * 4);
  for (let y = 0, i = 0; y < height; ++y)
    for (let x = 0; x < width; ++x, i += 4) {
      const d = Math.hypot(x - width / 2, y - height / 2);
      const a = Math.max(0, Math.min(1, (130 - d) / 12));
      const ring = 127 + 127 * Math.cos((d * d) / 900);
      bytes.set([a * 240 + (1 - a) * ring * (x / width), a * 150 + (1 - a) * ring * (y / height), a * 40 + (1 - a) * ring * (1 - x / width), 255 * (1 - a * 0.4)], i);
    }
  await open(0, [new File([bytes], `example_${width}x${height}.rgba`)]);
}
