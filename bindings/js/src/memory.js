// The memory of the WebAssembly module. Arguments of a call are copied in and released after it, results are copied out. Views become
// invalid when the memory grows, so they are made again each time.
import { LimitError } from './errors.js';

const MOST_BYTES = 0x7fffffff;

export class Memory {
  #wasm;

  constructor(wasm) {
    this.#wasm = wasm;
  }

  /** The bytes of the module's heap in use. */
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

  /** The bytes of a C string; empty for null. */
  textBytes(at) {
    return at === 0 ? new Uint8Array() : this.bytes(at, this.#wasm.HEAPU8.indexOf(0, at) - at);
  }

  /** Calls `work` with a Scratch whose memory is released after the call. */
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

  /** Allocates `count` bytes. */
  room(count) {
    const at = count <= MOST_BYTES ? this.#wasm._malloc(Math.max(count, 1)) >>> 0 : 0;
    if (at === 0) throw new LimitError(`no memory for ${count} bytes`);
    this.#pieces.push(at);
    return at;
  }

  /** Allocates `count` bytes of zeros. */
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

  /** A C string in UTF-8. */
  text(string) {
    return this.bytes(new TextEncoder().encode(`${string.replaceAll('\0', ' ')}\0`));
  }

  free() {
    for (const at of this.#pieces) this.#wasm._free(at);
  }
}
