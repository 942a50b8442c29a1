// The packed npm package (build/pellix-*.tgz of `make npm`) installed into an empty folder
// and used only through its API: under Node by require() and by import, and in headless
// Chromium from a bundler-free module page served without isolation. Each runs a search to
// its bestmove and stops a "go infinite" within 200 ms.
import assert from "node:assert/strict";
import {execFileSync} from "node:child_process";
import {mkdtempSync, readdirSync, readFileSync, rmSync, writeFileSync} from "node:fs";
import {tmpdir} from "node:os";
import {join, resolve} from "node:path";
import {after, before, test} from "node:test";

import {startServer} from "../server.mjs";
import {ROOT, launchChromium} from "./helpers.mjs";

const STOP_MS = 200;
let dir;

before(() => {
    const tarball = readdirSync(resolve(ROOT, "build")).find((f) => /^pellix-.*\.tgz$/.test(f));
    assert.ok(tarball, "make npm first");
    dir = mkdtempSync(join(tmpdir(), "pellix-npm-"));
    writeFileSync(join(dir, "package.json"), '{"name": "pellix-user", "private": true}\n');
    execFileSync("npm", ["install", "--no-audit", "--no-fund", "--offline", resolve(ROOT, "build", tarball)],
                 {cwd: dir, stdio: "ignore"});
});

after(() => rmSync(dir, {recursive: true, force: true}));

// What every user of the package does: a search to its bestmove, then a stopped "go
// infinite". Runs as the body of an async function wherever createEngine is in scope.
const SESSION = `
    const engine = createEngine(), lines = [];
    const next = (prefix) => new Promise((done) => engine.onLine(function listen(line) {
        if (line.startsWith(prefix) && !listen.done) done(line, listen.done = true);
    }));
    engine.onLine((line) => lines.push(line));
    engine.send("uci");
    engine.send("position startpos moves e2e4 e7e5");
    engine.send("go depth 6");
    const bestmove = await next("bestmove");
    engine.send("go infinite");
    await next("info depth 5");
    await new Promise((done) => setTimeout(done, 300));
    const start = performance.now(), stopped = next("bestmove");
    engine.send("stop");
    await stopped;
    const stopMs = performance.now() - start;
    engine.terminate();
    return {bestmove, stopMs, name: lines.find((l) => l.startsWith("id name"))};
`;

function checkSession({bestmove, stopMs, name}, where) {
    assert.match(bestmove, /^bestmove [a-h][1-8][a-h][1-8]/, where);
    assert.ok(stopMs < STOP_MS, `${where}: stop answered in ${stopMs} ms`);
    assert.equal(name, "id name Pellix 1.1b");
    console.log(`# ${where}: stop answered in ${stopMs.toFixed(0)} ms`);
}

for (const [kind, file, header] of [
    ["require()", "session.cjs", 'const {createEngine} = require("pellix");\n(async () => {'],
    ["import", "session.mjs", 'import {createEngine} from "pellix";\n(async () => {'],
]) {
    test(`under Node by ${kind}`, () => {
        const installed = join(dir, "node_modules/pellix");
        assert.equal(JSON.parse(readFileSync(join(installed, "package.json"), "utf8")).version, "1.1.2");
        assert.match(readFileSync(join(installed, "index.d.ts"), "utf8"), /export function createEngine\(\): Engine;/);
        writeFileSync(join(dir, file), `${header}${SESSION}})().then((r) => console.log(JSON.stringify(r)));\n`);
        const out = execFileSync(process.execPath, [file], {cwd: dir, encoding: "utf8", timeout: 60000});
        checkSession(JSON.parse(out), `Node, ${kind}`);
    });
}

test("in Chromium from a module page without isolation", async () => {
    writeFileSync(join(dir, "index.html"), `<!DOCTYPE html><script type="module">
        import {createEngine} from "./node_modules/pellix/index.mjs";
        window.session = (async () => {${SESSION}})();
    </script>`);
    const server = await startServer(dir, 0), browser = await launchChromium();
    try {
        const page = await browser.newPage();
        await page.goto(`http://127.0.0.1:${server.address().port}/`);
        assert.equal(await page.evaluate(() => crossOriginIsolated), false);
        checkSession(await page.evaluate(() => window.session), "Chromium");
    } finally {
        await browser.close();
        server.close();
    }
});
