// The engine's own thread: a Web Worker in a browser, a worker thread under Node. It starts
// the WebAssembly engine at once and then relays: {line} from the host becomes engine input,
// {file, data} is written into the engine's in-memory file system (pellix.ini, a book), and
// every line the engine prints goes back as {line}. The engine yields to this thread's event
// loop while it waits and as it searches, so messages arrive during a search too.
(function() {
    const isNode = typeof importScripts != "function";
    const port   = isNode ? require("node:worker_threads").parentPort : self;
    const post   = (message) => port.postMessage(message);

    const settings = {
        arguments: [],
        print: (line) => post({line}),
        printErr: (line) => post({error: line}),
        onExit: (status) => post({exit: status}),
    };

    // Files sent before the file system exists are written just before the program starts.
    let fileSystem = null;
    const early    = [];
    const writeFile = ({file, data}) => fileSystem.writeFile(file, data);
    settings.preRun = [(module) => {
        fileSystem = module.FS;
        early.splice(0).forEach(writeFile);
    }];

    let factory;
    if (isNode) {
        factory = require("./pellix.js");
    } else {
        // The .wasm is fetched while the script loads. Compiled as it streams in when the
        // server calls it application/wasm; many static hosts give it a generic type, which
        // streaming compilation refuses, so then it is compiled from the whole download.
        const wasm = fetch(new URL("pellix.wasm", self.location.href));
        settings.instantiateWasm = (imports, receive) => {
            wasm.then((response) => {
                if (!response.ok)
                    throw new Error(`pellix.wasm: HTTP ${response.status}`);
                const type = response.headers.get("Content-Type") || "";
                return type.startsWith("application/wasm")
                    ? WebAssembly.instantiateStreaming(response, imports)
                    : response.arrayBuffer().then((bytes) => WebAssembly.instantiate(bytes, imports));
            }).then(({instance, module}) => receive(instance, module))
              .catch((e) => post({error: String(e)}));
            return {};
        };
        importScripts(new URL("pellix.js", self.location.href).href);
        factory = self.Pellix;
    }
    factory(settings);

    const receive = (message) => {
        if (message.line !== undefined)
            settings.pellixWrite(message.line + "\n");
        else if (message.file !== undefined)
            fileSystem ? writeFile(message) : early.push(message);
    };
    if (isNode)
        port.on("message", receive);
    else
        self.onmessage = (event) => receive(event.data);
})();
