// The engine's Web Worker: loads the WebAssembly module, gives it the input queue, a
// pellix.ini (the book on for games, off for analysis) and the book in its in-memory file
// system, and
// posts every line the engine prints back to the page. The engine then runs until "quit",
// blocked in its own reads while no command waits, so this worker handles one message only.
importScripts("engine/pellix.js");

// 64 MB of transposition table: plenty at the page's time controls, modest on a phone.
const config = (book) => `[Engine]\nHash=64\nBook=${book ? 1 : 0}\nBookFile=pellixopenbook.bin\n`;

self.onmessage = async (event) => {
    const useBook = event.data.book;
    const book = useBook ? await fetch("engine/pellixopenbook.bin").then((r) => r.arrayBuffer()) : null;
    Pellix({
        pellixInput: event.data.queue,
        arguments: [],
        locateFile: (file) => "engine/" + file,
        print: (line) => postMessage({line}),
        printErr: (line) => postMessage({error: line}),
        preRun: [(module) => {
            module.FS.writeFile("/pellix.ini", config(useBook));
            if (book)
                module.FS.writeFile("/pellixopenbook.bin", new Uint8Array(book));
        }],
        onExit: (status) => postMessage({exit: status}),
    });
};
