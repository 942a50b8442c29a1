// The engine's Web Worker: loads the WebAssembly module, gives it the input queue, a
// pellix.ini that turns the book on and the book itself in its in-memory file system, and
// posts every line the engine prints back to the page. The engine then runs until "quit",
// blocked in its own reads while no command waits, so this worker handles one message only.
importScripts("engine/pellix.js");

// 64 MB of transposition table: plenty at the page's time controls, modest on a phone.
const CONFIG = "[Engine]\nHash=64\nBook=1\nBookFile=pellixopenbook.bin\n";

self.onmessage = async (event) => {
    const book = await fetch("engine/pellixopenbook.bin").then((r) => r.arrayBuffer());
    Pellix({
        pellixInput: event.data.queue,
        arguments: [],
        locateFile: (file) => "engine/" + file,
        print: (line) => postMessage({line}),
        printErr: (line) => postMessage({error: line}),
        preRun: [(module) => {
            module.FS.writeFile("/pellix.ini", CONFIG);
            module.FS.writeFile("/pellixopenbook.bin", new Uint8Array(book));
        }],
        onExit: (status) => postMessage({exit: status}),
    });
};
