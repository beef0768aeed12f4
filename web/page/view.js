// The canvas: where the picture lies on it, how large, and what is written into its pixels.

const least = 1 / 64;
const most = 128;
const scaleOfNumbers = 44;
const reachOfWipe = 8;

export class View {
  #canvas;
  #context;
  #pictures = [];
  #wipe;
  values;

  constructor(box, canvas, wipe) {
    Object.assign(this, { box, scale: 1, x: 0, y: 0, isFit: true, marked: undefined, onChange: () => {}, onWipe: () => {} });
    this.#canvas = canvas;
    this.#context = canvas.getContext('2d');
    this.#wipe = wipe;
    this.wipeAt = undefined;
    new ResizeObserver(() => this.#resized()).observe(box);
    this.#listen();
  }

  #resized() {
    const ratio = window.devicePixelRatio;
    this.#canvas.width = Math.round(this.box.clientWidth * ratio);
    this.#canvas.height = Math.round(this.box.clientHeight * ratio);
    this.isFit ? this.fit() : this.draw();
  }

  #listen() {
    let held;
    const { box } = this;
    box.addEventListener('wheel', (event) => {
      event.preventDefault();
      this.zoomBy(2 ** (-event.deltaY / 240), event.offsetX, event.offsetY);
    }, { passive: false });
    box.addEventListener('pointerdown', (event) => {
      held = { x: event.clientX - this.x, y: event.clientY - this.y, isWipe: this.#isAtWipe(event.offsetX) };
      box.setPointerCapture(event.pointerId);
    });
    box.addEventListener('pointermove', (event) => {
      if (!held) box.style.cursor = this.#isAtWipe(event.offsetX) ? 'col-resize' : '';
      if (!held || event.buttons === 0) return;
      if (held.isWipe) return this.#wipeTo(event.offsetX);
      this.isFit = false;
      [this.x, this.y] = [event.clientX - held.x, event.clientY - held.y];
      this.#moved();
    });
    for (const end of ['pointerup', 'pointercancel']) box.addEventListener(end, () => (held = undefined));
  }

  get #isWipe() {
    return this.#pictures.length > 1 && this.wipeAt !== undefined;
  }
  get #edge() {
    return this.x + (this.wipeAt ?? 1) * this.width * this.scale;
  }
  #isAtWipe(left) {
    return this.#isWipe && Math.abs(left - this.#edge) <= reachOfWipe;
  }
  #wipeTo(left) {
    this.wipeAt = Math.min(1, Math.max(0, (left - this.x) / (this.width * this.scale)));
    this.draw();
    this.onWipe();
  }

  get width() {
    return this.#pictures[0]?.width ?? 0;
  }
  get height() {
    return this.#pictures[0]?.height ?? 0;
  }
  // Side by side, the second picture lies to the right, or below where that leaves both larger.
  get #beside() {
    const [a, b] = this.#pictures;
    if (!b || this.wipeAt !== undefined) return [0, 0];
    const { clientWidth: w, clientHeight: h } = this.box;
    const gap = Math.max(2, Math.round(a.width / 100));
    const right = Math.min(w / (a.width + b.width + gap), h / Math.max(a.height, b.height));
    const below = Math.min(w / Math.max(a.width, b.width), h / (a.height + b.height + gap));
    return right >= below ? [a.width + gap, 0] : [0, a.height + gap];
  }

  /** Shows bytes of RGB with alpha, of one picture or of two. */
  show(pictures, wipeAt) {
    const before = `${this.width}x${this.height} ${this.#pictures.length} ${this.wipeAt === undefined}`;
    this.wipeAt = wipeAt;
    this.#pictures = pictures.map(({ width, height, pixels }, i) => {
      const kept = this.#pictures[i];
      const canvas = kept?.width === width && kept?.height === height ? kept.canvas : new OffscreenCanvas(width, height);
      canvas.getContext('2d').putImageData(new ImageData(pixels, width, height), 0, 0);
      return { width, height, canvas };
    });
    this.values = undefined;
    const now = `${this.width}x${this.height} ${this.#pictures.length} ${this.wipeAt === undefined}`;
    if (this.isFit && before !== now) this.fit();
    else this.#moved();
  }

  clear() {
    this.#pictures = [];
    this.draw();
  }

  fit() {
    this.isFit = true;
    if (this.width === 0) return this.draw();
    const [right, down] = this.#beside;
    const second = this.#pictures[1] ?? this.#pictures[0];
    const [w, h] = [Math.max(this.width, right + second.width * (right > 0)), Math.max(this.height, down + second.height * (down > 0))];
    const margin = 12;
    this.scale = Math.min((this.box.clientWidth - margin) / w, (this.box.clientHeight - margin) / h, most);
    if (this.scale > 1) this.scale = Math.max(1, Math.floor(this.scale));
    this.x = Math.round((this.box.clientWidth - w * this.scale) / 2);
    this.y = Math.round((this.box.clientHeight - h * this.scale) / 2);
    this.#moved();
  }

  zoomTo(scale, x = this.box.clientWidth / 2, y = this.box.clientHeight / 2) {
    const bounded = Math.min(Math.max(scale, least), most);
    this.isFit = false;
    this.x = Math.round(x - ((x - this.x) / this.scale) * bounded);
    this.y = Math.round(y - ((y - this.y) / this.scale) * bounded);
    this.scale = bounded;
    this.#moved();
  }
  zoomBy(factor, x, y) {
    const near = Math.abs(Math.log2(this.scale * factor)) < 0.03 ? 1 : this.scale * factor;
    this.zoomTo(near, x, y);
  }

  #moved() {
    this.draw();
    this.onChange();
  }

  /** The pixel below a place on the canvas, of which picture. */
  pixelAt(left, top) {
    const [right, down] = this.#beside;
    for (const [i, p] of this.#pictures.entries()) {
      if (i === 1 && this.wipeAt !== undefined) break;
      const x = Math.floor((left - this.x) / this.scale) - i * right;
      const y = Math.floor((top - this.y) / this.scale) - i * down;
      if (x >= 0 && y >= 0 && x < p.width && y < p.height) return { x, y };
    }
    return undefined;
  }

  /** Brings a pixel into sight. */
  reveal({ x, y }) {
    const [left, top] = [this.x + (x + 0.5) * this.scale, this.y + (y + 0.5) * this.scale];
    const { clientWidth, clientHeight } = this.box;
    if (left > 0 && top > 0 && left < clientWidth && top < clientHeight) return;
    this.isFit = false;
    this.x = Math.round(clientWidth / 2 - (x + 0.5) * this.scale);
    this.y = Math.round(clientHeight / 2 - (y + 0.5) * this.scale);
    this.#moved();
  }

  /** The pixels whose numbers can be read, where they are large enough. */
  get readable() {
    if (this.scale < scaleOfNumbers || this.width === 0) return undefined;
    const x = Math.max(0, Math.floor(-this.x / this.scale));
    const y = Math.max(0, Math.floor(-this.y / this.scale));
    const right = Math.min(this.width, Math.ceil((this.box.clientWidth - this.x) / this.scale));
    const bottom = Math.min(this.height, Math.ceil((this.box.clientHeight - this.y) / this.scale));
    return right > x && bottom > y ? { x, y, width: right - x, height: bottom - y } : undefined;
  }

  draw() {
    const context = this.#context;
    const ratio = window.devicePixelRatio;
    context.setTransform(1, 0, 0, 1, 0, 0);
    context.clearRect(0, 0, this.#canvas.width, this.#canvas.height);
    context.setTransform(ratio, 0, 0, ratio, 0, 0);
    context.imageSmoothingEnabled = this.scale < 1;
    context.imageSmoothingQuality = 'high';
    const [right, down] = this.#beside;
    const isWipe = this.#isWipe;
    const edge = this.#edge;
    this.#pictures.forEach((p, i) => {
      context.save();
      if (isWipe && i === 1) {
        context.beginPath();
        context.rect(edge, 0, this.box.clientWidth, this.box.clientHeight);
        context.clip();
      }
      context.drawImage(p.canvas, this.x + i * right * this.scale, this.y + i * down * this.scale, p.width * this.scale, p.height * this.scale);
      context.restore();
    });
    this.#wipe.hidden = !isWipe;
    this.#wipe.style.left = `${edge - 1}px`;
    if (this.values && this.scale >= scaleOfNumbers) this.#drawNumbers();
    if (this.marked && this.scale >= 4) this.#drawMark();
  }

  #drawMark() {
    const context = this.#context;
    const [x, y] = [this.x + this.marked.x * this.scale, this.y + this.marked.y * this.scale];
    for (const [colour, by] of [['#000', 0], ['#fff', 1]]) {
      context.strokeStyle = colour;
      context.strokeRect(x - 0.5 + by, y - 0.5 + by, this.scale - 2 * by + 1, this.scale - 2 * by + 1);
    }
  }

  #drawNumbers() {
    const context = this.#context;
    const { area, components } = this.values;
    const lines = components.length;
    const size = Math.min(12, (this.scale - 6) / Math.max(lines, 3) / 1.1, this.scale / 5.2);
    context.font = `${size}px ui-monospace, 'DejaVu Sans Mono', monospace`;
    context.textAlign = 'center';
    context.textBaseline = 'middle';
    for (let row = 0; row < area.height; ++row)
      for (let column = 0; column < area.width; ++column) {
        const middle = this.x + (area.x + column + 0.5) * this.scale;
        const top = this.y + (area.y + row + 0.5) * this.scale;
        components.forEach((c, i) => {
          const value = c.values[row * area.width + column];
          const text = c.isFloat ? value.toFixed(2) : String(value);
          const y = top + (i - (lines - 1) / 2) * size * 1.15;
          context.lineWidth = 3;
          context.strokeStyle = 'rgba(0, 0, 0, 0.75)';
          context.strokeText(text, middle, y);
          context.fillStyle = '#fff';
          context.fillText(text, middle, y);
        });
      }
  }
}
