// What all parts of the page share: the worker, the canvas, and bringing on the screen what is set.
import { drawCharts } from './charts.js';
import { Engine } from './engine.js';
import { showValues } from './inspector.js';
import { shownLook, state, toAddress } from './state.js';
import { View } from './view.js';

export const at = (id) => document.getElementById(id);
export const engine = new Engine();
export const view = new View(at('view'), at('canvas'), at('wipe'));

export function say(text) {
  at('message').textContent = text;
  at('message').hidden = text === '';
}

export const hasSecond = () => state.slots[1].frames > 0;
export const frames = () => (hasSecond() && state.mode !== 'none' ? Math.max(state.slots[0].frames, state.slots[1].frames) : state.slots[0].frames);

const writeAddress = () => history.replaceState(null, '', `#${toAddress()}`);

let isRunning = false;
let isWanted = false;

/** Shows what is set. While a picture is being made, only the last wish is kept. */
export async function refresh() {
  isWanted = true;
  if (isRunning) return;
  isRunning = true;
  try {
    while (isWanted) {
      isWanted = false;
      await showOnce();
    }
  } finally {
    isRunning = false;
  }
}

async function showOnce() {
  if (state.slots[0].frames === 0) return;
  const began = performance.now();
  const { frame } = state;
  const mode = hasSecond() ? state.mode : 'none';
  let shown;
  try {
    shown = await engine.call('show', frame, shownLook(), mode);
  } catch (error) {
    say(error.message);
    return;
  }
  if (!at('message').dataset.kept) say('');
  const pictures = shown.second ? [shown, shown.second] : [shown];
  view.show(pictures, shown.second && mode === 'wipe' ? Number(at('wipe-at').value) / 1000 : undefined);
  const took = performance.now() - began;
  const [{ settings }] = state.slots;
  at('status').textContent = `${settings.width}×${settings.height} ${settings.format}`;
  at('frame').value = String(frame);
  at('frame').max = String(Math.max(0, frames() - 1));
  at('frame').disabled = frames() < 2;
  at('frame-number').textContent = `${frame} / ${Math.max(0, frames() - 1)}`;
  Object.assign(document.body.dataset, { frame, shown: `${Number(document.body.dataset.shown ?? 0) + 1}`, took: took.toFixed(1) });
  writeAddress();
  later();
}

let timer;
/** What may wait until nothing else is asked for. */
export function later() {
  clearTimeout(timer);
  timer = setTimeout(async () => {
    inspect();
    if (state.slots[0].frames === 0 || at('play').getAttribute('aria-pressed') === 'true') return;
    try {
      drawCharts(at('charts'), await engine.call('charts', 0, state.frame), state.chart);
      document.body.dataset.charted = String(state.frame);
    } catch (error) {
      say(error.message);
    }
  }, 120);
}

let isInspecting = false;
let inspectAgain = false;

/** The values of the marked pixel, and those that stand in pixels. */
export async function inspect() {
  if (isInspecting) {
    inspectAgain = true;
    return;
  }
  isInspecting = true;
  do {
    inspectAgain = false;
    await inspectOnce().catch((error) => say(error.message));
  } while (inspectAgain);
  isInspecting = false;
}

async function inspectOnce() {
  const area = view.readable;
  if (!area) view.values = undefined;
  else view.values = { area, components: await engine.call('values', 0, area) };
  const { marked } = view;
  if (marked) {
    const pixel = { ...marked, width: 1, height: 1 };
    const inside = ({ settings }) => marked.x < settings.width && marked.y < settings.height;
    const pictures = await Promise.all(state.slots.map((slot, i) => (slot.frames > 0 && inside(slot) ? engine.call('values', i, pixel) : [])));
    showValues(at('values'), pictures);
    at('position').textContent = `x ${marked.x}, y ${marked.y}`;
    at('position').dataset.at = `${marked.x},${marked.y}`;
  }
  view.draw();
}

export function mark(pixel) {
  if (!pixel) return;
  view.marked = pixel;
  inspect();
}

/** Shows how far long work has come, with a button to stop it. */
export async function withProgress(text, name, ...args) {
  at('work').hidden = false;
  at('work-text').textContent = text;
  at('progress').removeAttribute('value');
  try {
    return await engine.long(name, ({ done, of }) => {
      at('progress').value = done / of;
      at('work-text').textContent = `${text} ${done} of ${of}`;
    }, ...args);
  } finally {
    at('work').hidden = true;
  }
}

view.onChange = () => {
  at('zoom').textContent = view.scale >= 1 ? `${Math.round(view.scale * 100)} %` : `${(view.scale * 100).toFixed(1)} %`;
  state.zoom = view.isFit ? 'fit' : String(Math.round(view.scale * 1000) / 1000);
  if (view.readable) inspect();
};
