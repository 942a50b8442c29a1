// The writing end of the engine's input queue: a SharedArrayBuffer that this thread fills
// with command text and the engine's thread reads (its reader is in the module,
// src/platform/web_module.js, which describes the layout). Text is published whole: the
// reader sees all the bytes of one write or none of them.

const WRITTEN = 0, READ = 1, CLOSED = 2, CHANGES = 3, DATA_OFFSET = 16;

// 64 KB: a thousand long "position ... moves" lines; the engine drains it as it reads.
export const QUEUE_BYTES = 1 << 16;

export function createInputQueue(bytes = QUEUE_BYTES) {
    return new SharedArrayBuffer(DATA_OFFSET + bytes);
}

export class InputQueueWriter {
    constructor(buffer) {
        this.words   = new Int32Array(buffer, 0, 4);
        this.ring    = new Uint8Array(buffer, DATA_OFFSET);
        this.encoder = new TextEncoder();
    }

    // Queues the text; false (and nothing queued) when it does not fit in the free space.
    write(text) {
        const bytes   = this.encoder.encode(text);
        const written = Atomics.load(this.words, WRITTEN);
        const waiting = (written - Atomics.load(this.words, READ)) | 0;
        if (bytes.length > this.ring.length - waiting)
            return false;
        const mask = this.ring.length - 1;
        for (let i = 0; i < bytes.length; i++)
            this.ring[(written + i) & mask] = bytes[i];
        Atomics.store(this.words, WRITTEN, (written + bytes.length) | 0);
        this.wake();
        return true;
    }

    // The end of input: the reader gets what is queued, then end of file.
    close() {
        Atomics.store(this.words, CLOSED, 1);
        this.wake();
    }

    wake() {
        Atomics.add(this.words, CHANGES, 1);
        Atomics.notify(this.words, CHANGES);
    }
}
