// The speed of the WebAssembly engine under Node and in headless Chromium against the native
// build, on the same machine in the same run: perft 6 from the start (wall time) and the
// search bench's nodes per second. Runs of the three are alternated, so that all see the
// same load, and the medians are compared.
//   node web/speed.mjs [ROUNDS]        (3 rounds by default; needs make wasm and make all)
import {spawnSync} from "node:child_process";
import {mkdtempSync, rmSync} from "node:fs";
import {tmpdir} from "node:os";
import {join, resolve} from "node:path";

import puppeteer from "puppeteer-core";

import {startServer} from "./server.mjs";
import {NATIVE, WASM} from "./test/helpers.mjs";

const rounds = Number(process.argv[2] || 3);

const JOBS = {
    perft: {program: "pellix", factory: "Pellix", args: ["-perft", "6"]},
    search: {program: "pellix-bench", factory: "PellixBench", args: ["search"]},
};

// perft: seconds of wall time; search: the bench's own nodes per second.
function measure(job, lines, ms) {
    if (job === JOBS.perft)
        return ms / 1000;
    const summary = lines.find((l) => / nps$/.test(l));
    return Number(summary.match(/(\d+) nps$/)[1]);
}

function runProcess(command, job) {
    const start = performance.now();
    const out   = spawnSync(command[0], [...command.slice(1), ...job.args], {encoding: "utf8"});
    return measure(job, out.stdout.trim().split("\n"), performance.now() - start);
}

async function runBrowser(page, job) {
    const {lines, ms} = await page.evaluate((j) => new Promise((done) => {
        const worker = new Worker("bench-worker.js");
        worker.onmessage = ({data}) => {
            worker.terminate();
            done(data);
        };
        worker.postMessage(j);
    }), job);
    return measure(job, lines, ms);
}

const median = (xs) => [...xs].sort((a, b) => a - b)[Math.floor(xs.length / 2)];

let served = 0;
const server  = await startServer(0, (path, bytes) => (served += bytes));
const profile = mkdtempSync(join(tmpdir(), "pellix-chromium-"));
const browser = await puppeteer.launch({
    executablePath: process.env.CHROMIUM || "/usr/bin/chromium",
    args: ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
           "--disable-background-networking", "--disable-component-update", "--disable-sync",
           `--user-data-dir=${profile}`],
});
const page = await browser.newPage();
const loadStart = performance.now();
await page.goto(`http://127.0.0.1:${server.address().port}/`);
await page.waitForFunction(() => window.pellix && window.pellix.state.ready);
console.log(`page: ${served} bytes served, engine ready ${(performance.now() - loadStart).toFixed(0)} ms ` +
            "after the request for the page");

for (const [name, job] of Object.entries(JOBS)) {
    const runs = {native: [], node: [], chromium: []};
    for (let round = 0; round < rounds; round++) {
        runs.native.push(runProcess([resolve(NATIVE, job.program)], job));
        runs.node.push(runProcess([process.execPath, resolve(WASM, `${job.program}.js`)], job));
        runs.chromium.push(await runBrowser(page, job));
    }
    const native = median(runs.native);
    for (const [where, values] of Object.entries(runs)) {
        const m = median(values), ratio = name === "perft" ? native / m : m / native;
        const shown = name === "perft" ? `${m.toFixed(2)} s` : `${Math.round(m)} nps`;
        console.log(`${name.padEnd(6)} ${where.padEnd(8)} median ${shown.padStart(12)}  ` +
                    `speed ${ratio.toFixed(2)} of native  (${values.map((v) => Math.round(v * 100) / 100).join(", ")})`);
    }
}
await browser.close();
server.close();
rmSync(profile, {recursive: true, force: true});
