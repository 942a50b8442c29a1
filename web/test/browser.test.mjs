// The page in headless Chromium, driven by puppeteer-core: a whole game against the engine
// at a fast time control, every engine move judged legal by chess.js; an analysis stopped
// within 500 ms; no request beyond the local server and no error on the console. Leaves a
// screenshot of the board with a search report in build/web/screenshot.png.
import assert from "node:assert/strict";
import {mkdirSync, mkdtempSync, rmSync} from "node:fs";
import {tmpdir} from "node:os";
import {join, resolve} from "node:path";
import {after, before, test} from "node:test";

import {Chess} from "chess.js";
import puppeteer from "puppeteer-core";

import {startServer} from "../server.mjs";
import {ROOT} from "./helpers.mjs";

const SCREENSHOT = resolve(ROOT, "build/web/screenshot.png");

let server, browser, page, origin, profile;
const foreign = [], consoleErrors = [];

before(async () => {
    server = await startServer(Number(process.env.PORT || 0));
    origin = `http://127.0.0.1:${server.address().port}`;
    profile = mkdtempSync(join(tmpdir(), "pellix-chromium-"));
    browser = await puppeteer.launch({
        executablePath: process.env.CHROMIUM || "/usr/bin/chromium",
        headless: true,
        args: ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
               "--disable-background-networking", "--disable-component-update", "--disable-sync",
               `--user-data-dir=${profile}`],
    });
    page = await browser.newPage();
    await page.setViewport({width: 1100, height: 760});
    page.on("request", (r) => {
        if (!r.url().startsWith(origin + "/") && !/^(data|blob):/.test(r.url()))
            foreign.push(r.url());
    });
    page.on("console", (m) => m.type() === "error" && consoleErrors.push(m.text()));
    page.on("pageerror", (e) => consoleErrors.push(String(e)));
    await page.goto(origin + "/", {waitUntil: "load"});
    await page.waitForFunction(() => window.pellix && window.pellix.state.ready, {timeout: 30000});
});

after(async () => {
    await browser?.close();
    server?.close();
    if (profile)
        rmSync(profile, {recursive: true, force: true});
});

// A small deterministic generator, so that a failing game can be played again.
function random(seed) {
    return () => (seed = (seed * 1103515245 + 12345) % 2147483648) / 2147483648;
}

test("the page is isolated and names the engine after the handshake", async () => {
    assert.equal(await page.evaluate(() => crossOriginIsolated), true);
    assert.equal(await page.$eval("#engine-name", (e) => e.textContent), "Pellix 1.1b");
});

test("a whole game against the engine, every engine move legal", async () => {
    await page.$eval("#move-seconds", (e) => (e.value = "0.05"));
    await page.evaluate(() => window.pellix.newGame());
    const next = random(17);
    for (let ply = 0; ply < 600; ply++) {
        const state = await page.waitForFunction(
            () => {
                const {game, state} = window.pellix;
                const over = game.isGameOver();
                return (over || (game.turn() === "w" && !state.search)) &&
                       {over, fen: game.fen()};
            },
            {timeout: 20000});
        const {over, fen} = await state.jsonValue();
        if (over)
            break;
        const moves = new Chess(fen).moves({verbose: true});
        const move  = moves[Math.floor(next() * moves.length)];
        assert.ok(await page.evaluate((m) => window.pellix.userMove(m), move.lan));
    }
    const played = await page.evaluate(() => window.pellix.game.history({verbose: true}).map((m) => m.lan));
    const judge  = new Chess();
    played.forEach((lan, ply) => {
        assert.doesNotThrow(() => judge.move(lan), `ply ${ply + 1}: ${lan} in ${judge.fen()}`);
    });
    assert.ok(judge.isGameOver(), `the game ended: ${judge.fen()}`);
    console.log(`# game of ${played.length} plies: ${judge.isCheckmate() ? "checkmate" : "draw"}`);
});

test("analysis restarts on a move and stops within 500 ms", async () => {
    await page.evaluate(() => window.pellix.newGame());
    await page.click("input[name=mode][value=analyse]");
    const waitForDepth = (depth) => page.waitForFunction(
        (d) => window.pellix.state.search && Number(document.querySelector("#depth").textContent) >= d,
        {timeout: 20000}, depth);
    await waitForDepth(6);
    // A move during the analysis: the running search answers, a new one starts on the new
    // position.
    const restart = await page.evaluate(async () => {
        const {state, userMove} = window.pellix, answered = state.bestMoves.length;
        const start = performance.now();
        userMove("e2e4");
        while (state.bestMoves.length === answered)
            await new Promise((r) => setTimeout(r, 5));
        return {ms: performance.now() - start, fen: state.search && state.search.fen};
    });
    assert.ok(restart.ms < 500, `restart took ${restart.ms} ms`);
    assert.match(restart.fen || "", / b KQkq /);
    await waitForDepth(6);
    await page.waitForFunction(() => window.pellix.drawn());
    await page.screenshot({path: (mkdirSync(resolve(SCREENSHOT, ".."), {recursive: true}), SCREENSHOT)});
    const stop = await page.evaluate(async () => {
        const {state, send} = window.pellix, answered = state.bestMoves.length;
        const start = performance.now();
        send("stop");
        while (state.bestMoves.length === answered)
            await new Promise((r) => setTimeout(r, 5));
        return performance.now() - start;
    });
    assert.ok(stop < 500, `stop took ${stop} ms`);
    console.log(`# stop answered in ${stop.toFixed(0)} ms, a move restarted the analysis in ${restart.ms.toFixed(0)} ms`);
});

test("no request left the local server and the console shows no error", () => {
    assert.deepEqual(foreign, []);
    assert.deepEqual(consoleErrors, []);
});
