// Learns texts, music and series of integers, and generates continuations.
//
//   const zmatrix = await createZmatrix();
//   const model = zmatrix.learn({ text: novel });
//   for (const { value, probability } of model.continue('It was ', { count: 500, seed: 7 })) ...
import { DamagedError, InputError, LimitError } from './errors.js';
import { FULL, Handle, MEDIUM } from './handle.js';
import { kindOf, prepared } from './learning.js';
import { newLibrary } from './library.js';
import { Model } from './model.js';
import { bytesOf, sourcesOf } from './sources.js';
import start from './zmatrix-module.js';

export * from './errors.js';
export { Model };

class Zmatrix {
  #library;

  constructor(library) {
    this.#library = library;
  }

  get version() {
    return this.#library.version;
  }

  get usedBytes() {
    return this.#library.memory.used;
  }

  get raw() {
    return this.#library.raw;
  }

  learn(source, options = {}) {
    const sources = sourcesOf(source);
    const { kind, handle } = prepared(this.#library, sources, options);
    return closedOnFailure(handle, () => new Model(kind, handle).learnSources(sources));
  }

  load(saved, { repair = false } = {}) {
    return this.#library.withFile(bytesOf(saved), (path) => {
      const handle = loaded(this.#library, path);
      return closedOnFailure(handle, () => {
        if (handle.call('zq_getLoadReport', 0) !== 1 && !repair) {
          throw new DamagedError('the saved model is damaged; load(..., { repair: true }) goes on with what is left of it');
        }
        return new Model(kindOf(handle), handle);
      });
    });
  }
}

function loaded(library, path) {
  const tier = library.raw.s_getMatrixInfoTypeFromFile(path);
  if (tier !== MEDIUM && tier !== FULL) throw new InputError('these bytes hold no model that learns');
  try {
    return new Handle(library, tier, path);
  } catch (error) {
    throw error instanceof LimitError ? new DamagedError(`cannot read the saved model: ${error.message}`) : error;
  }
}

function closedOnFailure(handle, work) {
  try {
    return work();
  } catch (error) {
    handle.close();
    throw error;
  }
}

/** Compiles the module and allocates its memory. `wasm`: the module's bytes, a response, a compiled module or its URL. */
export async function createZmatrix({ wasm = new URL('./zmatrix.wasm', import.meta.url) } = {}) {
  return new Zmatrix(await newLibrary(start, wasm));
}
