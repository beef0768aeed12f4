// What is set, in one object, and the address that says the same. Names of files are no part of it.

export const state = {
  slots: [blank(), blank()],
  active: 0,
  frame: 0,
  component: '',
  alpha: 'checker',
  background: '#ff00ff',
  mode: 'side',
  gain: 8,
  chart: 'histogram',
  zoom: 'fit',
};

export function blank() {
  return {
    name: '', files: undefined, kind: '', frames: 0, components: [], guesses: [], thumbnails: [],
    settings: { format: undefined, width: undefined, height: undefined, strides: undefined, offset: 0 },
    look: { matrix: undefined, range: undefined, filter: undefined, siting: undefined },
  };
}

export const colourOf = (hex) => [1, 3, 5].map((i) => Number.parseInt(hex.slice(i, i + 2), 16));

export function shownLook() {
  const { component, alpha, background, gain, slots } = state;
  return { ...slots[0].look, component, alpha, background: colourOf(background), gain };
}

function slotWords(words, { settings, look }, prefix) {
  const { format, width, height, strides, offset } = settings;
  const put = (name, value) => {
    if (value !== undefined && value !== '' && value !== 0) words.set(prefix + name, value);
  };
  put('format', format);
  if (width && height) put('size', `${width}x${height}`);
  put('stride', strides?.join(','));
  put('header', offset);
  for (const [name, value] of Object.entries(look)) put(name, value);
}

/** The settings as what stands behind # in an address. */
export function toAddress() {
  const words = new URLSearchParams();
  slotWords(words, state.slots[0], '');
  if (state.slots[1].files) slotWords(words, state.slots[1], 'second-');
  const usual = { frame: 0, component: '', alpha: 'checker', background: '#ff00ff', mode: 'side', gain: 8, chart: 'histogram', zoom: 'fit' };
  for (const [name, value] of Object.entries(usual)) if (state[name] !== value) words.set(name, state[name]);
  return words.toString();
}

const count = (text) => (/^\d+$/.test(text ?? '') ? Number(text) : undefined);

function slotFrom(words, slot, prefix) {
  const word = (name) => words.get(prefix + name) ?? undefined;
  const [width, height] = (word('size') ?? '').split('x').map(count);
  slot.settings = { format: word('format'), width, height, strides: word('stride')?.split(',').map(Number), offset: count(word('header')) ?? 0 };
  for (const name of Object.keys(slot.look)) slot.look[name] = word(name);
}

export function fromAddress(hash) {
  const words = new URLSearchParams(hash.replace(/^#/, ''));
  state.slots.forEach((slot, i) => slotFrom(words, slot, i === 0 ? '' : 'second-'));
  for (const name of ['component', 'alpha', 'mode', 'chart', 'zoom']) if (words.has(name)) state[name] = words.get(name);
  if (/^#[0-9a-f]{6}$/i.test(words.get('background') ?? '')) state.background = words.get('background');
  state.frame = count(words.get('frame')) ?? 0;
  state.gain = count(words.get('gain')) ?? 8;
}

const quoted = (text) => (/^[\w./,:=+-]+$/.test(text) ? text : `'${text.replaceAll("'", "'\\''")}'`);

/** The line that makes the same picture without this page. */
export function commandOf(slot, frame, { to, all, png }) {
  const { settings, look, kind, files } = slot;
  // The command makes pictures of the fill alone.
  const names = (settings.isKeyed ? files.slice(0, 1) : files).map((f) => f.name);
  const options = [];
  const put = (name, value) => value !== undefined && value !== '' && options.push(name, quoted(String(value)));
  const isRaw = kind === 'raw';
  const throughPipe = isRaw && settings.offset > 0;
  if (isRaw) {
    put('-f', settings.format);
    put('-s', `${settings.width}x${settings.height}`);
    put('--src-stride', settings.strides?.join(','));
  }
  if (!png) put('-t', to);
  if (frame > 0) put('--skip', frame);
  if (!all) put('--frames', 1);
  const matrix = { 'BT.601': 'bt601', 'BT.709': 'bt709', 'BT.2020': 'bt2020' }[look.matrix];
  put('--matrix', matrix);
  put(slot.model === 'RGB' ? '--rgb-range' : '--range', look.range);
  put('--chroma', look.filter);
  put('--siting', look.siting);
  if (png) put('-t', to);
  const stem = names[0].replace(/\.[^.]*$/, '');
  const target = png ? `${stem}_${frame}.png` : `${stem}.${to}`;
  const source = throughPipe ? ['-'] : names.length > 1 ? ['--planes', quoted(names.join(','))] : [quoted(names[0])];
  const line = ['morvane', 'convert', ...options, ...source, quoted(target)].join(' ');
  return throughPipe ? `tail -c +${settings.offset + 1} ${quoted(names[0])} | ${line}` : line;
}
