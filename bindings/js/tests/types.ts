// Checks the declarations when compiled: each line marked as an error must be one.
import { createZmatrix, InputError, Model, Note, ZmatrixError } from 'zmatrix';
import { functionsOf, Pointer, ZQMatrixTypeANSIText } from 'zmatrix/raw';

export async function types(bytes: Uint8Array): Promise<void> {
  const zmatrix = await createZmatrix({ wasm: bytes });
  const text = zmatrix.learn({ text: ['a', bytes], name: 'a' }, { order: 3 });
  const written: string = text.generate('a', { count: 3, seed: 1, method: 'best' });
  for (const { value, probability } of text.continue(written)) value.concat(probability.toFixed(2));
  const numbers: Int32Array = zmatrix.learn({ numbers: new Set([1, 2]) }, { coding: 'plain' }).generate([1]);
  const notes: Note[] = zmatrix.learn({ midi: bytes }).learn({ kern: '**kern' }).generate();
  const any: Model = zmatrix.load(text.save(), { repair: true });
  const error: ZmatrixError = new InputError(`${numbers.length} ${notes.length} ${any.info.subMatrices[0].names}`);
  const medium: Pointer<'ZQMatrixMedium'> = zmatrix.raw.createAndInitMatrixMedium();
  zmatrix.raw.s_setCurrentMatrixID_Medium(medium, ZQMatrixTypeANSIText);
  functionsOf(error).zq_version();
  // @ts-expect-error
  zmatrix.raw.s_setCurrentMatrixID(medium, 0);
  // @ts-expect-error
  text.continue([1]);
  // @ts-expect-error
  zmatrix.learn({ novel: 'a' });
  // @ts-expect-error
  text.generate('a', { method: 'worst' });
}
