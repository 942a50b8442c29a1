// Starts the engine before the page's larger modules have loaded (an async module, run as
// soon as it is here): the worker fetches and compiles the engine while the board's and the
// rules' code come in, and the handshake begins at once. The book is left out here, so nothing waits for it; app.js adds it later.
import {createEngine} from "./engine/index.mjs";

// The engine's pellix.ini. 64 MB of transposition table: plenty at the page's time controls,
// modest on a phone. The first handshake takes 16 MB, which it clears 30 ms sooner; the
// page repeats the handshake with the full table once it has the book.
export const HASH_MB = 64;
export const engineSettings = (book, hash = HASH_MB) =>
    `[Engine]\nHash=${hash}\nBook=${book ? 1 : 0}\nBookFile=pellixopenbook.bin\n`;
export const FIRST_SETTINGS = engineSettings(false, 16);

// When the engine's name and its first "uciok" came, in ms after the request for the page.
export const timing = {};

export const engine = createEngine();
const early = [];
let deliver = (line) => early.push(line);
engine.onLine((line) => {
    if (line.startsWith("id name ") && !timing.name) {
        timing.name = performance.now();
        // This module runs as soon as it has loaded, perhaps before the heading is parsed;
        // app.js names the engine then.
        const heading = document.getElementById("engine-name");
        if (heading)
            heading.textContent = line.slice(8);
    } else if (line === "uciok" && !timing.uciok) {
        timing.uciok = performance.now();
    }
    deliver(line);
});
engine.writeFile("/pellix.ini", FIRST_SETTINGS);
engine.send("uci");

// The page's logic takes over the engine's lines, those that came before it first.
export function attach(listener) {
    early.splice(0).forEach(listener);
    deliver = listener;
}
