// What the tests and speed.mjs share: where the builds are, a program's output, headless
// Chromium, and a listener that waits for the engine's lines.
import {spawnSync} from "node:child_process";
import {mkdtempSync, readFileSync, rmSync} from "node:fs";
import {tmpdir} from "node:os";
import {join, resolve} from "node:path";
import {fileURLToPath} from "node:url";

import puppeteer from "puppeteer-core";

export const ROOT   = resolve(fileURLToPath(new URL("../..", import.meta.url)));
export const WASM   = resolve(ROOT, process.env.WASM_DIR || "build/wasm");
export const NATIVE = resolve(ROOT, process.env.BUILD_DIR || "build/release");
export const DIST   = resolve(ROOT, process.env.WEB_DIST || "build/web-dist");
export const SHOTS  = resolve(ROOT, "build/web");

export function run(program, args, input = "") {
    const result = spawnSync(program, args, {input, encoding: "utf8", timeout: 600000});
    return {out: result.stdout, status: result.status};
}

export const runNode = (module, args, input) => run(process.execPath, [module, ...args], input);

export const benchSignature = () =>
    Number(readFileSync(resolve(ROOT, "bench/signature"), "utf8").trim());

export const sleep = (ms) => new Promise((done) => setTimeout(done, ms));

// Headless Chromium with a fresh profile, removed on close().
export async function launchChromium() {
    const profile = mkdtempSync(join(tmpdir(), "pellix-chromium-"));
    const browser = await puppeteer.launch({
        executablePath: process.env.CHROMIUM || "/usr/bin/chromium",
        headless: true,
        args: ["--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
               "--disable-background-networking", "--disable-component-update", "--disable-sync",
               `--user-data-dir=${profile}`],
    });
    const close = browser.close.bind(browser);
    browser.close = async () => {
        await close();
        rmSync(profile, {recursive: true, force: true});
    };
    return browser;
}

// Collects an engine's lines (engine.onLine of the npm package); next(pattern, ms) resolves
// with the first line from now on that matches, and fails after ms.
export function lineWaiter(engine) {
    const lines = [];
    let waiters = [];
    engine.onLine((line) => {
        lines.push(line);
        waiters = waiters.filter((w) => !w(line));
    });
    const next = (pattern, ms = 10000) => new Promise((done, fail) => {
        const timer = setTimeout(() => fail(new Error(`no ${pattern} in ${ms} ms`)), ms);
        waiters.push((line) => {
            if (!pattern.test(line))
                return false;
            clearTimeout(timer);
            done(line);
            return true;
        });
    });
    return {lines, next};
}
