#!/usr/bin/env bash
# CI's step for the games: installs what only they need (xboard and Xvfb, the Debian engines
# they play, polyglot, npm unless Node brought its own), then runs make test-games, which
# reuses the sanitizer, Windows and armhf builds of the steps before it.
set -euo pipefail
cd "$(dirname "$0")/../.."

.ci/install-missing xboard xvfb polyglot stockfish glaurung phalanx fairymax hoichess qemu-user \
    g++-arm-linux-gnueabihf npm

make test-games "$@"
