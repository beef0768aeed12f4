// What a raw file may be: by the words of its name, by its length, and by how smooth its pixels are.
import { componentsOf, isColour, samplesOf } from './components.js';
import { RawSource, bandParts, bandRows } from './source.js';

// Sizes of pictures, those first that are met most often.
const sizes = [
  '1920x1080', '1280x720', '3840x2160', '640x480', '720x576', '720x486', '720x480', '640x360', '352x288', '1440x1080',
  '4096x2160', '2048x1080', '960x540', '1920x1088', '854x480', '848x480', '320x240', '176x144', '480x270', '416x240', '832x480', '800x600',
  '1024x768', '1280x1024', '1600x1200', '2560x1440', '2560x1600', '1080x1920', '720x1280', '7680x4320', '1280x960', '2048x1152', '2592x1944',
  '256x256', '512x512', '1024x1024', '128x128', '64x64',
].map((size) => size.split('x').map(Number));
const headers = [0, 16, 32, 64, 128, 256, 512, 1024, 2048, 4096];
const alignments = [64, 128, 256];
const mostExamined = 110;
// Above it, neighbours differ as they do in noise or in a picture of the wrong width.
const roughestPicture = 0.5;
// Filters overshoot, so that a few samples of video range lie outside of it.
const leastOutside = 0.01;
const leastSpread = 96;
const mostStrides = 12;
const widestPicture = 4;

/** The format and the size that are words of the name: the longest that names one format, as the command has it. */
export function fromName(path, morvane) {
  const name = path.slice(path.lastIndexOf('/') + 1);
  const at = [0];
  for (const { index } of name.matchAll(/[^0-9A-Za-z]/g)) at.push(index + 1);
  at.push(name.length + 1);
  const result = { format: undefined, size: undefined };
  let longest = 0;
  for (let first = 0; first + 1 < at.length; ++first)
    for (let last = first + 1; last < at.length; ++last) {
      const words = name.slice(at[first], at[last] - 1);
      if (!result.size && /^[1-9]\d*x[1-9]\d*$/i.test(words)) result.size = words.toLowerCase().split('x').map(Number);
      if (words.length <= longest) continue;
      const called = morvane.formatsCalled(words);
      if (called.length !== 1) continue;
      result.format = called[0].name;
      longest = words.length;
    }
  return result;
}

// A format that many systems have a name for is met more often.
function popularity({ fourcc, ffmpeg, v4l2, gstreamer, apple, also }) {
  return [fourcc, ffmpeg, v4l2, gstreamer, apple, also].filter((name) => name !== '').length / 6;
}

const lengthOf = (layout, files) => (files.length === 1 ? [layout.bytes] : layout.planes.map((p) => p.stride * p.rows));

function fitsWhole(layout, files, offset) {
  const lengths = lengthOf(layout, files);
  if (lengths.length !== files.length) return 0;
  const frames = files.map((f, i) => (f.size - offset) / lengths[i]);
  return frames[0] >= 1 && frames.every((n) => n === frames[0] && Number.isInteger(n)) ? frames[0] : 0;
}

// How the bytes of a format and size may become a whole number of frames.
function* fits(morvane, files, description) {
  const layout = morvane.layOut(description);
  const tight = fitsWhole(layout, files, 0);
  if (tight) {
    yield { frames: tight, likely: 1 };
    return;
  }
  for (const alignment of alignments) {
    const strides = layout.planes.map((p) => Math.ceil(p.rowBytes / alignment) * alignment);
    const frames = fitsWhole(morvane.layOut(description, { strides }), files, 0);
    if (frames && frames < 10000) yield { frames, strides, likely: 0.4 };
  }
  for (const offset of headers.slice(1)) {
    const frames = fitsWhole(layout, files, offset);
    if (frames === 1) yield { frames, offset, likely: 0.3 };
  }
  // A name that says everything is believed where the file is cut short behind whole frames.
  const frames = files.length === 1 ? Math.floor(files[0].size / layout.bytes) : 0;
  if (frames >= 1) yield { frames, likely: -2 };
}

function candidates(morvane, files, named, given) {
  const format = given.format ?? named.format;
  const formats = format ? [morvane.formats.get(format)] : [...morvane.formats.values()];
  const size = given.width && given.height ? [given.width, given.height] : named.size;
  const tried = size ? [size] : sizes;
  const found = [];
  for (const f of formats)
    tried.forEach(([width, height], rank) => {
      for (const fit of fits(morvane, files, { format: f.name, width, height })) {
        if (fit.likely < 0 && !(named.format && named.size) && !(format && size)) continue;
        const usual = popularity(f) + (isColour(f) ? 0.3 : -0.3) - rank / 60 - Math.log10(fit.frames) / 8 - (fit.frames > 1 ? 0.2 : 0);
        found.push({ format: f.name, width, height, ...fit, score: fit.likely + usual });
      }
    });
  return found.sort((a, b) => b.score - a.score);
}

const gap = (a, b) => Math.abs(a - b);

// How much neighbours differ, in shares of how much samples differ at all: near 0 for pictures, 1 and more for noise.
function roughness(morvane, picture) {
  const format = morvane.formats.get(picture.description.format);
  let [total, weights] = [0, 0];
  const spreads = { luma: 0, chroma: 0 };
  for (const c of componentsOf(format)) {
    const count = samplesOf(c, picture.description.width);
    const { rows } = picture.layout.planes[c.plane];
    const together = rows / (picture.description.height < bandRows ? 1 : bandParts);
    const peak = 2 ** c.bits;
    let before;
    let [near, pairs, sum, squares, extremes, n] = [0, 0, 0, 0, 0, 0];
    for (let y = 0; y < rows; ++y) {
      const line = morvane.readRow(picture, c.plane, y)[c.line];
      if (y % together === 0) before = undefined;
      for (let i = 1; i < count; ++i) {
        near += gap(line[i], line[i - 1]) + (before ? gap(line[i], before[i]) : 0);
        pairs += before ? 2 : 1;
        sum += line[i];
        squares += line[i] * line[i];
        extremes += line[i] === 0 || line[i] === peak - 1 ? 1 : 0;
        ++n;
      }
      before = line;
    }
    if (n === 0) continue;
    const mean = sum / n;
    const spread = Math.sqrt(Math.max(0, squares / n - mean * mean));
    const isChroma = format.model === 'YCbCr' && (c.name === 'Cb' || c.name === 'Cr');
    const offCentre = isChroma ? Math.max(0, gap(mean / peak, 0.5) - 0.08) * 4 : 0;
    // Alpha is mostly 0 or full, and not 0 everywhere.
    const absent = c.name !== 'A' ? 0 : mean < peak / 64 ? 0.6 : 0.8 * (1 - extremes / n);
    const flat = !isChroma && c.name !== 'A' && spread < peak / 256 ? 0.5 : 0;
    const weight = isChroma ? 0.5 : 1;
    const part = isChroma ? 'chroma' : 'luma';
    if (format.model === 'YCbCr' && c.name !== 'A') spreads[part] = Math.max(spreads[part], spread / peak);
    total += weight * (near / pairs / (spread + peak / 128) + offCentre + absent + flat);
    weights += weight;
  }
  // Colours vary less than brightness does; what varies as much is often brightness taken for colours.
  const vivid = spreads.chroma > 0 ? 0.2 * Math.min(1.5, spreads.chroma / (spreads.luma + 1 / 256)) : 0;
  return weights ? total / weights + vivid : 1;
}

// The distances at which bytes repeat best, which are those of rows.
async function likelyStrides(file) {
  const bytes = new Uint8Array(await file.slice(0, 1 << 17).arrayBuffer());
  const gaps = new Float64Array(Math.max(0, Math.min(16384, Math.floor(bytes.length / 3))));
  for (let stride = 32; stride < gaps.length; ++stride) {
    const step = Math.max(1, Math.floor((bytes.length - stride) / 1500)) | 1;
    let [sum, n] = [0, 0];
    for (let i = 0; i + stride < bytes.length; i += step, ++n) sum += gap(bytes[i], bytes[i + stride]);
    gaps[stride] = sum / n;
  }
  const least = gaps.subarray(32).reduce((a, b) => Math.min(a, b), Infinity);
  const found = [];
  for (let stride = 32; stride < gaps.length; ++stride)
    if (gaps[stride] <= least * 1.12 && gaps[stride] <= Math.min(gaps[stride - 1] || Infinity, gaps[stride + 1] ?? Infinity)) found.push(stride);
  return found.sort((a, b) => gaps[a] - gaps[b]).slice(0, mostStrides);
}

// Heights with which a number of frames fill the file, and one that nearly does.
function* heights(morvane, size, format, width, stride) {
  const layOut = (height) => morvane.layOut({ format, width, height });
  const some = 48;
  const bytesOfRow = layOut(some).bytes / some;
  const leastHeight = Math.max(1, Math.floor(width / widestPicture));
  for (let frames = 1; size / frames / bytesOfRow >= leastHeight; ++frames) {
    if (frames > 1 && (size % frames !== 0 || size / frames / bytesOfRow > width * 2)) continue;
    const near = Math.round(size / frames / bytesOfRow);
    const whole = [near, near - 1, near + 1].find((height) => height > 0 && layOut(height).bytes * frames === size);
    if (whole) yield { height: whole, frames, whole: 0.5 };
    const cut = Math.floor(size / bytesOfRow);
    if (frames === 1 && !whole && cut > 0 && layOut(cut).bytes <= size && size - layOut(cut).bytes < 2 * stride) yield { height: cut, frames, whole: 0 };
  }
}

// The columns of luma or the like in which something stands: not 0 in all rows, nor in the last group of pixels the same as
// to the left in all rows, with which encoders fill it.
function columnsUsed(lines, groupPixels) {
  const inSome = (isSo) => lines.some(isSo);
  let used = lines[0].length;
  while (used > 1 && !inSome((line) => line[used - 1] !== 0)) --used;
  used = Math.ceil(used / groupPixels) * groupPixels;
  const least = used - groupPixels + 1;
  while (used > least && !inSome((line) => line[used - 1] !== line[used - 2] && line[used - 1] !== 0)) --used;
  return used;
}

// Rows of some formats are padded to multiples of many pixels, so that a stride leaves the width open.
async function withoutPadding(morvane, file, candidate) {
  const strideOf = (width) => morvane.layOut({ format: candidate.format, width, height: 1 }).planes[0].stride;
  const format = morvane.formats.get(candidate.format);
  const whole = componentsOf(format).find((c) => c.plane === 0 && c.samples === c.groupPixels);
  if (strideOf(1) === format.planes[0].groupBytes || !whole) return candidate;
  const { line, groupPixels } = whole;
  const band = await new RawSource([file], morvane, candidate).band();
  const lines = Array.from({ length: band.description.height }, (_, y) => morvane.readRow(band, 0, y)[line]);
  band.free();
  const width = Math.min(columnsUsed(lines, groupPixels), candidate.width);
  return strideOf(width) === strideOf(candidate.width) ? { ...candidate, width } : candidate;
}

async function bySimilarRows(morvane, [file], given) {
  const found = [];
  for (const stride of await likelyStrides(file))
    for (const f of given.format ? [morvane.formats.get(given.format)] : morvane.formats.values()) {
      const [plane] = f.planes;
      const width = Math.floor((stride * plane.groupPixels) / plane.groupBytes);
      if (width < 1 || morvane.layOut({ format: f.name, width, height: 1 }).planes[0].stride !== stride) continue;
      for (const { height, frames, whole } of heights(morvane, file.size, f.name, width, stride)) {
        const odd = Math.max(0, gap(Math.log2(width / height), 0.6) - 0.6) / 4 + (frames > 1 ? 0.25 + Math.log10(frames) / 4 : 0);
        const candidate = await withoutPadding(morvane, file, { format: f.name, width, height, frames });
        found.push({ ...candidate, score: popularity(f) + (isColour(f) ? 0.3 : -0.3) + whole - odd });
      }
    }
  return found.sort((a, b) => b.score - a.score).slice(0, mostExamined);
}

/** The likeliest settings first. What is given is not guessed. */
export async function guess(morvane, files, given = {}) {
  const named = fromName(files[0].name, morvane);
  const found = candidates(morvane, files, named, given);
  // A name that fits needs no look at what is inside.
  const isSure = found.length > 0 && found.length <= 2 && named.size && named.format;
  if (isSure) return found.map((g) => ({ ...g, sure: true }));
  const examined = await examine(morvane, files, found.slice(0, mostExamined));
  const isDoubtful = !examined.some((g) => g.rough < roughestPicture);
  if (isDoubtful && files.length === 1) examined.push(...(await examine(morvane, files, await bySimilarRows(morvane, files, given))));
  return examined.sort((a, b) => b.score - a.score);
}

async function examine(morvane, files, candidates) {
  const examined = [];
  for (const candidate of candidates) {
    const band = await new RawSource(files, morvane, candidate).band();
    const rough = roughness(morvane, band);
    band.free();
    examined.push({ ...candidate, rough, score: candidate.score - 4 * Math.min(rough, 1.5) });
  }
  return examined;
}

/** Full where luma goes where video range has none, and nothing where it does not, or is not that of a picture. */
export async function guessRange(morvane, source) {
  const format = morvane.formats.get(source.description.format);
  const luma = componentsOf(format).find((c) => c.name === 'Y' && !c.float);
  if (format.model !== 'YCbCr' || !luma) return undefined;
  const unit = 2 ** (luma.bits - 8);
  const band = await source.band();
  const values = Array.from({ length: band.layout.planes[luma.plane].rows }, (_, y) => [...morvane.readRow(band, luma.plane, y)[luma.line]]).flat();
  band.free();
  const outside = values.filter((v) => v < 16 * unit || v > 235 * unit).length;
  const [least, most] = values.reduce(([a, b], v) => [Math.min(a, v), Math.max(b, v)], [Infinity, 0]);
  return outside > values.length * leastOutside && most - least > leastSpread * unit ? 'full' : undefined;
}

/** Those of the guesses that are shown: alike ones only once. */
export function shown(guesses, most) {
  const seen = new Set();
  return guesses.filter((g) => {
    const key = `${g.format} ${g.width}x${g.height}`;
    return !seen.has(key) && seen.add(key) && seen.size <= most;
  });
}
