#!/bin/sh
# Checks that a `pellix-bench search` report ends with the signature recorded in
# bench/signature: a build that searches differently fails here.
# Usage: check-signature.sh REPORT
set -eu
expected=$(cat "$(dirname "$0")/../bench/signature")
actual=$(sed -n 's/^Nodes: //p' "$1" | tail -n 1)
if [ "$actual" != "$expected" ]; then
    echo "$1: bench signature ${actual:-missing}, expected $expected" >&2
    exit 1
fi
echo "$1: bench signature $actual"
