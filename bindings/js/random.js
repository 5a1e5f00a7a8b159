// For Emscripten's linker. Random bytes where there is no `crypto`, as in Node 18, too: the library takes a few for a hash of its own.
mergeInto(LibraryManager.library, {
  $getRandomDevice: function () {
    if (typeof crypto != 'object' || typeof crypto.getRandomValues != 'function') return function () { return (Math.random() * 256) | 0; };
    var byte = new Uint8Array(1);
    return function () { return crypto.getRandomValues(byte)[0]; };
  },
});
