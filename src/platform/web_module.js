// Runs inside the engine's module, before the program starts: the reader of the input queue
// that web_input.cpp calls, and, under Node, the loading of the .wasm beside the script.
//
// The queue is a SharedArrayBuffer given as Module.pellixInput; another thread writes
// command text into it (web/input-queue.js in the page and the tests). Its layout:
//   Int32 words 0..3: bytes written in all, bytes read in all, 1 once the writer closed it,
//                     a counter the writer bumps on every change (the reader sleeps on it);
//   from byte 16:     a ring of data bytes, its size a power of two.
// The totals wrap at 32 bits; their difference is what is waiting.
// Without a queue (the program started from a Node command line), standard input is read
// with blocking reads: a command-line run works, but commands sent during a search are
// seen only when it ends.

var ENGINE_IS_NODE = typeof process == "object" && typeof process.versions == "object" &&
                     typeof process.versions.node == "string";

// Node 18 and later have a fetch() that cannot read files, which emscripten would try first.
if (ENGINE_IS_NODE && !Module["wasmBinary"] && typeof __filename == "string")
    Module["wasmBinary"] = require("fs").readFileSync(__filename.replace(/\.js$/, ".wasm"));

Module["pellixReadInput"] = (function() {
    var WRITTEN = 0, READ = 1, CLOSED = 2, CHANGES = 3, DATA_OFFSET = 16;
    var words = null, ring = null;

    function fromQueue(out, size, wait) {
        if (!words) {
            words = new Int32Array(Module["pellixInput"], 0, 4);
            ring  = new Uint8Array(Module["pellixInput"], DATA_OFFSET);
        }
        for (;;) {
            var changes = Atomics.load(words, CHANGES);
            var read = Atomics.load(words, READ);
            var count = Math.min((Atomics.load(words, WRITTEN) - read) | 0, size);
            if (count > 0) {
                var mask = ring.length - 1;
                for (var i = 0; i < count; i++)
                    HEAPU8[out + i] = ring[(read + i) & mask];
                Atomics.store(words, READ, (read + count) | 0);
                return count;
            }
            if (Atomics.load(words, CLOSED))
                return -1;
            if (!wait)
                return 0;
            Atomics.wait(words, CHANGES, changes);
        }
    }

    function fromNodeStdin(out, size, wait) {
        if (!wait)
            return 0;
        var fs = require("fs"), chunk = Buffer.alloc(size);
        for (;;) {
            try {
                var count = fs.readSync(0, chunk, 0, size, null);
                HEAPU8.set(chunk.subarray(0, count), out);
                return count > 0 ? count : -1;
            } catch (e) {
                if (e.code != "EAGAIN")
                    return -1;
                Atomics.wait(new Int32Array(new SharedArrayBuffer(4)), 0, 0, 10);
            }
        }
    }

    return function(out, size, wait) {
        if (size <= 0)
            return 0;
        if (Module["pellixInput"])
            return fromQueue(out, size, wait);
        return ENGINE_IS_NODE ? fromNodeStdin(out, size, wait) : -1;
    };
})();
