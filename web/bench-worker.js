// Runs one of the WebAssembly programs with a command line in a worker, for speed.mjs: posts
// back what it printed and how long it ran, measured here, in the browser.
self.onmessage = ({data: {program, factory, args}}) => {
    importScripts(`engine/${program}.js`);
    const lines = [], start = performance.now();
    self[factory]({
        arguments: args,
        locateFile: (file) => "engine/" + file,
        print: (line) => lines.push(line),
        onExit: () => postMessage({lines, ms: performance.now() - start}),
    });
};
