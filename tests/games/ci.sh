#!/usr/bin/env bash
# CI's step for the games: installs what only they need (xboard and Xvfb, the Debian engines
# they play, polyglot, npm unless Node brought its own), then runs make test-games, which
# reuses the sanitizer, Windows and armhf builds of the steps before it.
set -euo pipefail
cd "$(dirname "$0")/../.."

missing=()
for p in xboard xvfb polyglot stockfish glaurung phalanx fairymax hoichess qemu-user \
         g++-arm-linux-gnueabihf; do
    dpkg -s "$p" >/dev/null 2>&1 || missing+=("$p")
done
command -v npm >/dev/null || missing+=(npm)
if [ ${#missing[@]} -gt 0 ]; then
    export DEBIAN_FRONTEND=noninteractive
    apt-get update -q
    apt-get install -y -q --no-install-recommends "${missing[@]}"
fi

make test-games "$@"
