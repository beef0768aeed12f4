// The forms: from what is set to what is seen, and back.
import { at, engine, frames, hasSecond, later, refresh, say, view, withProgress } from './app.js';
import { describe, showComparison } from './comparison.js';
import { configure, factsOf } from './opening.js';
import { blank, colourOf, commandOf, shownLook, state } from './state.js';

let formats = [];
const choices = { matrix: ['BT.601', 'BT.709', 'BT.2020'], range: ['video', 'full'], filter: ['linear', 'nearest'], siting: ['left', 'center'] };
const usual = { matrix: 'BT.709', range: 'as usual', filter: 'linear', siting: 'left' };

const option = (value, text) => Object.assign(document.createElement('option'), { value, textContent: text });
const formatNamed = (name) => formats.find((f) => f.name === name);
const slot = () => state.slots[state.active];

export async function fillChoices() {
  formats = await engine.formats;
  at('formats').replaceChildren(...formats.map((f) => option(f.name, f.description)));
  for (const [name, values] of Object.entries(choices)) at(name).replaceChildren(option('', `${usual[name]}${name === 'range' ? '' : ' (usual)'}`), ...values.filter((v) => v !== usual[name]).map((v) => option(v, v)));
}

/** Shows all that is set. */
export function fillForm() {
  const { settings, look, kind } = slot();
  const fixed = kind === 'png' || kind === 'y4m';
  at('title').textContent = state.slots.filter((s) => s.files).map((s) => s.name).join('  ·  ') || 'Opens any raw frame';
  at('facts').textContent = factsOf(slot());
  for (const i of [0, 1]) at(`slot-${i}`).setAttribute('aria-pressed', String(state.active === i));
  at('slot-1').parentElement.hidden = !state.slots[1].files;
  at('format').value = settings.format ?? '';
  at('width').value = settings.width ?? '';
  at('height').value = settings.height ?? '';
  at('strides').value = settings.strides?.join(', ') ?? '';
  at('strides').placeholder = slot().layout?.planes.map((p) => p.stride).join(', ') ?? 'as usual';
  at('offset').value = settings.offset;
  for (const id of ['format', 'width', 'height', 'strides', 'offset']) at(id).disabled = fixed || !slot().files;
  for (const name of Object.keys(choices)) at(name).value = look[name] === usual[name] ? '' : (look[name] ?? '');
  at('range').querySelector('[value="full"]').textContent = slot().isRangeGuessed ? 'full (guessed)' : 'full';
  fillComponents();
  at('alpha').value = state.alpha;
  at('background').value = state.background;
  at('gain').value = String(state.gain);
  at('compare-section').hidden = !hasSecond();
  for (const button of at('modes').children) button.setAttribute('aria-pressed', String(button.dataset.mode === state.mode));
  for (const button of at('chart-kind').children) button.setAttribute('aria-pressed', String(button.dataset.chart === state.chart));
  const isOpen = state.slots[0].frames > 0;
  for (const id of ['save-png', 'save', 'copy', 'play', 'previous', 'next', 'frame', 'choose-second']) at(id).disabled = !isOpen;
  showCommand();
}

function fillComponents() {
  const [{ components, settings, hasKey }] = state.slots;
  const facts = formatNamed(settings.format);
  const isColour = facts?.model === 'YCbCr' || facts?.model === 'RGB';
  at('alpha-form').hidden = !facts?.hasAlpha && !hasKey;
  const keys = isColour ? ['', ...components.map((c) => c.key)] : components.map((c) => c.key);
  if (hasKey) keys.push('A');
  at('components').replaceChildren(
    ...keys.map((key) => {
      const button = Object.assign(document.createElement('button'), { textContent: { '': 'Colour', A: 'Alpha' }[key] ?? key, onclick: () => chooseComponent(key) });
      button.setAttribute('aria-pressed', String(key === state.component || (!isColour && state.component === '' && key === keys[0])));
      return button;
    }),
  );
  at('components').dataset.keys = keys.join(' ');
}

export function chooseComponent(key) {
  state.component = key;
  fillForm();
  refresh();
}

export function nextComponent() {
  const buttons = [...at('components').children];
  const now = buttons.findIndex((b) => b.getAttribute('aria-pressed') === 'true');
  buttons[(now + 1) % buttons.length]?.click();
}

export function setMode(mode) {
  state.mode = mode;
  fillForm();
  refresh();
}

function command(png) {
  const chosen = state.slots[0];
  if (!chosen.frames) return '';
  const { hasAlpha, model } = formatNamed(chosen.settings.format);
  const all = at('which').value === 'all';
  return commandOf({ ...chosen, model }, state.frame, png ? { to: hasAlpha ? 'rgba' : 'rgb', png } : { to: at('to').value, all });
}

let isPngShown = true;
function showCommand(png = isPngShown) {
  isPngShown = png;
  at('command').textContent = command(png);
}

function read() {
  const { settings } = slot();
  const whole = (id) => (at(id).value === '' ? undefined : Math.max(0, Math.floor(Number(at(id).value))));
  const wanted = at('format').value.trim();
  const strides = at('strides').value.trim() === '' ? undefined : at('strides').value.split(/[\s,]+/).filter((n) => n !== '').map(Number);
  const [width, height] = ['width', 'height'].map(whole);
  // Strides belong to a size and a format.
  const isSame = settings.format === wanted && settings.width === width && settings.strides?.join() === strides?.join();
  slot().settings = { ...settings, format: wanted, width, height, strides: isSame || settings.strides?.join() !== strides?.join() ? strides : undefined, offset: whole('offset') ?? 0 };
  if (!formatNamed(wanted)) {
    say(`There is no format called "${wanted}".`);
    return;
  }
  if (!width || !height) return;
  configure(state.active);
}

function download(blob, name) {
  const link = Object.assign(document.createElement('a'), { href: URL.createObjectURL(blob), download: name });
  link.click();
  setTimeout(() => URL.revokeObjectURL(link.href), 60_000);
}

async function savePng() {
  const stem = state.slots[0].files[0].name.replace(/\.[^.]*$/, '');
  download(await engine.call('png', 0, state.frame, shownLook()), `${stem}_${state.frame}.png`);
}

async function saveConverted() {
  const to = at('to').value.trim();
  if (!formatNamed(to)) return say(`There is no format called "${to}".`);
  const [{ files, frames: all }] = state.slots;
  const name = `${files[0].name.replace(/\.[^.]*$/, '')}.${to}`;
  const count = at('which').value === 'all' ? all - state.frame : 1;
  const { blob, stopped } = await withProgress('Converting frame', 'convert', 0, { to, first: state.frame, count }, shownLook());
  if (!stopped) download(blob, name);
}

async function measure() {
  const result = await withProgress('Comparing frame', 'compareClip', shownLook());
  showComparison(at('compared'), at('plot'), result);
  refresh();
}

async function jump() {
  const found = await withProgress('Looking at frame', 'firstDifference', shownLook());
  at('compared').textContent = describe(found);
  if (!found) return;
  state.frame = found.frame;
  await refresh();
  view.marked = { x: found.x, y: found.y };
  if (view.scale < 8) view.zoomTo(16);
  view.reveal(found);
  later();
}

const tried = (work) => async (event) => {
  try {
    await work(event);
  } catch (error) {
    say(error.message);
  }
};

export function listen() {
  for (const id of ['format', 'width', 'height', 'strides', 'offset']) at(id).addEventListener('change', read);
  for (const name of Object.keys(choices))
    at(name).addEventListener('change', () => {
      slot().look[name] = at(name).value || undefined;
      if (name === 'range') Object.assign(slot(), { isRangeSet: true, isRangeGuessed: false });
      if (state.active === 1) engine.call('look', 1, slot().look);
      showCommand();
      refresh();
    });
  at('alpha').addEventListener('change', () => ((state.alpha = at('alpha').value), refresh()));
  at('background').addEventListener('input', () => {
    Object.assign(state, { background: at('background').value, alpha: 'colour' });
    at('alpha').value = 'colour';
    if (colourOf(state.background)) refresh();
  });
  at('gain').addEventListener('change', () => ((state.gain = Number(at('gain').value)), refresh()));
  view.onWipe = () => (at('wipe-at').value = String(Math.round(view.wipeAt * 1000)));
  at('wipe-at').addEventListener('input', () => {
    view.wipeAt = Number(at('wipe-at').value) / 1000;
    view.draw();
  });
  at('modes').addEventListener('click', ({ target }) => target.dataset.mode && setMode(target.dataset.mode));
  at('chart-kind').addEventListener('click', ({ target }) => {
    if (!target.dataset.chart) return;
    state.chart = target.dataset.chart;
    fillForm();
    later();
  });
  for (const i of [0, 1]) at(`slot-${i}`).addEventListener('click', () => ((state.active = i), fillForm()));
  at('close-second').addEventListener('click', () => {
    state.slots[1] = blank();
    state.active = 0;
    engine.call('close', 1);
    at('plot').replaceChildren();
    at('compared').textContent = '';
    state.frame = Math.min(state.frame, frames() - 1);
    fillForm();
    refresh();
  });
  at('measure').addEventListener('click', tried(measure));
  at('jump').addEventListener('click', tried(jump));
  at('save-png').addEventListener('click', tried(savePng));
  at('save').addEventListener('click', tried(saveConverted));
  at('stop').addEventListener('click', () => engine.stop());
  for (const id of ['to', 'which']) at(id).addEventListener('change', () => showCommand(false));
  at('copy').addEventListener('click', tried(async () => {
    await navigator.clipboard.writeText(at('command').textContent).catch(() => getSelection().selectAllChildren(at('command')));
  }));
}
