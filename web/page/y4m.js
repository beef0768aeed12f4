// The first line of YUV4MPEG2, and the format that it names.

const magic = 'YUV4MPEG2';
const longestLine = 4096;
const longestFrameLine = 1024;

export const isY4m = (bytes) => new TextDecoder('latin1').decode(bytes.subarray(0, magic.length)) === magic;

// "420p10" is what FFmpeg calls yuv420p10le, and "mono" its gray.
function nameOf(colour) {
  const [, kind, sampling, alpha, depth] = /^(mono|)(420|422|444|)(alpha|)(?:jpeg|mpeg2|paldv|)p?(\d*)$/.exec(colour) ?? [];
  if (kind === undefined) return colour;
  const end = depth ? `${depth}le` : '';
  if (kind) return `gray${end}`;
  return `yuv${alpha ? 'a' : ''}${sampling}p${end}`;
}

const latin = async (blob, first, count) => new TextDecoder('latin1').decode(await blob.slice(first, first + count).arrayBuffer());

async function lineOfFrame(blob, at) {
  const text = await latin(blob, at, longestFrameLine);
  const end = text.indexOf('\n');
  return text.startsWith('FRAME') && end >= 0 ? end + 1 : undefined;
}

/** Where the samples of each frame begin. Lines of one length need no look at each. */
async function startsOfFrames(blob, offset, frameLine, frameBytes) {
  const step = frameLine + frameBytes;
  const frames = Math.floor((blob.size - offset) / step);
  if (frames < 2 || (await lineOfFrame(blob, offset + (frames - 1) * step)) === frameLine) return { frames, at: (n) => offset + n * step + frameLine };
  const starts = [];
  for (let at = offset, line = frameLine; line; line = await lineOfFrame(blob, at)) {
    if (at + line + frameBytes > blob.size) break;
    starts.push(at + line);
    at += line + frameBytes;
  }
  return { frames: starts.length, at: (n) => starts[n] };
}

/** Reads what the file says of itself. */
export async function readY4m(blob, morvane) {
  const text = await latin(blob, 0, longestLine);
  const end = text.indexOf('\n');
  if (end < 0) throw new Error('The first line of this YUV4MPEG2 file does not end.');
  const words = text.slice(0, end).split(' ').slice(1);
  const word = (letter) => words.find((w) => w[0] === letter)?.slice(1);
  const width = Number(word('W'));
  const height = Number(word('H'));
  if (!(width > 0 && height > 0)) throw new Error('This YUV4MPEG2 file does not say its size.');
  const colour = word('C') ?? '420jpeg';
  const [format] = morvane.formatsCalled(nameOf(colour));
  if (format === undefined) throw new Error(`This YUV4MPEG2 file has samples of the kind "${colour}", which are not known here.`);
  const [numerator, denominator] = (word('F') ?? '').split(':').map(Number);
  const frameLine = text.slice(end + 1).indexOf('\n') + 1;
  if (!text.startsWith('FRAME', end + 1) && blob.size > end + 1) throw new Error('No frame follows the first line of this YUV4MPEG2 file.');
  const { bytes } = morvane.layOut({ format: format.name, width, height });
  return {
    settings: {
      format: format.name, width, height,
      siting: colour === '420jpeg' ? 'center' : undefined,
      range: words.includes('XCOLORRANGE=FULL') ? 'full' : undefined,
    },
    offset: end + 1,
    starts: await startsOfFrames(blob, end + 1, Math.max(frameLine, 'FRAME\n'.length), bytes),
    rate: numerator > 0 && denominator > 0 ? numerator / denominator : undefined,
  };
}
