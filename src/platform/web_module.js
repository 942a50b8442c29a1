// Runs inside the engine's module, before the program starts: the engine's input, which
// web_input.cpp reads, and, under Node, the loading of the .wasm beside the script.
//
// Command text reaches the engine through Module.pellixWrite(text) and the end of input
// through Module.pellixClose(), both called from the thread's own event loop (a worker's
// onmessage, Node's stdin). The engine runs on that same thread, so it must give the loop a
// turn to hear of new text: a read that finds nothing suspends the program with emscripten's
// Asyncify (the stack is saved, the call returns to the loop, and the program resumes where
// it was). A search's poll does so at most once every YIELD_MS, a read that must wait until
// text comes. No SharedArrayBuffer is needed, so a page works without cross-origin
// isolation, and commands sent during a search are read at its next poll in every host.
//
// Started from a Node command line (web_node_main.js sets Module.pellixStdin), the program
// reads standard input the same way, from its first read on.

var ENGINE_IS_NODE = typeof process == "object" && typeof process.versions == "object" &&
                     typeof process.versions.node == "string";

// Node 18 and later have a fetch() that cannot read files, which emscripten would try first.
if (ENGINE_IS_NODE && !Module["wasmBinary"] && typeof __filename == "string")
    Module["wasmBinary"] = require("fs").readFileSync(__filename.replace(/\.js$/, ".wasm"));

(function() {
    // A poll that yields costs a turn of the event loop (a few microseconds to a
    // millisecond); polls come every 30,000 nodes, a few milliseconds apart at full speed.
    // Yielding at most every 5 ms keeps the search's speed and answers a stop in
    // milliseconds.
    var YIELD_MS = 5;
    var chunks = [], closed = false, wake = null, lastYield = 0, stdinAttached = false;

    function wakeReader() {
        var w = wake;
        wake = null;
        if (w)
            w();
    }

    Module["pellixWrite"] = function(text) {
        var bytes = typeof text == "string" ? new TextEncoder().encode(text) : text;
        if (bytes.length == 0 || closed)
            return;
        chunks.push(bytes);
        wakeReader();
    };

    Module["pellixClose"] = function() {
        closed = true;
        wakeReader();
    };

    // Moves up to `size` waiting bytes to `out`: their number, or -1 once the input is closed
    // and drained.
    function take(out, size) {
        var count = 0;
        while (count < size && chunks.length) {
            var chunk = chunks[0], n = Math.min(chunk.length, size - count);
            HEAPU8.set(chunk.subarray(0, n), out + count);
            count += n;
            if (n == chunk.length)
                chunks.shift();
            else
                chunks[0] = chunk.subarray(n);
        }
        return count > 0 || !closed ? count : -1;
    }

    // A turn of the event loop: setImmediate under Node, a message in a browser (a timer
    // would be held back to 4 ms once nested).
    var nextTurn;
    if (ENGINE_IS_NODE) {
        nextTurn = setImmediate;
    } else {
        var channel = new MessageChannel(), turns = [];
        channel.port1.onmessage = function() {
            turns.shift()();
        };
        nextTurn = function(f) {
            turns.push(f);
            channel.port2.postMessage(0);
        };
    }

    function attachNodeStdin() {
        stdinAttached = true;
        process.stdin.on("data", Module["pellixWrite"]);
        process.stdin.on("end", Module["pellixClose"]);
        process.stdin.on("error", Module["pellixClose"]);
    }

    Module["pellixReadInput"] = function(out, size, wait) {
        if (size <= 0)
            return 0;
        if (Module["pellixStdin"] && !stdinAttached)
            attachNodeStdin();
        // Resuming after a yield: Asyncify calls this again and takes what the wake-up gave.
        if (Asyncify.state !== Asyncify.State.Normal)
            return Asyncify.handleSleep(function() {});
        if (chunks.length || closed)
            return take(out, size);
        var now = Date.now();
        if (!wait && now - lastYield < YIELD_MS)
            return 0;
        lastYield = now;
        var answer = Asyncify.handleSleep(function(resume) {
            if (wait)
                wake = function() {
                    resume(take(out, size));
                };
            else
                nextTurn(function() {
                    resume(take(out, size));
                });
        });
        watchForExit();
        return answer;
    };

    // Once main has been suspended, its caller has gone and cannot pass on the exit status;
    // it comes instead when the last resumption returns from main.
    var watching = false;
    function watchForExit() {
        if (watching)
            return;
        watching = true;
        Asyncify.whenDone().then(function(status) {
            exit(status);
        });
    }
})();
