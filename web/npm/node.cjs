// The package under Node: the engine in a worker thread (worker.js), never in the caller's
// own thread, since "quit" ends the program it runs in and the end of its input does not.
"use strict";
const {Worker} = require("node:worker_threads");
const {join}   = require("node:path");

class Engine {
    constructor() {
        this.listeners = [];
        this.worker    = new Worker(join(__dirname, "worker.js"));
        this.worker.on("message", ({line, error}) => {
            if (line !== undefined)
                this.listeners.forEach((listener) => listener(line));
            else if (error !== undefined)
                process.emitWarning(`pellix: ${error}`);
        });
        // Like any worker, the engine keeps Node running until it quits or is terminated.
        this.exited = new Promise((done) => this.worker.on("exit", done));
    }

    send(line) {
        this.worker.postMessage({line: String(line)});
    }

    onLine(listener) {
        this.listeners.push(listener);
    }

    writeFile(path, data) {
        this.worker.postMessage({file: path, data});
    }

    terminate() {
        return this.worker.terminate();
    }
}

exports.createEngine = () => new Engine();
