// Any picture to any other, in a browser or in node: morvane.d.ts says what there is. Everything that is known of formats
// comes from the library.

const bytesOfNumber = 4;
const bytesOfWord = 2;
const isUnused = (component) => component === 4;

function withStrides(layout, strides) {
  if (strides.length !== layout.planes.length) {
    const [got, needed] = [strides.length, layout.planes.length];
    throw new MorvaneError({ code: 'stride', argument: 'strides', got, needed, message: `${got} strides for ${needed} planes` });
  }
  let bytes = 0;
  const planes = layout.planes.map((p, i) => {
    const stride = strides[i];
    if (!Number.isSafeInteger(stride) || stride < p.rowBytes) {
      const message = `stride ${stride} is too small: a row has ${p.rowBytes} bytes`;
      throw new MorvaneError({ code: 'stride', argument: `strides[${i}]`, got: stride, needed: p.rowBytes, message });
    }
    const offset = bytes;
    bytes += stride * p.rows;
    return { ...p, offset, stride };
  });
  return { bytes, planes };
}

/** @param {URL} url */
async function fetched(url) {
  if (url.protocol !== 'file:' || typeof process === 'undefined') return fetch(url).then((r) => r.arrayBuffer());
  const { readFile } = await import('node:fs/promises');
  return readFile(url);
}

export class MorvaneError extends Error {
  constructor({ code, argument, got, needed, message }) {
    super(message);
    Object.assign(this, { name: 'MorvaneError', code, argument, got, needed });
  }
}

export async function load(module = new URL('morvane.wasm', import.meta.url)) {
  const code = module instanceof URL ? await fetched(module) : module;
  const instance =
    code instanceof WebAssembly.Module
      ? await WebAssembly.instantiate(code)
      : (await WebAssembly.instantiate(code)).instance;
  instance.exports._initialize();
  return new Morvane(instance.exports);
}

class Morvane {
  #library;
  #constants;
  #codes;

  constructor(library) {
    this.#library = library;
    const { formats, codes, models, ...constants } = JSON.parse(this.#text(library.web_facts()));
    this.#constants = constants;
    this.#codes = new Map(Object.entries(codes).map(([name, code]) => [code, name]));
    const modelNames = new Map(Object.entries(models).map(([name, model]) => [model, name]));
    this.formats = new Map(formats.map((f) => [f.name, Object.freeze({ ...f, model: modelNames.get(f.model) })]));
  }

  /** The formats that answer to a name of this library or of another system. */
  formatsCalled(name) {
    const byId = new Map([...this.formats.values()].map((f) => [f.id, f]));
    return this.#withMemory((take) => {
      const room = this.formats.size;
      const found = take(room * bytesOfNumber);
      const count = this.#library.morvane_formats_called(this.#given(name, take), found, room);
      return [...new Int32Array(this.#buffer, found, count)].map((id) => byId.get(id));
    });
  }

  /** Where the planes of a picture lie in one run of bytes. */
  layOut(description, { alignment = 0, strides } = {}) {
    const layout = this.#withMemory((take) => {
      const answer = this.#library.web_lay_out(this.#numbers(this.#described(description), take), alignment);
      if (answer === 0) throw this.#error();
      return JSON.parse(this.#text(answer));
    });
    return strides === undefined ? layout : withStrides(layout, strides);
  }

  /** A picture in the library's memory. */
  picture(description, options) {
    const layout = this.layOut(description, options);
    const data = this.#allocated(layout.bytes);
    const picture = this.#library.web_picture();
    layout.planes.forEach((p, i) =>
      this.#library.web_set_plane(picture, i, data + p.offset, p.stride, p.stride * (p.rows - 1) + p.rowBytes),
    );
    return new Picture(this.#library, { ...description }, layout, data, picture);
  }

  plan(source, destination, options = {}) {
    const { background, via, threads = 1, allowIrregular = false, rescale = false } = options;
    const numbers = [
      ...this.#described(source),
      ...this.#described(destination),
      this.#constant('filters', options.filter ?? 'linear'),
      this.#constant('sitings', options.siting ?? 'left'),
      background === undefined ? 0 : 1,
      ...(background ?? [0, 0, 0]),
      threads,
      Number(allowIrregular),
      Number(rescale),
    ];
    const plan = this.#withMemory((take) =>
      this.#library.web_plan(this.#numbers(numbers, take), via === undefined ? 0 : this.#given(via, take)),
    );
    if (plan === 0) throw this.#error();
    return new Plan(this.#library, plan, {
      texts: (textAt) => this.#texts((i) => textAt(plan, i)),
      allocated: (bytes) => this.#allocated(bytes),
      error: () => this.#error(),
    });
  }

  /** The code values of a row of a plane: an array for each component, empty where the plane has none of it. */
  readRow(picture, plane, row) {
    const { format, width } = picture.description;
    const { samples, groupPixels, bits } = this.formats.get(format).planes[plane];
    const groups = Math.ceil(width / groupPixels);
    const room = groups * Math.max(...samples);
    return this.#withMemory((take) => {
      const lines = take(samples.length * room * bytesOfWord);
      const description = this.#numbers(this.#described(picture.description), take);
      const code = this.#library.web_read_row(description, picture.handle, plane, row, bits, lines, room);
      if (code !== 0) throw this.#error();
      return samples.map((count, i) =>
        new Uint16Array(this.#buffer, lines + i * room * bytesOfWord, isUnused(i) ? 0 : groups * count).slice(),
      );
    });
  }

  get #buffer() {
    return this.#library.memory.buffer;
  }

  // Names and numbers that the library does not know are left to it to refuse.
  #constant(kind, name) {
    return this.#constants[kind][name] ?? -1;
  }

  #described({ format, width, height, matrix, range }) {
    return [
      this.formats.get(format)?.id ?? 0,
      width,
      height,
      matrix === undefined ? 0 : this.#constant('matrices', matrix),
      range === undefined ? 0 : this.#constant('ranges', range),
    ];
  }

  #allocated(bytes) {
    const data = this.#library.malloc(bytes) >>> 0;
    if (data === 0) throw new RangeError(`${bytes} bytes of memory are not there`);
    return data;
  }

  #withMemory(work) {
    const taken = [];
    const take = (bytes) => {
      taken.push(this.#allocated(bytes));
      return taken.at(-1);
    };
    try {
      return work(take);
    } finally {
      taken.forEach((data) => this.#library.free(data));
    }
  }

  #numbers(values, take) {
    const data = take(values.length * bytesOfNumber);
    new Int32Array(this.#buffer, data, values.length).set(values);
    return data;
  }

  #given(text, take) {
    const bytes = new TextEncoder().encode(`${text}\0`);
    const data = take(bytes.length);
    new Uint8Array(this.#buffer, data, bytes.length).set(bytes);
    return data;
  }

  #text(data) {
    const bytes = new Uint8Array(this.#buffer, data >>> 0);
    return new TextDecoder().decode(bytes.subarray(0, bytes.indexOf(0)));
  }

  #texts(textAt) {
    const texts = [];
    for (let data = textAt(0); data !== 0; data = textAt(texts.length)) texts.push(this.#text(data));
    return texts;
  }

  #error() {
    const error = JSON.parse(this.#text(this.#library.web_error()));
    return new MorvaneError({ ...error, code: this.#codes.get(error.code) });
  }
}

class Picture {
  #library;
  #data;
  #picture;

  constructor(library, description, layout, data, picture) {
    this.#library = library;
    this.#data = data;
    this.#picture = picture;
    this.description = description;
    this.layout = layout;
  }

  /** All bytes. Memory may grow with each picture and plan, and views from before are then empty. */
  get bytes() {
    this.handle;
    return new Uint8Array(this.#library.memory.buffer, this.#data, this.layout.bytes);
  }

  /** The same as what a canvas takes. */
  get clamped() {
    return new Uint8ClampedArray(this.#library.memory.buffer, this.bytes.byteOffset, this.layout.bytes);
  }

  plane(index) {
    const { offset, stride, rows } = this.layout.planes[index];
    return this.bytes.subarray(offset, offset + stride * rows);
  }

  get handle() {
    if (this.#picture === 0) throw new TypeError('the picture is freed');
    return this.#picture;
  }

  free() {
    this.#library.free(this.#picture);
    this.#library.free(this.#data);
    this.#picture = this.#data = 0;
  }
}

class Plan {
  #library;
  #plan;
  #scratch;
  #error;

  constructor(library, plan, { texts, allocated, error }) {
    this.#library = library;
    this.#plan = plan;
    this.#error = error;
    this.steps = texts(library.morvane_plan_step);
    this.losses = texts(library.morvane_plan_loss);
    this.rowGranularity = library.morvane_plan_row_granularity(plan);
    this.scratchBytes = Number(library.morvane_plan_scratch_bytes(plan));
    this.#scratch = this.scratchBytes === 0 ? 0 : allocated(this.scratchBytes);
  }

  run(source, destination) {
    this.#run(source, destination, 0, -1);
  }

  runRows(source, destination, first, rows) {
    this.#run(source, destination, first, Math.max(rows, 0));
  }

  #run(source, destination, first, rows) {
    if (this.#plan === 0) throw new TypeError('the plan is freed');
    const code = this.#library.web_run(
      this.#plan, source.handle, destination.handle, first, rows, this.#scratch, this.scratchBytes,
    );
    if (code !== 0) throw this.#error();
  }

  free() {
    this.#library.free(this.#scratch);
    this.#library.morvane_plan_destroy(this.#plan);
    this.#plan = this.#scratch = 0;
  }
}
