#!/usr/bin/env bash
# Writes the page as one static folder: web/page, the engine (the npm package's browser
# files with the WebAssembly build and its book) in engine/, and the pinned libraries the
# page imports in lib/ with their licences. Every path inside is relative, so the folder
# works copied anywhere, under any sub-path, and asks nothing of any other server.
#   web/make-dist.sh WASM_DIR OUT_DIR
set -euo pipefail
wasm=$1 out=$2
web=$(dirname "$0")
modules=$web/node_modules

rm -rf "$out"
mkdir -p "$out/engine" "$out/lib/chess.js" "$out/lib/cm-chessboard"
cp "$web"/page/* "$out/"
cp "$web/npm/index.mjs" "$web/npm/worker.js" "$wasm/pellix.js" "$wasm/pellix.wasm" \
   "$wasm/pellixopenbook.bin" "$out/engine/"
cp -r "$modules/chess.js/dist/esm" "$modules/chess.js/LICENSE" "$out/lib/chess.js/"
cp -r "$modules/cm-chessboard/src" "$modules/cm-chessboard/assets" \
      "$modules/cm-chessboard/LICENSE" "$out/lib/cm-chessboard/"
find "$out/lib" \( -name '*.map' -o -name '*.scss' \) -delete
echo "$out: $(du -sh "$out" | cut -f1)"
