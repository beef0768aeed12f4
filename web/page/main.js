// The page: files that are dropped and chosen, keys, and time.
import { at, frames, hasSecond, later, mark, refresh, say, view } from './app.js';
import { fillChoices, fillForm, listen, nextComponent, setMode } from './controls.js';
import { example, open } from './opening.js';
import { fromAddress, state } from './state.js';

function goTo(frame) {
  const bounded = Math.min(Math.max(frame, 0), Math.max(0, frames() - 1));
  if (bounded === state.frame) return;
  state.frame = bounded;
  fillCommandLater();
  return refresh();
}

let commandTimer;
function fillCommandLater() {
  clearTimeout(commandTimer);
  commandTimer = setTimeout(fillForm, 200);
}

let began;
function play(isOn = began === undefined) {
  at('play').setAttribute('aria-pressed', String(isOn));
  at('play').setAttribute('aria-label', isOn ? 'Pause' : 'Play');
  at('play').textContent = isOn ? '❚❚' : '▶';
  began = isOn ? { time: performance.now(), frame: state.frame } : undefined;
  if (isOn) requestAnimationFrame(tick);
  else later();
}

async function tick(now) {
  if (began === undefined) return;
  const rate = Math.max(0.1, Number(at('rate').value) || 25);
  const passed = Math.max(0, Math.floor(((now - began.time) * rate) / 1000));
  await goTo((began.frame + passed) % Math.max(1, frames()));
  requestAnimationFrame(tick);
}

function moveMark(x, y) {
  const from = view.marked ?? { x: -x, y: -y };
  const to = { x: Math.min(Math.max(from.x + x, 0), view.width - 1), y: Math.min(Math.max(from.y + y, 0), view.height - 1) };
  view.reveal(to);
  mark(to);
}

const arrows = { ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1] };
const keys = {
  ' ': () => play(),
  '+': () => view.zoomBy(2),
  '=': () => view.zoomBy(2),
  '-': () => view.zoomBy(1 / 2),
  0: () => view.fit(),
  1: () => view.zoomTo(1),
  c: nextComponent,
  d: () => hasSecond() && setMode(state.mode === 'difference' ? 'side' : 'difference'),
  o: () => at('files').click(),
  ArrowLeft: () => goTo(state.frame - 1),
  ArrowRight: () => goTo(state.frame + 1),
  Home: () => goTo(0),
  End: () => goTo(frames() - 1),
};

function onKey(event) {
  if (event.ctrlKey || event.metaKey || event.altKey) return;
  const { target, key } = event;
  if (target.closest('input, select, textarea, [contenteditable]')) return;
  if (key === ' ' && target.closest('button, summary')) return;
  const isArrow = event.shiftKey && arrows[key];
  if (isArrow) moveMark(...arrows[key]);
  else if (keys[key]) keys[key]();
  else return;
  event.preventDefault();
}

function listenForFiles() {
  for (const [button, input, slot] of [['choose', 'files', 0], ['choose-empty', 'files', 0], ['choose-second', 'second-files', 1]]) {
    at(button).addEventListener('click', () => at(input).click());
    at(input).onchange = () => {
      const chosen = [...at(input).files];
      at(input).value = '';
      open(slot, chosen);
    };
  }
  const drop = at('drop');
  const show = (isOn) => {
    drop.hidden = !isOn;
    drop.lastElementChild.hidden = state.slots[0].frames === 0;
  };
  const over = (event) => event.target.closest?.('#drop div');
  addEventListener('dragover', (event) => {
    event.preventDefault();
    show(true);
    for (const half of drop.children) half.classList.toggle('over', half === over(event));
  });
  addEventListener('dragleave', (event) => event.relatedTarget === null && show(false));
  addEventListener('drop', (event) => {
    event.preventDefault();
    show(false);
    open(Number(over(event)?.dataset.slot ?? 0), event.dataTransfer.files);
  });
}

function listenForTheRest() {
  addEventListener('keydown', onKey);
  at('frame').addEventListener('input', () => goTo(Number(at('frame').value)));
  at('previous').addEventListener('click', () => goTo(state.frame - 1));
  at('next').addEventListener('click', () => goTo(state.frame + 1));
  at('play').addEventListener('click', () => play());
  at('fit').addEventListener('click', () => view.fit());
  at('one').addEventListener('click', () => view.zoomTo(1));
  at('zoom-in').addEventListener('click', () => view.zoomBy(2));
  at('zoom-out').addEventListener('click', () => view.zoomBy(1 / 2));
  at('view').addEventListener('pointermove', (event) => event.buttons === 0 && mark(view.pixelAt(event.offsetX, event.offsetY)));
  at('view').addEventListener('click', (event) => mark(view.pixelAt(event.offsetX, event.offsetY)));
  at('theme').addEventListener('click', () => {
    const isDark = getComputedStyle(document.documentElement).getPropertyValue('--back').trim() === '#101216';
    document.documentElement.dataset.theme = isDark ? 'light' : 'dark';
  });
  at('example').addEventListener('click', example);
}

fromAddress(location.hash);
const zoom = Number(state.zoom);
if (zoom > 0) Object.assign(view, { isFit: false, scale: zoom });
listenForFiles();
listenForTheRest();
listen();
fillChoices().then(
  () => {
    fillForm();
    document.body.dataset.ready = 'yes';
  },
  (error) => say(`The library cannot be loaded: ${error.message}`),
);
