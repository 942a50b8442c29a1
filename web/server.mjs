// A small static server for the page: web/ at the root, the WebAssembly build under
// /engine/, and the two packages the page imports under /node_modules/. Every answer
// carries the cross-origin isolation headers, without which the page has no
// SharedArrayBuffer. PORT chooses the port (8080); WASM_DIR the build (build/wasm).
import {createServer} from "node:http";
import {readFile} from "node:fs/promises";
import {extname, join, normalize, resolve, sep} from "node:path";
import {fileURLToPath} from "node:url";

const here = resolve(fileURLToPath(new URL(".", import.meta.url)));

const ROOTS = [
    ["/engine/", resolve(here, "..", process.env.WASM_DIR || "build/wasm")],
    ["/node_modules/chess.js/", join(here, "node_modules/chess.js")],
    ["/node_modules/cm-chessboard/", join(here, "node_modules/cm-chessboard")],
    ["/", here],
];

const TYPES = {
    ".html": "text/html; charset=utf-8", ".js": "text/javascript", ".mjs": "text/javascript",
    ".css": "text/css", ".svg": "image/svg+xml", ".wasm": "application/wasm",
    ".bin": "application/octet-stream", ".png": "image/png", ".json": "application/json",
};

const ISOLATION = {
    "Cross-Origin-Opener-Policy": "same-origin",
    "Cross-Origin-Embedder-Policy": "require-corp",
    "Cross-Origin-Resource-Policy": "same-origin",
};

// The file a URL path names, or null when it would leave its root.
export function fileFor(urlPath) {
    const path = decodeURIComponent(urlPath.split("?")[0]);
    for (const [prefix, root] of ROOTS) {
        if (!path.startsWith(prefix))
            continue;
        // Of the installed packages only the page's own two are served, never the tools.
        if (prefix === "/" && path.startsWith("/node_modules/"))
            return null;
        const file = normalize(join(root, path.slice(prefix.length) || "index.html"));
        return file === root || file.startsWith(root + sep) ? file : null;
    }
    return null;
}

// onServe(path, bytes), when given, hears of every file sent (speed.mjs sums the page's size).
export function startServer(port, onServe = () => {}) {
    const server = createServer(async (request, response) => {
        let file = null;
        try {
            file = fileFor(request.url);
        } catch {
            // A malformed escape in the URL: answered like a missing file.
        }
        try {
            if (!file)
                throw new Error("outside");
            const body = await readFile(file);
            const type = TYPES[extname(file)] || "application/octet-stream";
            response.writeHead(200, {...ISOLATION, "Content-Type": type, "Cache-Control": "no-cache"});
            response.end(body);
            onServe(request.url, body.length);
        } catch {
            response.writeHead(404, {...ISOLATION, "Content-Type": "text/plain"});
            response.end("not found\n");
        }
    });
    return new Promise((done) => server.listen(port, "127.0.0.1", () => done(server)));
}

if (process.argv[1] && resolve(process.argv[1]) === fileURLToPath(import.meta.url)) {
    const port = Number(process.env.PORT || 8080);
    await startServer(port);
    console.log(`Pellix on http://localhost:${port}/`);
}
