// PNG to samples and back, without the colour management and the premultiplied alpha of a canvas.

const magic = [137, 80, 78, 71, 13, 10, 26, 10];

export const isPng = (bytes) => magic.every((byte, i) => bytes[i] === byte);

async function piped(bytes, through) {
  return new Uint8Array(await new Response(new Blob([bytes]).stream().pipeThrough(through)).arrayBuffer());
}

function chunksOf(bytes) {
  const view = new DataView(bytes.buffer, bytes.byteOffset, bytes.byteLength);
  const chunks = [];
  for (let at = magic.length; at + 12 <= bytes.length;) {
    const length = view.getUint32(at);
    const type = String.fromCharCode(...bytes.subarray(at + 4, at + 8));
    if (at + 12 + length > bytes.length) break;
    chunks.push({ type, data: bytes.subarray(at + 8, at + 8 + length) });
    at += 12 + length;
  }
  return chunks;
}

function paeth(a, b, c) {
  const [pa, pb, pc] = [Math.abs(b - c), Math.abs(a - c), Math.abs(a + b - 2 * c)];
  if (pa <= pb && pa <= pc) return a;
  return pb <= pc ? b : c;
}

// Takes the filters back, row by row, in place; the bytes of all rows without their filters.
function unfiltered(data, rowBytes, rows, pixelBytes) {
  const result = new Uint8Array(rowBytes * rows);
  for (let y = 0; y < rows; ++y) {
    const filter = data[y * (rowBytes + 1)];
    const from = y * (rowBytes + 1) + 1;
    const to = y * rowBytes;
    for (let i = 0; i < rowBytes; ++i) {
      const left = i >= pixelBytes ? result[to + i - pixelBytes] : 0;
      const up = y > 0 ? result[to + i - rowBytes] : 0;
      const corner = y > 0 && i >= pixelBytes ? result[to + i - rowBytes - pixelBytes] : 0;
      const guess = [0, left, up, (left + up) >> 1, filter === 4 ? paeth(left, up, corner) : 0][filter];
      result[to + i] = data[from + i] + guess;
    }
  }
  return result;
}

const channelsOf = { 0: 1, 2: 3, 3: 1, 4: 2, 6: 4 };

/** Width, height, and RGB with alpha of 8 or 16 bits, little-endian. */
export async function readPng(blob) {
  const chunks = chunksOf(new Uint8Array(await blob.arrayBuffer()));
  const header = chunks[0];
  if (header?.type !== 'IHDR') throw new Error('This PNG ends in its header.');
  const view = new DataView(header.data.buffer, header.data.byteOffset);
  const [width, height, depth, kind] = [view.getUint32(0), view.getUint32(4), header.data[8], header.data[9]];
  if (header.data[12] !== 0) throw new Error('This PNG is interlaced, which is not read here.');
  const channels = channelsOf[kind];
  const rowBytes = Math.ceil((width * channels * depth) / 8);
  const parts = chunks.filter((c) => c.type === 'IDAT').map((c) => c.data);
  let data;
  try {
    data = await piped(new Uint8Array(await new Blob(parts).arrayBuffer()), new DecompressionStream('deflate'));
  } catch {
    throw new Error('This PNG is damaged or cut short.');
  }
  if (data.length < (rowBytes + 1) * height) throw new Error('This PNG is cut short.');
  const stored = unfiltered(data, rowBytes, height, Math.max(1, (channels * depth) >> 3));
  const palette = chunks.find((c) => c.type === 'PLTE')?.data;
  const transparency = chunks.find((c) => c.type === 'tRNS')?.data;
  const sample = (y, i) => {
    if (depth === 8) return stored[y * rowBytes + i];
    if (depth === 16) return stored[y * rowBytes + 2 * i] * 256 + stored[y * rowBytes + 2 * i + 1];
    return (stored[y * rowBytes + ((i * depth) >> 3)] >> (8 - depth - ((i * depth) & 7))) & ((1 << depth) - 1);
  };
  const peak = depth === 16 ? 65535 : 255;
  const pixels = new (depth === 16 ? Uint16Array : Uint8Array)(width * height * 4);
  const stretch = kind === 0 && depth < 8 ? 255 / ((1 << depth) - 1) : 1;
  const key = transparency && kind !== 3 ? [...transparency.filter((_, i) => depth === 16 || i % 2)] : undefined;
  for (let y = 0, to = 0; y < height; ++y)
    for (let x = 0; x < width; ++x, to += 4) {
      const at = x * channels;
      if (kind === 3) {
        const index = sample(y, at);
        pixels.set([palette[3 * index], palette[3 * index + 1], palette[3 * index + 2], transparency?.[index] ?? 255], to);
        continue;
      }
      const colour = channels >= 3 ? [sample(y, at), sample(y, at + 1), sample(y, at + 2)] : [sample(y, at)];
      const isKey = key && depth === 8 && colour.every((c, i) => c === key[i]);
      const alpha = channels % 2 === 0 ? sample(y, at + channels - 1) : isKey ? 0 : peak;
      const [r, g = r, b = r] = colour.map((c) => c * stretch);
      pixels.set([r, g, b, alpha], to);
    }
  const hasAlpha = channels % 2 === 0 || transparency !== undefined;
  return { width, height, hasAlpha, depth: depth === 16 ? 16 : 8, bytes: new Uint8Array(pixels.buffer) };
}

const sums = Uint32Array.from({ length: 256 }, (_, n) => {
  for (let k = 0; k < 8; ++k) n = n & 1 ? 0xedb88320 ^ (n >>> 1) : n >>> 1;
  return n;
});

function chunk(type, data) {
  const bytes = new Uint8Array(data.length + 12);
  const view = new DataView(bytes.buffer);
  view.setUint32(0, data.length);
  bytes.set([...type].map((c) => c.charCodeAt(0)), 4);
  bytes.set(data, 8);
  let sum = 0xffffffff;
  for (let i = 4; i < bytes.length - 4; ++i) sum = sums[(sum ^ bytes[i]) & 255] ^ (sum >>> 8);
  view.setUint32(bytes.length - 4, ~sum >>> 0);
  return bytes;
}

/** A PNG of tight rows of bytes: RGB for three channels, RGB with alpha for four. */
export async function writePng(bytes, width, height, channels) {
  const rowBytes = width * channels;
  const rows = new Uint8Array((rowBytes + 1) * height);
  const up = 2;
  for (let y = 0; y < height; ++y) {
    const to = y * (rowBytes + 1);
    rows[to] = up;
    for (let i = 0, from = y * rowBytes; i < rowBytes; ++i, ++from)
      rows[to + 1 + i] = y === 0 ? bytes[from] : bytes[from] - bytes[from - rowBytes];
  }
  const header = new Uint8Array(13);
  new DataView(header.buffer).setUint32(0, width);
  new DataView(header.buffer).setUint32(4, height);
  header.set([8, channels === 4 ? 6 : 2], 8);
  const data = await piped(rows, new CompressionStream('deflate'));
  const parts = [new Uint8Array(magic), chunk('IHDR', header), chunk('IDAT', data), chunk('IEND', new Uint8Array())];
  return new Blob(parts, { type: 'image/png' });
}
