// What the tests share: where the builds are, a program's output, and an engine in a worker
// thread fed through the page's own input queue.
import {spawnSync} from "node:child_process";
import {readFileSync} from "node:fs";
import {resolve} from "node:path";
import {fileURLToPath} from "node:url";
import {Worker} from "node:worker_threads";

import {createInputQueue, InputQueueWriter} from "../input-queue.js";

export const ROOT   = resolve(fileURLToPath(new URL("../..", import.meta.url)));
export const WASM   = resolve(ROOT, process.env.WASM_DIR || "build/wasm");
export const NATIVE = resolve(ROOT, process.env.BUILD_DIR || "build/release");

export function run(program, args, input = "") {
    const result = spawnSync(program, args, {input, encoding: "utf8", timeout: 600000});
    return {out: result.stdout, status: result.status};
}

export const runNode = (module, args, input) => run(process.execPath, [module, ...args], input);

export const benchSignature = () =>
    Number(readFileSync(resolve(ROOT, "bench/signature"), "utf8").trim());

// The engine in a worker thread: send() writes into its queue exactly as the page does, and
// waitFor() resolves with the first printed line that matches, at most `ms` later.
export class ThreadEngine {
    constructor() {
        const queue  = createInputQueue();
        this.writer  = new InputQueueWriter(queue);
        this.lines   = [];
        this.errors  = [];
        this.waiters = [];
        this.worker  = new Worker(new URL("engine-thread.cjs", import.meta.url), {
            workerData: {queue, module: resolve(WASM, "pellix.js")},
        });
        this.exited = new Promise((done) => this.worker.on("exit", done));
        this.worker.on("message", ({line, error}) => {
            if (error !== undefined)
                return this.errors.push(error);
            this.lines.push(line);
            this.waiters = this.waiters.filter((w) => !w(line));
        });
    }

    write(text) {
        if (!this.writer.write(text))
            throw new Error("input queue full");
    }

    send(line) {
        this.write(line + "\n");
    }

    waitFor(pattern, ms = 10000) {
        return new Promise((done, fail) => {
            const timer = setTimeout(() => fail(new Error(`no ${pattern} in ${ms} ms`)), ms);
            this.waiters.push((line) => {
                if (!pattern.test(line))
                    return false;
                clearTimeout(timer);
                done(line);
                return true;
            });
        });
    }

    async stop() {
        await this.worker.terminate();
    }
}

export const sleep = (ms) => new Promise((done) => setTimeout(done, ms));
