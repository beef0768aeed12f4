// Numbers of pictures: how often each code value is there, where in the picture, and how far two pictures differ.
import { componentsOf, samplesOf } from './components.js';

const waveColumns = 320;
const waveLevels = 128;
const bins = 256;

const planeRows = (picture, component) => picture.layout.planes[component.plane].rows;

/** Histogram and waveform of each component. Of tall pictures, the waveform takes every second or third row. */
export function charts(morvane, picture) {
  const { format, width } = picture.description;
  return componentsOf(morvane.formats.get(format)).map((c) => {
    const count = samplesOf(c, width);
    const rows = planeRows(picture, c);
    const histogram = new Uint32Array(bins);
    const wave = new Uint16Array(waveColumns * waveLevels);
    const columns = Math.min(waveColumns, count);
    const column = Uint16Array.from({ length: count }, (_, i) => Math.floor((i * columns) / count));
    const every = Math.ceil(rows / 540);
    let [least, most, sum] = [Infinity, -Infinity, 0];
    for (let y = 0; y < rows; ++y) {
      const line = morvane.readRow(picture, c.plane, y)[c.line];
      const inWave = y % every === 0;
      for (let i = 0; i < count; ++i) {
        const value = line[i];
        if (value < least) least = value;
        if (value > most) most = value;
        sum += value;
        ++histogram[value >> (c.bits - 8)];
        if (inWave) ++wave[(value >> (c.bits - 7)) * waveColumns + column[i]];
      }
    }
    return { key: c.key, name: c.name, bits: c.bits, histogram, wave, columns, waveColumns, waveLevels, least, most, mean: sum / (count * rows) };
  });
}

// Rows of bytes that are the same have no samples that differ.
function sameBytes(a, b, component, row) {
  const bytesOf = (picture) => {
    const { offset, stride, rowBytes } = picture.layout.planes[component.plane];
    return picture.bytes.subarray(offset + row * stride, offset + row * stride + rowBytes);
  };
  const [first, second] = [bytesOf(a), bytesOf(b)];
  for (let i = 0; i < first.length; ++i) if (first[i] !== second[i]) return false;
  return true;
}

/** The PSNR of each component in decibels, and the first sample that differs, of two pictures of one format. */
export function compare(morvane, a, b) {
  const { format, width } = a.description;
  let first;
  const components = componentsOf(morvane.formats.get(format)).map((c) => {
    const count = samplesOf(c, width);
    const rows = planeRows(a, c);
    let [squares, most] = [0, 0];
    for (let y = 0; y < rows; ++y) {
      if (sameBytes(a, b, c, y)) continue;
      const [left, right] = [a, b].map((picture) => morvane.readRow(picture, c.plane, y)[c.line]);
      for (let i = 0; i < count; ++i) {
        const gap = left[i] - right[i];
        if (gap === 0) continue;
        squares += gap * gap;
        most = Math.max(most, Math.abs(gap));
        const x = Math.floor((i * c.groupPixels) / c.samples);
        const at = { x, y: y * c.imageRows, component: c.key, values: [left[i], right[i]] };
        if (!first || at.y < first.y || (at.y === first.y && at.x < first.x)) first = at;
      }
    }
    const peak = 2 ** c.bits - 1;
    const psnr = squares === 0 ? Infinity : 10 * Math.log10((count * rows * peak * peak) / squares);
    return { key: c.key, psnr, most };
  });
  return { components, first };
}
