// node serve.mjs FOLDER PORT: hands out the files of a folder to this computer.
import { createReadStream } from 'node:fs';
import { stat } from 'node:fs/promises';
import { createServer } from 'node:http';
import { extname, join, normalize } from 'node:path';

const [folder, port] = process.argv.slice(2);
const types = { '.html': 'text/html', '.js': 'text/javascript', '.css': 'text/css' };

const server = createServer(async (request, response) => {
  const { pathname } = new URL(request.url, 'http://localhost');
  const path = join(folder, normalize(pathname.endsWith('/') ? `${pathname}index.html` : pathname));
  const isThere = await stat(path).then((s) => s.isFile(), () => false);
  response.writeHead(isThere ? 200 : 404, { 'Content-Type': types[extname(path)] ?? 'text/plain' });
  if (isThere) createReadStream(path).pipe(response);
  else response.end('There is no such file.');
});
server.listen(Number(port), '127.0.0.1', () => console.log(`http://localhost:${server.address().port}/  (Ctrl-C ends it)`));
server.on('error', (error) => {
  console.error(`page: ${error.message}`);
  process.exitCode = 1;
});
