// A worker thread that runs the engine's module as the page's worker does: input from the
// queue it is given, every printed line posted back.
const {parentPort, workerData} = require("node:worker_threads");
const factory = require(workerData.module);

factory({
    pellixInput: workerData.queue,
    arguments: [],
    print: (line) => parentPort.postMessage({line}),
    printErr: (line) => parentPort.postMessage({error: line}),
});
