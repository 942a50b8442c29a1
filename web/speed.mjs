// The browser engine's figures, from the web-dist folder served as a plain static host
// (no isolation headers), in headless Chromium:
//   - start-up: ms from the request for the page to the engine's name and to its first
//     "uciok", median of LOADS cold loads (each in a fresh browser context);
//   - stop: ms from "stop" to "bestmove" during a "go infinite", the worst of STOPS;
//   - speed: nodes per second of a fixed-depth search in Chromium and under Node (the npm
//     package in build/npm) against the native engine; runs of the three alternate, so that
//     all see the same load, and the medians are compared.
//   node web/speed.mjs [ROUNDS] [LOADS] [STOPS]     (needs make web-dist npm all)
import {spawn} from "node:child_process";
import {createRequire} from "node:module";
import {resolve} from "node:path";
import {createInterface} from "node:readline";

import {startServer} from "./server.mjs";
import {DIST, NATIVE, ROOT, launchChromium, lineWaiter, sleep} from "./test/helpers.mjs";

const [rounds = 5, loads = 5, stops = 20] = process.argv.slice(2).map(Number);
const FEN = "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1";
const SEARCH = ["uci", `position fen ${FEN}`, "go depth 9"];
const median = (xs) => [...xs].sort((a, b) => a - b)[Math.floor(xs.length / 2)];
const npsOf = (lines) => Number(lines.filter((l) => / nps /.test(l)).pop().match(/ nps (\d+)/)[1]);

let served = 0;
const server  = await startServer(DIST, 0, {}, (path, bytes) => (served += bytes));
const origin  = `http://127.0.0.1:${server.address().port}/`;
const browser = await launchChromium();

const names = [], ready = [];
for (let i = 0; i < loads; i++) {
    const context = await browser.createBrowserContext();
    const page = await context.newPage();
    served = 0;
    await page.goto(origin);
    await page.waitForFunction(() => window.pellix?.timing.uciok, {polling: 10});
    const timing = await page.evaluate(() => window.pellix.timing);
    names.push(timing.name);
    ready.push(timing.uciok);
    await context.close();
}
console.log(`start-up: engine name ${median(names).toFixed(0)} ms, uciok ${median(ready).toFixed(0)} ms after ` +
            `the request (median of ${loads} cold loads: ${ready.map(Math.round).join(", ")}); ` +
            `${served} bytes before the book`);

// An engine of the npm package's browser entry, on a page of the folder's origin.
const page = await browser.newPage();
await page.goto(origin + "style.css");
await page.evaluate(async (url) => {
    const {createEngine} = await import(url);
    window.engine = createEngine();
    window.lines = [];
    window.engine.onLine((line) => window.lines.push(line));
    window.engine.writeFile("/pellix.ini", "[Engine]\nHash=64\n");
    window.engine.send("uci");
    window.next = async (prefix) => {
        const from = window.lines.length;
        for (;;) {
            const line = window.lines.slice(from).find((l) => l.startsWith(prefix));
            if (line)
                return line;
            await new Promise((r) => setTimeout(r, 1));
        }
    };
}, origin + "engine/index.mjs");

const latencies = [];
for (let i = 0; i < stops; i++) {
    latencies.push(await page.evaluate(async (wait) => {
        window.engine.send("position startpos");
        window.engine.send("go infinite");
        await new Promise((r) => setTimeout(r, wait));
        const start = performance.now(), answer = window.next("bestmove");
        window.engine.send("stop");
        await answer;
        return performance.now() - start;
    }, 100 + ((i * 37) % 400)));
}
console.log(`stop: worst ${Math.max(...latencies).toFixed(0)} ms, median ${median(latencies).toFixed(0)} ms ` +
            `of ${stops} stops in Chromium without isolation`);

const {createEngine} = createRequire(import.meta.url)(resolve(ROOT, "build/npm/node.cjs"));
async function nodeSearch() {
    const engine = createEngine(), {lines, next} = lineWaiter(engine);
    SEARCH.forEach((c) => engine.send(c));
    await next(/^bestmove/, 120000);
    await engine.terminate();
    return npsOf(lines);
}

// The native engine reads its input during a search: "quit" goes only after the bestmove.
async function nativeSearch() {
    const child = spawn(resolve(NATIVE, "pellix"));
    const {lines, next} = lineWaiter({onLine: (listener) => createInterface(child.stdout).on("line", listener)});
    child.stdin.write(SEARCH.join("\n") + "\n");
    await next(/^bestmove/, 120000);
    child.stdin.end("quit\n");
    return npsOf(lines);
}

const runs = {native: [], node: [], chromium: []};
for (let round = 0; round < rounds; round++) {
    runs.native.push(await nativeSearch());
    runs.node.push(await nodeSearch());
    runs.chromium.push(await page.evaluate(async (commands) => {
        const from = window.lines.length;
        commands.forEach((c) => window.engine.send(c));
        await window.next("bestmove");
        return window.lines.slice(from);
    }, SEARCH).then(npsOf));
    await sleep(100);
}
const native = median(runs.native);
for (const [where, values] of Object.entries(runs))
    console.log(`speed ${where.padEnd(8)} median ${String(median(values)).padStart(8)} nps, ` +
                `${(median(values) / native).toFixed(2)} of native (${values.join(", ")})`);

await browser.close();
server.close();
