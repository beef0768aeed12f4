// The worker, as functions that answer later.
import source from 'worker-source';

export class Engine {
  #worker;
  #waiting = new Map();
  #last = 0;

  constructor() {
    const address = URL.createObjectURL(new Blob([source], { type: 'text/javascript' }));
    this.#worker = new Worker(address);
    this.formats = new Promise((resolve, reject) => this.#waiting.set(0, { resolve, reject }));
    this.#worker.onmessage = ({ data }) => this.#answered(data);
    this.#worker.onerror = (event) => {
      for (const { reject } of this.#waiting.values()) reject(new Error(event.message || 'The worker has ended.'));
      this.#waiting.clear();
    };
  }

  #answered({ id, result, error, progress }) {
    const waiting = this.#waiting.get(id);
    if (waiting === undefined) return;
    if (progress !== undefined) return void waiting.onProgress?.(progress);
    this.#waiting.delete(id);
    if (error === undefined) waiting.resolve(result);
    else waiting.reject(new Error(error));
  }

  call(name, ...args) {
    return this.long(name, undefined, ...args);
  }

  long(name, onProgress, ...args) {
    const id = ++this.#last;
    return new Promise((resolve, reject) => {
      this.#waiting.set(id, { resolve, reject, onProgress });
      this.#worker.postMessage({ id, call: name, args });
    });
  }

  stop() {
    this.#worker.postMessage({ call: 'stop' });
  }
}
