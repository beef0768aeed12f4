// PSNR over the frames of a clip, as a plot and in words.
import UPlot from 'uplot';

const inks = ['#0d9488', '#3b82f6', '#ef4444', '#a855f7', '#f59e0b', '#64748b'];
const decibels = (psnr) => (psnr === Infinity ? 'identical' : `${psnr.toFixed(2)} dB`);
// Identical components are drawn at the top.
const highest = 100;

export const describe = (d) =>
  d === undefined ? 'No pixel differs.' : `First difference: frame ${d.frame}, x ${d.x}, y ${d.y}, ${d.component}: ${d.values[0]} and ${d.values[1]}.`;

export function showComparison(words, box, { results, first, stopped }) {
  const keys = results[0]?.map((c) => c.key) ?? [];
  const means = keys.map((key, i) => {
    const powers = results.map((r) => 10 ** (-r[i].psnr / 10));
    const mean = powers.reduce((a, b) => a + b, 0) / powers.length;
    return `${key} ${decibels(mean === 0 ? Infinity : -10 * Math.log10(mean))}`;
  });
  words.textContent = `${results.length} frames${stopped ? ' (stopped)' : ''}: ${means.join(', ')}. ${describe(first)}`;
  box.replaceChildren();
  if (results.length === 0) return;
  const ink = getComputedStyle(document.body).color;
  const axis = { stroke: ink, grid: { stroke: '#8884', width: 1 }, ticks: { stroke: '#8884' } };
  const series = keys.map((label, i) => ({ label, stroke: inks[i % inks.length], width: 2, value: (_, v) => (v == null ? '' : v >= highest ? 'identical' : `${v.toFixed(1)} dB`) }));
  const data = [results.map((_, i) => i), ...keys.map((_, i) => results.map((r) => Math.min(highest, r[i].psnr)))];
  const options = { width: box.clientWidth, height: 190, scales: { x: { time: false } }, axes: [{ ...axis }, { ...axis, size: 44 }], series: [{ label: 'frame' }, ...series] };
  new UPlot(options, data, box);
}
