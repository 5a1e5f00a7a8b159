// Linked by Emscripten: random bytes that also work without `crypto`, as in Node 18. The library uses a few for a hash.
mergeInto(LibraryManager.library, {
  $getRandomDevice: function () {
    if (typeof crypto != 'object' || typeof crypto.getRandomValues != 'function') return function () { return (Math.random() * 256) | 0; };
    var byte = new Uint8Array(1);
    return function () { return crypto.getRandomValues(byte)[0]; };
  },
});
