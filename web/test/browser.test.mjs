// The web-dist folder in headless Chromium as a plain static host serves it: under a
// sub-path, without cross-origin isolation, the .wasm with a generic type. Games against the
// engine (per move, and on a clock of 3 s + 100 ms), the clocks on take-back, an
// under-promotion through the board, the move list, analysis with stop, PGN out and in, a
// reload, and the page at a phone's width. Nothing may be asked of another server and
// nothing may reach the console as an error. Screenshots go to build/web/.
import assert from "node:assert/strict";
import {mkdirSync} from "node:fs";
import {resolve} from "node:path";
import {after, before, test} from "node:test";

import {Chess} from "chess.js";

import {startServer} from "../server.mjs";
import {DIST, SHOTS, launchChromium} from "./helpers.mjs";

const PREFIX = "/some/dir/";
let server, browser, page, base;
const foreign = [], consoleErrors = [];

const ready = () => page.waitForFunction(() => window.pellix && window.pellix.state.ready, {timeout: 30000});

before(async () => {
    server  = await startServer(DIST, 0, {prefix: PREFIX, wasmType: "application/octet-stream"});
    base    = `http://127.0.0.1:${server.address().port}${PREFIX}`;
    browser = await launchChromium();
    page    = await browser.newPage();
    await page.setViewport({width: 1100, height: 800});
    page.on("request", (r) => {
        if (!r.url().startsWith(base) && !/^(data|blob):/.test(r.url()))
            foreign.push(r.url());
    });
    page.on("console", (m) => m.type() === "error" && consoleErrors.push(m.text()));
    page.on("pageerror", (e) => consoleErrors.push(String(e)));
    await page.goto(base);
    await ready();
    mkdirSync(SHOTS, {recursive: true});
});

after(async () => {
    await browser?.close();
    server?.close();
});

// A small deterministic generator, so that a failing game can be played again.
function random(seed) {
    return () => (seed = (seed * 1103515245 + 12345) % 2147483648) / 2147483648;
}

const set = (settings) => page.evaluate((s) => {
    for (const [id, value] of Object.entries(s)) {
        const element = document.getElementById(id);
        element.value = value;
        element.dispatchEvent(new Event("change"));
    }
}, settings);

const mode = (m) => page.click(`input[name=mode][value=${m}]`);

// Plays random legal moves for the user until the game ends; answers the game's record.
async function playOut(seed) {
    const next = random(seed);
    for (let ply = 0; ply < 600; ply++) {
        const turn = await page.waitForFunction(() => {
            const {record, state} = window.pellix, end = record.end();
            const idle = state.ready && !state.search && record.gameAt().turn() === document.getElementById("colour").value;
            return (end || idle) && {end, fen: record.gameAt().fen()};
        }, {timeout: 30000, polling: 10});
        const {end, fen} = await turn.jsonValue();
        if (end)
            return page.evaluate(() => ({...window.pellix.record.toJSON(), end: window.pellix.record.end(),
                                         pgn: window.pellix.pgn(), status: document.getElementById("status").textContent}));
        const moves = new Chess(fen).moves({verbose: true});
        assert.ok(await page.evaluate((m) => window.pellix.userMove(m), moves[Math.floor(next() * moves.length)].lan));
    }
    assert.fail("the game did not end in 600 plies");
}

// The game's PGN read by chess.js gives back its moves, its result and its tags.
function checkPgn(game, timeControl) {
    const judge = new Chess();
    judge.loadPgn(game.pgn);
    assert.deepEqual(judge.history({verbose: true}).map((m) => m.lan), game.moves);
    const tags = judge.getHeaders();
    assert.equal(tags.Result, game.end.result);
    assert.equal(tags.TimeControl, timeControl);
    assert.deepEqual([tags.White, tags.Black], ["Player", "Pellix 1.1b"]);
    for (const tag of ["Event", "Site", "Date", "Round"])
        assert.ok(tags[tag], tag);
    assert.ok(game.status.includes(game.end.result), game.status);
}

test("without isolation, under a sub-path, the page names the engine and loads its book", async () => {
    assert.equal(await page.evaluate(() => crossOriginIsolated), false);
    assert.equal(await page.$eval("#engine-name", (e) => e.textContent), "Pellix 1.1b");
    await page.waitForSelector("#book.loaded", {timeout: 10000});
});

test("a whole game against the engine: every move legal, the end announced, the PGN read back", async () => {
    await set({"time-mode": "move", "move-seconds": "0.05"});
    const game = await playOut(17);
    checkPgn(game, "-");
    console.log(`# game of ${game.moves.length} plies: ${game.end.reason}`);
});

test("a game on a clock of 3 s + 100 ms, which Pellix does not lose on time", async () => {
    await set({"time-mode": "clock", "clock-minutes": "0.05", "clock-increment": "0.1"});
    const game = await playOut(5);
    assert.notEqual(game.flagged, "b", "Pellix lost on time");
    checkPgn(game, "3+0.1");
    console.log(`# clock game of ${game.moves.length} plies: ${game.end.reason}`);
});

test("take-back restores both clocks and the board to the user's turn", async () => {
    await set({"time-mode": "clock", "clock-minutes": "1", "clock-increment": "1"});
    for (const move of ["e2e4", "d2d4"]) {
        await page.waitForFunction(() => !window.pellix.state.search && window.pellix.record.gameAt().turn() === "w",
                                   {polling: 10});
        await new Promise((done) => setTimeout(done, 300));
        assert.ok(await page.evaluate((m) => window.pellix.userMove(m), move));
    }
    await page.waitForFunction(() => !window.pellix.state.search && window.pellix.record.length === 4, {polling: 10});
    const before = await page.evaluate(() => window.pellix.record.clocks.slice());
    assert.ok(before[4].w !== before[2].w && before[4].b !== before[2].b);
    await page.click("#take-back");
    const restored = await page.evaluate(() => ({clocks: window.pellix.record.currentClocks(), length: window.pellix.record.length,
                                                 text: document.getElementById("clock-bottom").textContent}));
    assert.deepEqual([restored.length, restored.clocks], [2, before[2]]);
    assert.match(restored.text, /^White 1:0\d\.\d$/);
});

test("a pawn promotes to the piece chosen on the board", async () => {
    await set({"time-mode": "move", "move-seconds": "0.2"});
    await page.$eval("#fen", (e) => (e.value = "8/P6k/8/8/8/8/6K1/8 w - - 0 1"));
    await page.click("#fen-form button");
    await page.waitForFunction(() => window.pellix.drawn() && !window.pellix.state.search, {polling: 10});
    await page.click('[data-square="a7"]');
    await page.click('[data-square="a8"]');
    await page.waitForSelector('.promotion-dialog-button[data-piece="wn"]');
    await page.click('.promotion-dialog-button[data-piece="wn"]');
    await page.waitForFunction(() => window.pellix.record.length >= 1);
    assert.equal(await page.evaluate(() => window.pellix.record.moves[0].san), "a8=N");
    assert.match(await page.evaluate(() => window.pellix.pgn()), /\[SetUp "1"\]\n\[FEN "8\/P6k\/8\/8\/8\/8\/6K1\/8 w - - 0 1"\]/);
});

test("stepping back through the moves analyses there, a move restarts it, stop answers within 200 ms", async () => {
    await page.evaluate(() => window.pellix.loadPgn("1. e4 e5 2. Nf3 Nc6 3. Bb5 a6 *"));
    await mode("analyse");
    await page.click('#moves [data-ply="4"]');
    const depth = (d) => page.waitForFunction((d) => window.pellix.state.search?.cancelled === false &&
        Number(document.getElementById("depth").textContent) >= d, {timeout: 20000}, d);
    await depth(6);
    assert.match(await page.evaluate(() => window.pellix.state.search.fen), /^r1bqkbnr\/pppp1ppp\/2n5\/4p3\/4P3\/5N2\//);
    await page.click("#back");
    await page.click("#forward");
    await depth(5);
    // A move on view replaces the rest of the game, and the analysis goes on from it.
    assert.ok(await page.evaluate(() => window.pellix.userMove("d2d4")));
    await depth(6);
    assert.deepEqual(await page.evaluate(() => window.pellix.record.moves.map((m) => m.san)), ["e4", "e5", "Nf3", "Nc6", "d4"]);
    await page.waitForFunction(() => window.pellix.drawn());
    await page.screenshot({path: resolve(SHOTS, "page.png")});
    const stop = await page.evaluate(async () => {
        const {state} = window.pellix, answered = state.bestMoves.length, start = performance.now();
        window.pellix.send("stop");
        while (state.bestMoves.length === answered)
            await new Promise((r) => setTimeout(r, 1));
        return performance.now() - start;
    });
    assert.ok(stop < 200, `stop took ${stop} ms`);
    await mode("play");
});

test("the game survives a reload", async () => {
    await page.evaluate(() => window.pellix.loadPgn("1. d4 Nf6 2. c4 e6 *"));
    await page.click("#flip");
    const kept = () => page.evaluate(() => JSON.stringify([window.pellix.record, window.pellix.state.flipped,
        document.querySelector("input[name=mode]:checked").value, document.getElementById("time-mode").value]));
    const saved = await kept();
    await page.reload();
    await ready();
    assert.equal(await kept(), saved);
    assert.match(await page.$eval("#moves", (e) => e.textContent), /^1\. d4 Nf6 2\. c4 e6/);
});

test("at a phone's width nothing scrolls sideways and every control is on screen", async () => {
    await page.setViewport({width: 375, height: 812});
    // The board redraws itself at its new size after a resize, a frame or two later.
    await page.waitForFunction(() => document.documentElement.scrollWidth <= 375, {timeout: 5000}).catch(() => {});
    const layout = await page.evaluate(() => ({
        width: document.documentElement.scrollWidth,
        outside: [...document.querySelectorAll("button, input, select, textarea")]
            .filter((e) => !e.closest("[hidden]"))
            .map((e) => [e.id || e.value || e.textContent, e.getBoundingClientRect()])
            .filter(([, r]) => r.width === 0 || r.left < 0 || r.right > 375).map(([name]) => name),
    }));
    assert.equal(layout.width, 375);
    assert.deepEqual(layout.outside, []);
    await page.screenshot({path: resolve(SHOTS, "phone.png"), fullPage: true});
});

test("no request left the folder and the console shows no error", () => {
    assert.deepEqual(foreign, []);
    assert.deepEqual(consoleErrors, []);
});
