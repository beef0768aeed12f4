// What a format's planes hold, sample by sample, from the facts that the library gives.

// The lines of Morvane.readRow by the names of components.
const lineOf = { Y: 0, R: 0, L: 0, Cb: 1, G: 1, Cr: 2, B: 2, A: 3 };

/** Each component of each plane in storage order, without what is unused. */
export function componentsOf(format) {
  const found = [];
  format.planes.forEach((plane, planeIndex) => {
    const words = plane.components.split(' ');
    for (const name of new Set(words)) {
      const line = lineOf[name];
      if (line === undefined) continue;
      const bytes = plane.groupBytes / words.length;
      found.push({
        name, line, plane: planeIndex, planeName: plane.name, bits: plane.bits, samples: plane.samples[line],
        groupPixels: plane.groupPixels, imageRows: plane.imageRows, float: plane.isFloat ? { bytes, order: words.indexOf(name), group: plane.groupBytes } : null,
      });
    }
  });
  const isShared = (name) => found.filter((c) => c.name === name).length > 1;
  return found.map((c) => ({ ...c, key: isShared(c.name) ? `${c.planeName}.${c.name}` : c.name }));
}

/** How many samples a row has, with those that fill its last group. */
export const samplesOf = (component, width) => Math.ceil((width * component.samples) / component.groupPixels);

/** Where in its line the sample is that a column belongs to. */
export const sampleAt = (component, x) => Math.floor((x * component.samples) / component.groupPixels);

/** Of two images in one, the format of each: such a format converts to nothing. */
export function imageFormat(format, formats) {
  const [first, second] = format.planes;
  if (format.planes.length !== 2 || first.components !== second.components) return undefined;
  return formats.find(
    ({ planes }) =>
      planes.length === 1 && planes[0].components === first.components && planes[0].bits === first.bits &&
      planes[0].groupBytes === first.groupBytes,
  );
}

export const isColour = (format) => format.model === 'YCbCr' || format.model === 'RGB';

function floatAt(bytes, at, size) {
  const view = new DataView(bytes.buffer, bytes.byteOffset + at, size);
  if (size === 4) return view.getFloat32(0, true);
  const bits = view.getUint16(0, true);
  const [sign, exponent, fraction] = [bits >> 15 ? -1 : 1, (bits >> 10) & 31, bits & 1023];
  if (exponent === 31) return fraction ? NaN : sign * Infinity;
  return sign * (exponent ? 2 ** (exponent - 15) * (1 + fraction / 1024) : 2 ** -14 * (fraction / 1024));
}

/** The code values of a part of a picture, for each component row by row; floats as they are. */
export function valuesIn(morvane, picture, { x, y, width, height }) {
  const format = morvane.formats.get(picture.description.format);
  const components = componentsOf(format);
  const values = components.map(() => []);
  const rows = new Map();
  for (let row = y; row < y + height; ++row) {
    components.forEach((c, i) => {
      const at = Math.floor(row / c.imageRows);
      const key = `${c.plane} ${at}`;
      if (!rows.has(key)) rows.set(key, morvane.readRow(picture, c.plane, at));
      const line = rows.get(key)[c.line];
      const stored = c.float && picture.plane(c.plane).subarray(at * picture.layout.planes[c.plane].stride);
      for (let column = x; column < x + width; ++column) {
        const { float } = c;
        values[i].push(
          float ? floatAt(stored, Math.floor(column / c.groupPixels) * float.group + float.order * float.bytes, float.bytes)
            : line[sampleAt(c, column)],
        );
      }
    });
  }
  return components.map(({ key, name, bits, float }, i) => ({ key, name, bits, isFloat: float !== null, values: values[i] }));
}
