/** Why a call was refused: the names of `morvane_code` in morvane.h, in lower case and with blanks. */
export class MorvaneError extends Error {
  readonly code: string;
  /** What was wrong: "source.width". */
  readonly argument: string;
  readonly got: number;
  readonly needed: number;
}

export interface PlaneInfo {
  readonly name: string;
  /** Of a group, as they are stored: "Cb Y Cr Y". */
  readonly components: string;
  /** Of luma or red, Cb or green, Cr or blue, alpha, and what is unused, in a group. */
  readonly samples: readonly number[];
  readonly groupBytes: number;
  readonly groupPixels: number;
  readonly imageRows: number;
  readonly bits: number;
  readonly isFloat: 0 | 1;
}

export interface Format {
  readonly id: number;
  readonly name: string;
  readonly description: string;
  readonly fourcc: string;
  readonly ffmpeg: string;
  readonly v4l2: string;
  readonly gstreamer: string;
  readonly apple: string;
  readonly also: string;
  readonly model: 'YCbCr' | 'RGB' | 'luma' | 'chroma' | 'alpha';
  readonly hasAlpha: 0 | 1;
  readonly planes: readonly PlaneInfo[];
}

export interface Description {
  /** The name of a format. */
  format: string;
  width: number;
  height: number;
  /** BT.709 where it is left out. */
  matrix?: 'BT.601' | 'BT.709' | 'BT.2020';
  /** Video for YCbCr and full for RGB where it is left out. */
  range?: 'video' | 'full';
}

export interface PlaneLayout {
  readonly offset: number;
  readonly stride: number;
  readonly rowBytes: number;
  readonly rows: number;
}

export interface Layout {
  readonly bytes: number;
  readonly planes: readonly PlaneLayout[];
}

export interface LayoutOptions {
  /** Rows begin at multiples of it. */
  alignment?: number;
  /** In their place, the bytes from row to row of each plane: any number from a row's bytes on. */
  strides?: readonly number[];
}

export interface PlanOptions {
  filter?: 'linear' | 'nearest';
  siting?: 'left' | 'center';
  /** Red, green and blue, 0 to 255, on which a source with alpha is laid where the destination has none. */
  background?: readonly [number, number, number];
  /** There are no threads in a module: more than 1 is refused. Run bands in workers instead, each with a module. */
  threads?: number;
  /** An entry point between the two formats that converts instead of the rules. */
  via?: string;
  allowIrregular?: boolean;
  rescale?: boolean;
}

/** A picture in the memory of the module, which its owner frees. */
export interface Picture {
  readonly description: Description;
  readonly layout: Layout;
  /** A view, no copy. Take it anew after each picture and plan: memory that grows leaves older views empty. */
  readonly bytes: Uint8Array;
  /** The same for ImageData, of pictures of `rgba`. */
  readonly clamped: Uint8ClampedArray;
  plane(index: number): Uint8Array;
  free(): void;
}

/** Made once, it converts any number of pictures of its kind. Its owner frees it. */
export interface Plan {
  readonly steps: readonly string[];
  readonly losses: readonly string[];
  readonly rowGranularity: number;
  readonly scratchBytes: number;
  run(source: Picture, destination: Picture): void;
  runRows(source: Picture, destination: Picture, first: number, rows: number): void;
  free(): void;
}

export interface Morvane {
  readonly formats: ReadonlyMap<string, Format>;
  formatsCalled(name: string): Format[];
  layOut(description: Description, options?: LayoutOptions): Layout;
  picture(description: Description, options?: LayoutOptions): Picture;
  /**
   * The code values of a row of a plane, for luma or red, Cb or green, Cr or blue, alpha, and what is unused: empty where
   * the plane has none. Floats are the 16-bit words by which they are converted.
   */
  readRow(picture: Picture, plane: number, row: number): Uint16Array[];
  plan(source: Description, destination: Description, options?: PlanOptions): Plan;
}

/** Loads morvane.wasm, which lies beside this file, or another one. */
export function load(module?: URL | BufferSource | WebAssembly.Module): Promise<Morvane>;
