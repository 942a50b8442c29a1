// The page's side of the engine: starts the worker (with or without the opening book), writes commands into its input queue
// and hands each line the engine prints to a listener. Commands that find the queue full
// wait here and go out in order as it drains.
import {createInputQueue, InputQueueWriter} from "./input-queue.js";

export class Engine {
    constructor(onLine, book) {
        const queue  = createInputQueue();
        this.writer  = new InputQueueWriter(queue);
        this.backlog = [];
        this.worker  = new Worker("engine-worker.js");
        this.worker.onmessage = ({data}) => {
            if (data.line !== undefined)
                onLine(data.line);
            else if (data.error !== undefined)
                console.warn("engine:", data.error);
            else if (data.exit !== undefined)
                onLine(null);
        };
        this.worker.postMessage({queue, book});
    }

    // The worker spends its life inside the engine, so ending it is the only way to stop it.
    terminate() {
        clearTimeout(this.retry);
        this.worker.terminate();
    }

    send(command) {
        this.backlog.push(command + "\n");
        this.flush();
    }

    flush() {
        while (this.backlog.length && this.writer.write(this.backlog[0]))
            this.backlog.shift();
        if (this.backlog.length && !this.retry)
            this.retry = setTimeout(() => {
                this.retry = null;
                this.flush();
            }, 10);
    }
}
