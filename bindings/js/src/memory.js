// The memory of the WebAssembly module: what a call takes is copied in and released behind it, what it gives is copied out. The
// views change whenever the memory grows, so they are asked for anew each time.
import { LimitError } from './errors.js';

const MOST_BYTES = 0x7fffffff;

export class Memory {
  #wasm;

  constructor(wasm) {
    this.#wasm = wasm;
  }

  /** The bytes that the module's heap has given and not got back. */
  get used() {
    return this.#wasm._bytesInUse() >>> 0;
  }

  int(at) {
    return this.#wasm.HEAP32[at >>> 2];
  }

  double(at) {
    return this.#wasm.HEAPF64[at >>> 3];
  }

  longLong(at) {
    return this.int(at) + this.#wasm.HEAP32[(at >>> 2) + 1] * 4294967296 + (this.int(at) < 0 ? 4294967296 : 0);
  }

  bytes(at, count) {
    return this.#wasm.HEAPU8.slice(at, at + count);
  }

  ints(at, count) {
    return this.#wasm.HEAP32.slice(at >>> 2, (at >>> 2) + count);
  }

  doubles(at, count) {
    return this.#wasm.HEAPF64.slice(at >>> 3, (at >>> 3) + count);
  }

  /** The bytes of a C text; none for null. */
  textBytes(at) {
    return at === 0 ? new Uint8Array() : this.bytes(at, this.#wasm.HEAPU8.indexOf(0, at) - at);
  }

  /** Calls `work` with a Scratch whose memory lives as long as the call. */
  scratch(work) {
    const scratch = new Scratch(this.#wasm);
    try {
      return work(scratch);
    } finally {
      scratch.free();
    }
  }
}

class Scratch {
  #wasm;
  #pieces = [];

  constructor(wasm) {
    this.#wasm = wasm;
  }

  /** New memory of so many bytes. */
  room(count) {
    const at = count <= MOST_BYTES ? this.#wasm._malloc(Math.max(count, 1)) >>> 0 : 0;
    if (at === 0) throw new LimitError(`no memory for ${count} bytes`);
    this.#pieces.push(at);
    return at;
  }

  /** New memory of so many bytes, all 0. */
  zeros(count) {
    const at = this.room(count);
    this.#wasm.HEAPU8.fill(0, at, at + count);
    return at;
  }

  ints(values) {
    const at = this.room(4 * values.length);
    this.#wasm.HEAP32.set(values, at >>> 2);
    return at;
  }

  bytes(values) {
    const at = this.room(values.length);
    this.#wasm.HEAPU8.set(values, at);
    return at;
  }

  /** A C text in UTF-8. */
  text(string) {
    return this.bytes(new TextEncoder().encode(`${string.replaceAll('\0', ' ')}\0`));
  }

  free() {
    for (const at of this.#pieces) this.#wasm._free(at);
  }
}
