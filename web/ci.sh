#!/usr/bin/env bash
# CI's step for the browser build: installs what only it needs (Debian's emscripten and
# chromium, npm unless Node brought its own), then builds the WebAssembly engine, runs the
# Node tests against the native build and the page's tests in headless Chromium, and names
# the screenshot they leave.
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
