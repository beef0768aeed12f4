// Histogram and waveform of each component on small canvases.

const inks = { Y: '#8b95a3', L: '#8b95a3', Cb: '#3b82f6', Cr: '#ef4444', R: '#ef4444', G: '#22a559', B: '#3b82f6', A: '#a855f7' };

function histogram(context, { histogram: bars }, ink) {
  const { width, height } = context.canvas;
  // One value that fills the picture would leave nothing of the others, so the root is drawn.
  const top = Math.sqrt(Math.max(...bars));
  context.fillStyle = ink;
  bars.forEach((count, i) => {
    const h = (Math.sqrt(count) / top) * (height - 6);
    context.fillRect((i * width) / bars.length, height - h, Math.max(1, width / bars.length), h);
  });
}

function waveform(context, { wave, columns, waveColumns, waveLevels }, ink) {
  const { width, height } = context.canvas;
  const image = context.createImageData(width, height);
  const colour = [1, 3, 5].map((i) => Number.parseInt(ink.slice(i, i + 2), 16));
  let top = 1;
  for (const count of wave) if (count > top) top = count;
  for (let y = 0, to = 0; y < height; ++y) {
    const level = Math.floor(((height - 1 - y) * waveLevels) / height);
    for (let x = 0; x < width; ++x, to += 4) {
      const count = wave[level * waveColumns + Math.floor((x * columns) / width)];
      image.data.set([...colour, count ? 70 + 185 * Math.sqrt(count / top) : 0], to);
    }
  }
  context.putImageData(image, 0, 0);
}

/** Draws the charts of all components into a box. */
export function drawCharts(box, charts, kind) {
  const drawn = charts.map((chart) => {
    const part = document.createElement('div');
    part.className = 'chart';
    const text = document.createElement('div');
    const shown = (value) => Math.round(value * 10) / 10;
    for (const word of [chart.key, `${chart.least} to ${chart.most}, mean ${shown(chart.mean)}`]) text.append(Object.assign(document.createElement('span'), { textContent: word }));
    const canvas = document.createElement('canvas');
    [canvas.width, canvas.height] = [640, 148];
    canvas.setAttribute('role', 'img');
    canvas.setAttribute('aria-label', `${kind} of ${chart.key}: from ${chart.least} to ${chart.most}, mean ${shown(chart.mean)}`);
    const draw = kind === 'waveform' ? waveform : histogram;
    draw(canvas.getContext('2d'), chart, inks[chart.name]);
    part.append(text, canvas);
    return part;
  });
  box.replaceChildren(...drawn);
}
