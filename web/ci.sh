#!/usr/bin/env bash
# CI's step for the browser build: installs what only it needs (Debian's emscripten and
# chromium, npm unless Node brought its own), then builds the WebAssembly engine, the
# web-dist folder and the npm package, and runs make test-web: the page's logic, the engine
# under Node against the native build, the packed package installed into an empty folder,
# and the page in headless Chromium; it names the folder of the screenshots they leave.
set -euo pipefail
cd "$(dirname "$0")/.."

.ci/install-missing emscripten chromium npm

make test-web "$@"
