#!/usr/bin/env bash
# CI's step for the browser build: installs what only it needs (Debian's emscripten and
# chromium, npm unless Node brought its own), then builds the WebAssembly engine, the
# web-dist folder and the npm package, and runs make test-web: the page's logic, the engine
# under Node against the native build, the packed package installed into an empty folder,
# and the page in headless Chromium; it names the folder of the screenshots they leave.
set -euo pipefail
cd "$(dirname "$0")/.."

missing=()
for p in emscripten chromium; do
    dpkg -s "$p" >/dev/null 2>&1 || missing+=("$p")
done
command -v npm >/dev/null || missing+=(npm)
if [ ${#missing[@]} -gt 0 ]; then
    export DEBIAN_FRONTEND=noninteractive
    apt-get update -q
    apt-get install -y -q --no-install-recommends "${missing[@]}"
fi

make test-web "$@"
