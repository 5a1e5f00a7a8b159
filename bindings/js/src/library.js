// An instance of the module: its functions, its memory, and its file system in memory, which is used during a save or load.
import { LimitError } from './errors.js';
import { Memory } from './memory.js';
import { functionsOf } from './raw.js';

const FILE = '/model';

export class Library {
  #files;

  constructor(wasm) {
    this.#files = wasm.FS;
    this.raw = functionsOf(wasm);
    this.memory = new Memory(wasm);
  }

  get version() {
    return this.#text(this.raw.zq_version());
  }

  lastMessage() {
    return this.#text(this.raw.zq_lastMessage()).trim();
  }

  #text(at) {
    return String.fromCharCode(...this.memory.textBytes(at));
  }

  /** The bytes of the file that `write` writes to the given path. */
  bytesOfFile(write) {
    return this.#withFile((path) => {
      write(path);
      return this.#files.readFile(FILE);
    });
  }

  /** Calls `read` with the path of a file that has these bytes. */
  withFile(bytes, read) {
    return this.#withFile((path) => {
      this.#files.writeFile(FILE, bytes);
      return read(path);
    });
  }

  #withFile(work) {
    try {
      return this.memory.scratch((scratch) => work(scratch.text(FILE)));
    } catch (error) {
      // Files in memory are JavaScript arrays, which throw a RangeError if they can't grow.
      throw error instanceof RangeError ? new LimitError(`no memory for a model's file: ${error.message}`) : error;
    } finally {
      if (this.#files.analyzePath(FILE).exists) this.#files.unlink(FILE);
    }
  }
}

/** Compiles the module from its bytes, a response or a URL. */
async function compiled(source) {
  const given = await source;
  if (given instanceof WebAssembly.Module) return given;
  if (given instanceof ArrayBuffer || ArrayBuffer.isView(given)) return WebAssembly.compile(given);
  if (typeof Response === 'function' && given instanceof Response) return compiledResponse(given);
  const url = new URL(given, import.meta.url);
  return url.protocol === 'file:' ? compiledFile(url) : compiledResponse(await fetch(url));
}

async function compiledResponse(response) {
  if (!response.ok) throw new Error(`cannot fetch ${response.url}: ${response.status}`);
  return WebAssembly.compile(await response.arrayBuffer());
}

async function compiledFile(url) {
  const files = 'node:fs/promises'; // in a variable, so that bundlers for browsers don't resolve it
  const { readFile } = await import(/* webpackIgnore: true */ /* @vite-ignore */ files);
  return WebAssembly.compile(await readFile(url));
}

/** A new instance with its own memory. `start` is the loader that the compiler wrote beside the module. */
export async function newLibrary(start, source) {
  const module = await compiled(source);
  const wasm = await new Promise((resolve, reject) => {
    const instantiateWasm = (imports, use) => {
      WebAssembly.instantiate(module, imports).then((instance) => use(instance, module)).catch(reject);
      return {};
    };
    start({ instantiateWasm }).then(resolve, reject);
  });
  return new Library(wasm);
}
