// Frames of raw files, of planes in files of their own, of YUV4MPEG2 and of PNG. Only the bytes of a frame are read.
import { isPng, readPng } from './png.js';
import { isY4m, readY4m } from './y4m.js';

async function bytesOf(blob, first, count) {
  try {
    return new Uint8Array(await blob.slice(first, first + count).arrayBuffer());
  } catch {
    throw new Error(`"${blob.name}" cannot be read any more. Has it been moved or changed?`);
  }
}

// A multiple of the rows that share chroma, in each part.
export const bandRows = 24;
export const bandParts = 3;

const number = (n) => n.toLocaleString('en');

export class RawSource {
  constructor(files, morvane, settings) {
    const { format, width, height, strides, offset = 0 } = settings;
    const isKeyed = settings.isKeyed && files.length === 2;
    Object.assign(this, { files: isKeyed ? [files[0]] : files, keyFile: isKeyed ? files[1] : undefined, morvane, offset });
    this.description = { format, width, height };
    this.strides = strides;
    this.layout = morvane.layOut(this.description, { strides });
    this.frames = this.countFrames();
  }

  countFrames() {
    const { files, layout, offset } = this;
    if (!Number.isSafeInteger(offset) || offset < 0) throw new Error('The header must have 0 bytes or more.');
    if (files.length === 1) {
      const frames = Math.floor((files[0].size - offset) / layout.bytes);
      if (frames >= 1) return frames;
      throw new Error(`${number(files[0].size)} bytes are fewer than one frame, which takes ${number(layout.bytes + offset)} with these settings.`);
    }
    if (files.length !== layout.planes.length)
      throw new Error(`${this.description.format} has ${layout.planes.length} planes, and there are ${files.length} files.`);
    const counts = layout.planes.map((p, i) => Math.floor((files[i].size - offset) / (p.stride * p.rows)));
    const short = counts.findIndex((count) => count < 1);
    if (short >= 0) throw new Error(`"${files[short].name}" has fewer bytes than its plane of one frame.`);
    return Math.min(...counts);
  }

  picture() {
    const picture = this.morvane.picture(this.description, { strides: this.strides });
    if (this.keyFile === undefined) return picture;
    const key = this.morvane.picture(this.description, { strides: this.strides });
    const free = () => {
      Object.getPrototypeOf(picture).free.call(picture);
      key.free();
    };
    return Object.assign(picture, { key, free });
  }

  async read(frame, picture) {
    const { files, keyFile, layout, offset } = this;
    if (keyFile) picture.key.bytes.set(await bytesOf(keyFile, offset + frame * layout.bytes, layout.bytes));
    if (files.length === 1) {
      const bytes = await bytesOf(files[0], offset + frame * layout.bytes, layout.bytes);
      picture.bytes.set(bytes);
      return;
    }
    const planes = await Promise.all(
      layout.planes.map((p, i) => bytesOf(files[i], offset + frame * p.stride * p.rows, p.stride * p.rows)),
    );
    planes.forEach((bytes, i) => picture.plane(i).set(bytes));
  }

  /** Rows near the top, from the middle and near the bottom of the first frame, as a picture of its own. */
  async band() {
    const { files, layout, offset, morvane, description } = this;
    const parts = description.height < bandRows ? 1 : bandParts;
    const height = Math.min(bandRows, description.height);
    const picture = morvane.picture({ ...description, height }, { strides: layout.planes.map((p) => p.stride) });
    for (const [i, p] of layout.planes.entries()) {
      const [file, at] = files.length === 1 ? [files[0], p.offset] : [files[i], 0];
      const rows = picture.layout.planes[i].rows / parts;
      for (let part = 0; part < parts; ++part) {
        const first = Math.floor(((p.rows - rows) * (2 * part + 1)) / (2 * parts));
        const bytes = await bytesOf(file, offset + at + first * p.stride, rows * p.stride);
        picture.plane(i).set(bytes, part * rows * p.stride);
      }
    }
    return picture;
  }
}

class Y4mSource extends RawSource {
  constructor(files, morvane, settings, y4m) {
    super(files, morvane, { ...settings, offset: y4m.offset });
    this.starts = y4m.starts;
    this.frames = y4m.starts.frames;
  }

  countFrames() {
    return 0;
  }

  async read(frame, picture) {
    picture.bytes.set(await bytesOf(this.files[0], this.starts.at(frame), this.layout.bytes));
  }
}

class PngSource {
  frames = 1;
  offset = 0;

  constructor(files, morvane, settings, png) {
    Object.assign(this, { files, morvane, png });
    const { format, width, height } = settings;
    this.description = { format, width, height };
    this.layout = morvane.layOut(this.description);
  }

  picture() {
    return this.morvane.picture(this.description);
  }

  async read(_, picture) {
    picture.bytes.set(this.png.bytes);
  }
}

/** What kind of file it is, and what it says of itself. */
export async function examine(files, morvane) {
  const [file] = files;
  const empty = files.find((f) => f.size === 0);
  if (empty) throw new Error(`"${empty.name}" is empty.`);
  const head = await bytesOf(file, 0, 16);
  if (files.length === 1 && isPng(head)) {
    const png = await readPng(file);
    const base = png.hasAlpha ? 'rgba' : 'rgbx';
    const format = png.depth === 16 ? 'rgba64' : base;
    return { kind: 'png', png, settings: { format, width: png.width, height: png.height } };
  }
  if (files.length === 1 && isY4m(head)) {
    const y4m = await readY4m(file, morvane);
    return { kind: 'y4m', y4m, settings: y4m.settings, rate: y4m.rate };
  }
  return { kind: 'raw' };
}

export function sourceOf(files, morvane, found, settings) {
  if (found.kind === 'png') return new PngSource(files, morvane, found.settings, found.png);
  if (found.kind === 'y4m') return new Y4mSource(files, morvane, found.settings, found.y4m);
  return new RawSource(files, morvane, settings);
}
