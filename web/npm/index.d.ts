// The engine in its own worker: UCI or XBoard text in, one line at a time out.
export interface Engine {
    /** Sends one command line (without its line feed), e.g. "uci", "go movetime 1000", "stop". */
    send(line: string): void;
    /** Calls the listener with every line the engine prints, in order. */
    onLine(listener: (line: string) => void): void;
    /** Writes a file into the engine's in-memory file system, e.g. "/pellix.ini" or a book. */
    writeFile(path: string, data: string | Uint8Array): void;
    /** Ends the worker at once, whatever the engine is doing. */
    terminate(): void | Promise<number>;
    /** The worker's exit status: 1 after "quit"; null (browser) or 1 (Node) after terminate(). */
    readonly exited: Promise<number | null>;
}

/** Starts an engine in a Web Worker (browser) or a worker thread (Node). */
export function createEngine(): Engine;
