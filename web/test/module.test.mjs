// The WebAssembly engine under Node against the native build: the command-line modes print
// the same rows, the bench counts the same nodes, and commands written into the input queue
// reach the engine whole and in order, during a search as before it.
import assert from "node:assert/strict";
import {resolve} from "node:path";
import {test} from "node:test";

import {NATIVE, ThreadEngine, WASM, benchSignature, run, runNode, sleep} from "./helpers.mjs";

const KIWIPETE = "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1";
const ENDGAME  = "8/2p5/3p4/KP5r/1R3p1k/8/4P1P1/8 w - - 0 1";

test("the command-line modes print what the native engine prints, with its exit status", () => {
    const cases = [["-perft", "5"], ["-perft", "4", "-fen", KIWIPETE], ["-divide", "3", "-fen", ENDGAME],
                   ["-divide", "2"], ["-perft", "3", "-fen", "not a position"]];
    for (const args of cases) {
        const native = run(resolve(NATIVE, "pellix"), args);
        const wasm   = runNode(resolve(WASM, "pellix.js"), args);
        assert.ok(native.out.length > 0, args.join(" "));
        assert.equal(wasm.out, native.out, args.join(" "));
        assert.equal(wasm.status, native.status, args.join(" "));
    }
});

test("the search bench counts the recorded signature", () => {
    const {out} = runNode(resolve(WASM, "pellix-bench.js"), ["search"]);
    const last  = out.trim().split("\n").pop();
    assert.equal(last, `Nodes: ${benchSignature()}`);
});

test("from a Node command line the engine reads standard input", () => {
    const {out, status} = runNode(resolve(WASM, "pellix.js"), [],
                                  "uci\nposition startpos moves e2e4\ngo depth 4\nquit\n");
    assert.match(out, /^id name Pellix 1\.1b$/m);
    assert.match(out, /^uciok$/m);
    assert.match(out, /^bestmove [a-h][1-8][a-h][1-8]/m);
    assert.equal(status, 1);
});

test("commands written during a search are read in order, and stop ends it with one move", async () => {
    const engine = new ThreadEngine();
    try {
        engine.send("uci");
        await engine.waitFor(/^uciok$/);
        engine.send("position startpos moves d2d4");
        engine.send("go infinite");
        await engine.waitFor(/^info depth 3 /);
        const bestmove = engine.waitFor(/^bestmove /);
        engine.write("isready\n");
        engine.write("st");
        await sleep(50);
        engine.write("op\nisready\n");
        await bestmove;
        await engine.waitFor(/^readyok$/);
        await sleep(200);
        const after = engine.lines.slice(engine.lines.indexOf("uciok") + 1)
                          .filter((l) => !l.startsWith("info"));
        assert.deepEqual(after.map((l) => l.split(" ")[0]), ["readyok", "bestmove", "readyok"]);
        assert.deepEqual(engine.errors, []);
    } finally {
        await engine.stop();
    }
});

test("a line split across writes while the engine waits is read once, whole", async () => {
    const engine = new ThreadEngine();
    try {
        engine.write("xbo");
        await sleep(50);
        engine.write("ard\nprotover 2\n");
        await engine.waitFor(/^feature .*done=1/);
        engine.write("pi");
        await sleep(50);
        engine.write("ng 7\nping 8\n");
        await engine.waitFor(/^pong 8$/);
        assert.deepEqual(engine.lines.filter((l) => l.startsWith("pong")), ["pong 7", "pong 8"]);
        assert.ok(!engine.lines.some((l) => /^Error/.test(l)), engine.lines.join("\n"));
    } finally {
        await engine.stop();
    }
});

test("quit ends the engine's thread with the native exit status", async () => {
    const engine = new ThreadEngine();
    engine.send("uci");
    engine.send("quit");
    assert.equal(await engine.exited, 1);
});
