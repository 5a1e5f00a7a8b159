import { readFileSync } from 'node:fs';
import { createZmatrix } from 'zmatrix';

export const zmatrix = await createZmatrix();
export const example = (name) => readFileSync(new URL(`../examples/${name}`, import.meta.url));
export const values = (items) => Array.from(items, ({ value }) => value);
export const STEPS = [0, 1, 3, 4, 6, 7, 9, 10, 12, 13, 15, 16];
