// The key of a fill: alpha for each pixel from the luma of another image.
import { componentsOf, imageFormat, sampleAt } from './components.js';

const wordOfKeys = /(^|[^a-z])(key|alpha|matte)([^a-z]|$)/i;

/** Of two files of one length, fill and key in this order where the name of one says that it is a key. */
export function fillAndKey(files) {
  if (files.length !== 2 || files[0].size !== files[1].size) return undefined;
  const isKey = files.map(({ name }) => wordOfKeys.test(name));
  if (isKey[0] === isKey[1]) return undefined;
  return isKey[1] ? files : [files[1], files[0]];
}

const isPair = (morvane, format) => imageFormat(format, [...morvane.formats.values()]) !== undefined;

/** Whether its pictures have a key, in a file of its own or as the second of two images. */
export const hasKey = (morvane, { keyFile, description }) =>
  keyFile !== undefined || isPair(morvane, morvane.formats.get(description.format));

// A key has luma in video range, where 16 is transparent and 235 opaque; of RGB, green is taken as it is.
function alphaOf(value, { name, bits }, isFull) {
  const [least, most] = name === 'G' || isFull ? [0, 2 ** bits - 1] : [16 * 2 ** (bits - 8), 235 * 2 ** (bits - 8)];
  return Math.min(255, Math.max(0, Math.round(((value - least) * 255) / (most - least))));
}

/** The alpha of each pixel, or nothing for pictures without a key. */
export function alphaByKey(morvane, picture, { range }) {
  const format = morvane.formats.get(picture.description.format);
  const ofPair = isPair(morvane, format) ? picture : undefined;
  const key = picture.key ?? ofPair;
  if (key === undefined) return undefined;
  const components = componentsOf(format).filter((c) => picture.key !== undefined || c.plane === 1);
  const component = components.find((c) => ['Y', 'L', 'G'].includes(c.name)) ?? components[0];
  const { width, height } = picture.description;
  const alpha = new Uint8Array(width * height);
  const at = Int32Array.from({ length: width }, (_, x) => sampleAt(component, x));
  for (let y = 0; y < height; ++y) {
    const line = morvane.readRow(key, component.plane, Math.floor(y / component.imageRows))[component.line];
    for (let x = 0; x < width; ++x) alpha[y * width + x] = alphaOf(line[at[x]], component, range === 'full');
  }
  return alpha;
}
