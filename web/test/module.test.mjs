// The WebAssembly engine under Node against the native build: the command-line modes print
// the same rows, the bench counts the same nodes, and commands sent to the engine's worker
// (through the npm package as staged in build/npm) or on a command line's standard input
// reach it whole and in order, during a search as before it.
import assert from "node:assert/strict";
import {spawn} from "node:child_process";
import {readFileSync} from "node:fs";
import {createRequire} from "node:module";
import {createInterface} from "node:readline";
import {resolve} from "node:path";
import {test} from "node:test";

import {NATIVE, ROOT, WASM, benchSignature, lineWaiter, run, runNode, sleep} from "./helpers.mjs";

const {createEngine} = createRequire(import.meta.url)(resolve(ROOT, "build/npm/node.cjs"));


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

test("from a Node command line the engine reads standard input, during a search too", async () => {
    const child = spawn(process.execPath, [resolve(WASM, "pellix.js")]);
    const {lines, next} = lineWaiter({onLine: (listener) => createInterface(child.stdout).on("line", listener)});
    const exited = new Promise((done) => child.on("exit", done));
    child.stdin.write("uci\nposition startpos moves e2e4\ngo infinite\n");
    await next(/^info depth 4 /);
    child.stdin.write("isready\nstop\n");
    await next(/^bestmove [a-h][1-8][a-h][1-8]/);
    child.stdin.end("quit\n");
    assert.equal(await exited, 1);
    assert.ok(lines.includes("id name Pellix 1.1b") && lines.includes("readyok"), lines.join("\n"));
});

test("the worker reads its files at the handshake and commands in order during a search", async () => {
    const engine = createEngine(), {lines, next} = lineWaiter(engine);
    engine.writeFile("/pellix.ini", "[Engine]\nHash=1\nBook=1\nBookFile=book.bin\n");
    engine.writeFile("/book.bin", readFileSync(resolve(WASM, "pellixopenbook.bin")));
    engine.send("uci");
    // Only a book answers the first move at once, without a search report.
    engine.send("go depth 30");
    assert.match(await next(/^(bestmove|info) /), /^bestmove /);
    engine.send(`position fen ${KIWIPETE}`);
    engine.send("go infinite");
    const from = lines.length;
    await next(/^info depth 3 /);
    const bestmove = next(/^bestmove /);
    ["isready", "stop", "isready"].forEach((c) => engine.send(c));
    await bestmove;
    await next(/^readyok$/);
    await sleep(200);
    const after = lines.slice(from).filter((l) => !l.startsWith("info"));
    assert.deepEqual(after.map((l) => l.split(" ")[0]), ["readyok", "bestmove", "readyok"]);
    engine.send("quit");
    assert.equal(await engine.exited, 1);
});
