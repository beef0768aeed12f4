// Every call of the module with its types: checked by a test, and not run.
import { load, MorvaneError } from '../morvane.js';
import type { Description, Format, Layout, LayoutOptions, Morvane, Picture, Plan, PlaneInfo, PlaneLayout, PlanOptions } from '../morvane.js';

async function everyCall(bytes: ArrayBuffer, compiled: WebAssembly.Module): Promise<number[]> {
  const morvane: Morvane = await load();
  for (const again of [await load(new URL('morvane.wasm', import.meta.url)), await load(bytes), await load(compiled)]) again.formatsCalled('nv12');

  const formats: ReadonlyMap<string, Format> = morvane.formats;
  const [named]: Format[] = morvane.formatsCalled('nv12');
  const plane: PlaneInfo | undefined = formats.get('uyvy')?.planes[0];
  const model: 'YCbCr' | 'RGB' | 'luma' | 'chroma' | 'alpha' | undefined = named?.model;
  const facts: (string | number | undefined)[] = [plane?.name, plane?.components, plane?.groupBytes, plane?.groupPixels, plane?.imageRows, plane?.bits, plane?.isFloat, model];

  const from: Description = { format: 'uyvy', width: 1920, height: 1080, matrix: 'BT.601', range: 'full' };
  const to: Description = { format: 'rgba', width: 1920, height: 1080 };
  const strides: LayoutOptions = { strides: [3841] };
  const layout: Layout = morvane.layOut(from, { alignment: 64 });
  const rows: PlaneLayout | undefined = layout.planes[0];
  const source: Picture = morvane.picture(from, strides);
  const destination: Picture = morvane.picture(to);
  source.bytes.set(new Uint8Array(bytes));
  source.plane(0).fill(128);
  const line: Uint16Array[] = morvane.readRow(source, 0, 5);

  const options: PlanOptions = { filter: 'nearest', siting: 'center', background: [0, 0, 0], threads: 1, allowIrregular: false, rescale: false };
  const plan: Plan = morvane.plan(from, to, options);
  try {
    plan.run(source, destination);
    plan.runRows(source, destination, 0, plan.rowGranularity);
  } catch (error) {
    if (error instanceof MorvaneError) return [error.got, error.needed, error.code.length, error.argument.length, error.message.length];
    throw error;
  } finally {
    plan.free();
  }
  const shown: Uint8ClampedArray = destination.clamped;
  const words: readonly string[] = [...plan.steps, ...plan.losses, source.description.format];
  source.free();
  destination.free();
  return [layout.bytes, rows?.stride ?? 0, rows?.offset ?? 0, rows?.rowBytes ?? 0, rows?.rows ?? 0, line.length, plan.scratchBytes, shown.length, words.length, facts.length];
}

async function wrongCalls(morvane: Morvane): Promise<void> {
  // @ts-expect-error: a range is 'video' or 'full'.
  morvane.layOut({ format: 'uyvy', width: 2, height: 2, range: 'narrow' });
  // @ts-expect-error: a size has two numbers.
  morvane.picture({ format: 'uyvy', width: 2 });
  // @ts-expect-error: formats are not changed.
  morvane.formats.clear();
  // @ts-expect-error: what is not there.
  morvane.convert();
}

export { everyCall, wrongCalls };
