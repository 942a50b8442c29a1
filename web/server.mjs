// A small static server for a folder (the page of `make web-dist`), as a plain static host
// would serve it: no special headers. The tests also serve it under a sub-path, with .wasm
// as a generic type, or with the cross-origin isolation headers, to check the page in each.
//   node web/server.mjs DIR        (PORT chooses the port, 8080 by default)
import {createServer} from "node:http";
import {readFile} from "node:fs/promises";
import {extname, join, normalize, resolve, sep} from "node:path";
import {fileURLToPath} from "node:url";

const TYPES = {
    ".html": "text/html; charset=utf-8", ".js": "text/javascript", ".mjs": "text/javascript",
    ".css": "text/css", ".svg": "image/svg+xml", ".wasm": "application/wasm",
    ".png": "image/png", ".json": "application/json",
};

const ISOLATION = {
    "Cross-Origin-Opener-Policy": "same-origin",
    "Cross-Origin-Embedder-Policy": "require-corp",
};

// The file a URL path names under root, when served at prefix; null when it would leave it.
export function fileFor(root, prefix, urlPath) {
    const path = decodeURIComponent(urlPath.split("?")[0]);
    if (!path.startsWith(prefix))
        return null;
    const file = normalize(join(root, path.slice(prefix.length) || "index.html"));
    return file === root || file.startsWith(root + sep) ? file : null;
}

// options: prefix ("/"), wasmType (application/wasm), isolated (false); onServe(path, bytes)
// hears of every file sent.
export function startServer(dir, port, options = {}, onServe = () => {}) {
    const root = resolve(dir), prefix = options.prefix || "/";
    const headers = options.isolated ? ISOLATION : {};
    const types = {...TYPES, ".wasm": options.wasmType || TYPES[".wasm"]};
    const server = createServer(async (request, response) => {
        try {
            let file = fileFor(root, prefix, request.url);
            if (file && file.endsWith(sep))
                file += "index.html";
            const body = await readFile(file);
            const type = types[extname(file)] || "application/octet-stream";
            response.writeHead(200, {...headers, "Content-Type": type, "Cache-Control": "no-cache"});
            response.end(body);
            onServe(request.url, body.length);
        } catch {
            // Outside the folder, missing, or a malformed escape in the URL.
            response.writeHead(404, {...headers, "Content-Type": "text/plain"});
            response.end("not found\n");
        }
    });
    return new Promise((done) => server.listen(port, "127.0.0.1", () => done(server)));
}

if (process.argv[1] && resolve(process.argv[1]) === fileURLToPath(import.meta.url)) {
    const port = Number(process.env.PORT || 8080);
    await startServer(process.argv[2] || "build/web-dist", port);
    console.log(`Pellix on http://localhost:${port}/`);
}
