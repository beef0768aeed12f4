// Pixels for the canvas. The library makes the colours; what is added here is alpha over something, and components in grey.
import { componentsOf, imageFormat, isColour, sampleAt } from './components.js';
import { alphaByKey } from './key.js';

/** How colours are made: a plan and its pictures for each kind of picture, kept while they are used. */
export class Colours {
  #morvane;
  #made = new Map();

  constructor(morvane) {
    this.#morvane = morvane;
  }

  #converter(from, strides, to, { filter, siting }) {
    const key = JSON.stringify([from, strides, to, filter, siting]);
    const kept = this.#made.get(key);
    if (kept) return kept;
    if (this.#made.size > 3) this.#drop(this.#made.keys().next().value);
    const plan = this.#morvane.plan(from, to, { filter, siting });
    const converter = { plan, destination: this.#morvane.picture(to) };
    // What lies behind rows is not written, and is saved.
    converter.destination.bytes.fill(0);
    this.#made.set(key, converter);
    return converter;
  }

  #drop(key) {
    const { plan, destination } = this.#made.get(key);
    plan.free();
    destination.free();
    this.#made.delete(key);
  }

  /** The picture in another format; a view that lasts until the next call. */
  convert(picture, to, { matrix, range, filter, siting } = {}) {
    const { format, width, height } = picture.description;
    const facts = this.#morvane.formats.get(format);
    const single = imageFormat(facts, [...this.#morvane.formats.values()]);
    const from = { format: single?.name ?? format, width, height, matrix, range };
    const source = single === undefined ? picture : this.#first(picture, from);
    try {
      const strides = picture.layout.planes.map((p) => p.stride);
      const { plan, destination } = this.#converter(from, strides, { width, height, ...to }, { filter, siting });
      plan.run(source, destination);
      return destination;
    } finally {
      if (source !== picture) source.free();
    }
  }

  // The first of two images in one.
  #first(picture, description) {
    const first = this.#morvane.picture(description, { strides: [picture.layout.planes[0].stride] });
    first.bytes.set(picture.plane(0));
    return first;
  }
}

const checker = (x, y) => (((x >> 3) + (y >> 3)) & 1 ? 204 : 255);

function over(pixels, width, height, behind) {
  for (let y = 0, i = 0; y < height; ++y)
    for (let x = 0; x < width; ++x, i += 4) {
      const a = pixels[i + 3];
      if (a === 255) continue;
      const shade = behind ? 0 : checker(x, y);
      for (let c = 0; c < 3; ++c) {
        const back = behind ? behind[c] : shade;
        pixels[i + c] = Math.floor((pixels[i + c] * a + back * (255 - a) + 127) / 255);
      }
      pixels[i + 3] = 255;
    }
}

function opaque(pixels) {
  const words = new Uint32Array(pixels.buffer, pixels.byteOffset, pixels.length / 4);
  for (let i = 0; i < words.length; ++i) words[i] |= 0xff000000;
}

/** A component in grey, a sample for each pixel that it belongs to. */
function grey(morvane, picture, component) {
  const { width, height } = picture.description;
  const pixels = new Uint8ClampedArray(width * height * 4);
  const words = new Uint32Array(pixels.buffer);
  const at = Int32Array.from({ length: width }, (_, x) => sampleAt(component, x));
  const down = component.bits - 8;
  let line;
  for (let y = 0; y < height; ++y) {
    if (y % component.imageRows === 0) line = morvane.readRow(picture, component.plane, y / component.imageRows)[component.line];
    for (let x = 0, i = y * width; x < width; ++x, ++i) words[i] = 0xff000000 | (0x10101 * (line[at[x]] >> down));
  }
  return pixels;
}

function greyOf(alpha) {
  const pixels = new Uint8ClampedArray(alpha.length * 4);
  const words = new Uint32Array(pixels.buffer);
  alpha.forEach((a, i) => (words[i] = 0xff000000 | (0x10101 * a)));
  return pixels;
}

/** What is shown of a picture, as bytes of RGB with alpha that nobody else has. */
export function render(morvane, colours, picture, look) {
  const format = morvane.formats.get(picture.description.format);
  const components = componentsOf(format);
  const key = alphaByKey(morvane, picture, look);
  if (key && look.component === 'A') return greyOf(key);
  const chosen = components.find((c) => c.key === look.component);
  if (chosen || !isColour(format)) return grey(morvane, picture, chosen ?? components[0]);
  const pixels = colours.convert(picture, { format: 'rgba' }, look).clamped.slice();
  if (!format.hasAlpha && !key) return pixels;
  key?.forEach((a, i) => (pixels[4 * i + 3] = a));
  if (look.alpha === 'ignore') opaque(pixels);
  else over(pixels, picture.description.width, picture.description.height, look.alpha === 'colour' ? look.background : undefined);
  return pixels;
}

/** The first picture minus the second, amplified, around grey. */
export function difference(first, second, gain) {
  const result = new Uint8ClampedArray(first.length);
  for (let i = 0; i < first.length; i += 4) {
    for (let c = 0; c < 3; ++c) result[i + c] = 128 + gain * (first[i + c] - second[i + c]);
    result[i + 3] = 255;
  }
  return result;
}

/** As many pixels of it as fit. */
export function thumbnail(pixels, width, height, most) {
  const scale = Math.max(1, Math.max(width, height) / most);
  const [w, h] = [Math.max(1, Math.round(width / scale)), Math.max(1, Math.round(height / scale))];
  const small = new Uint8ClampedArray(w * h * 4);
  for (let y = 0, to = 0; y < h; ++y)
    for (let x = 0; x < w; ++x, to += 4) {
      const [x0, x1] = [Math.floor((x * width) / w), Math.max(Math.floor(((x + 1) * width) / w), Math.floor((x * width) / w) + 1)];
      const [y0, y1] = [Math.floor((y * height) / h), Math.max(Math.floor(((y + 1) * height) / h), Math.floor((y * height) / h) + 1)];
      const step = Math.max(1, Math.floor((x1 - x0) / 4));
      let [r, g, b, count] = [0, 0, 0, 0];
      for (let v = y0; v < y1; v += step)
        for (let u = x0; u < x1; u += step, ++count) {
          const i = (v * width + u) * 4;
          r += pixels[i];
          g += pixels[i + 1];
          b += pixels[i + 2];
        }
      small.set([r / count, g / count, b / count, 255], to);
    }
  return { width: w, height: h, pixels: small };
}
