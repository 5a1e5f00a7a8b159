// Characters and items. The item of a character is its byte in Windows-1252, for which the library's rules for sentences are made, or
// its code point if Windows-1252 lacks it.

const DISPLACED = 0xdc00; // added to the code point of a control character whose byte has another meaning in Windows-1252
const REPLACEMENT = 0xfffd;
const LAST_OF_ONE_UNIT = 0xffff;

// The code points of the bytes 0x80 to 0x9f, 0 for bytes without a character in Windows-1252.
const CODES_OF_BYTES = [
  0x20ac, 0, 0x201a, 0x0192, 0x201e, 0x2026, 0x2020, 0x2021, 0x02c6, 0x2030, 0x0160, 0x2039, 0x0152, 0, 0x017d, 0,
  0, 0x2018, 0x2019, 0x201c, 0x201d, 0x2022, 0x2013, 0x2014, 0x02dc, 0x2122, 0x0161, 0x203a, 0x0153, 0, 0x017e, 0x0178,
];

const utf16 = new TextDecoder('utf-16le', { ignoreBOM: true }); // WebAssembly is little-endian
const itemOf = new Map();
CODES_OF_BYTES.forEach((code, at) => {
  if (code === 0) return;
  itemOf.set(code, 0x80 + at);
  itemOf.set(0x80 + at, DISPLACED + 0x80 + at);
});
const codeOf = new Map([...itemOf].map(([code, item]) => [item, code]));

const isSurrogate = (code) => code >= 0xd800 && code <= 0xdfff;

/** The items of a text; an unpaired surrogate becomes U+FFFD. */
export function itemsOf(text) {
  const items = new Int32Array(text.length);
  let count = 0;
  for (let at = 0; at < text.length; at++) {
    const code = text.codePointAt(at);
    if (code > LAST_OF_ONE_UNIT) at++;
    items[count++] = code < 0x80 ? code : isSurrogate(code) ? REPLACEMENT : itemOf.get(code) ?? code;
  }
  return items.subarray(0, count);
}

function codeOfItem(item) {
  if (item >= 0 && item < 0x80) return item;
  const code = codeOf.get(item) ?? item;
  return code < 0 || code > 0x10ffff || isSurrogate(code) ? REPLACEMENT : code;
}

/** The characters of items; an item without a character gives U+FFFD. */
export function textOf(items) {
  const units = new Uint16Array(2 * items.length);
  let count = 0;
  for (const item of items) {
    const code = codeOfItem(item);
    if (code > LAST_OF_ONE_UNIT) units[count++] = 0xd7c0 + (code >> 10);
    units[count++] = code > LAST_OF_ONE_UNIT ? 0xdc00 + (code & 0x3ff) : code;
  }
  return utf16.decode(units.subarray(0, count));
}

/** Decodes UTF-16 if there is a byte order mark, UTF-8 if all bytes are valid, else Windows-1252. */
export function decode(bytes) {
  if (bytes[0] === 0xff && bytes[1] === 0xfe) return new TextDecoder('utf-16le').decode(bytes);
  if (bytes[0] === 0xfe && bytes[1] === 0xff) return new TextDecoder('utf-16be').decode(bytes);
  try {
    return new TextDecoder('utf-8', { fatal: true }).decode(bytes);
  } catch {
    return textOf(Int32Array.from(bytes));
  }
}
