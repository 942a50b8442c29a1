// The package in a browser: the engine in a Web Worker (worker.js beside this file), never in
// the page's own thread, where a search would freeze the page. Works from a plain
// <script type="module"> under any path, and with bundlers that understand new URL(...,
// import.meta.url).
class Engine {
    constructor() {
        this.listeners = [];
        this.worker    = new Worker(new URL("./worker.js", import.meta.url));
        this.exited    = new Promise((done) => (this.exit = done));
        this.worker.onmessage = ({data: {line, error, exit}}) => {
            if (line !== undefined)
                this.listeners.forEach((listener) => listener(line));
            else if (error !== undefined)
                console.warn("pellix:", error);
            else if (exit !== undefined)
                this.exit(exit);
        };
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
        this.worker.terminate();
        this.exit(null);
    }
}

export const createEngine = () => new Engine();
