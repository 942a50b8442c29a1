#!/usr/bin/env bash
# Remakes books/games.tar.xz, the games the opening book is built from, out of Debian's source
# package gnuchess-book 1.02: its book_1.02.pgn (145,716 games, public domain; see the
# package's copyright file), each game cut to its first 20 plies and its result, one game a
# line. Every download and every result is checked against the hashes below, so the file
# comes out the same wherever it is remade. Needs apt-get (as root, to add a deb-src line when
# the machine has none), tar and xz.
#
#   books/remake-games.sh [PLIES]
set -euo pipefail
here="$(cd "$(dirname "$0")" && pwd)"
plies="${1:-20}"

ORIG_SHA256=d673ffa6986a3beca27cc23ef126ea0a73f1098762e3ccd00f791c096f2bfb48
PGN_SHA256=33f5d31528f3c93c18adffa7a222b9b9d6097c2ae231147de2048acff5e06583
# The cut text for 20 plies; another PLIES gives another text, reported but not checked.
CUT_SHA256=fbb3a2498e44ef912ec126ec53d1b74806b7a014c76301955fce6846b618e571

# A deb-src line for the archive the machine already installs from.
if ! grep -rqs '^\(deb-src\|Types:.*deb-src\)' /etc/apt/sources.list /etc/apt/sources.list.d/; then
    suite="$(. /etc/os-release && echo "${VERSION_CODENAME:-stable}")"
    cat >/etc/apt/sources.list.d/pellix-debian-src.sources <<EOF
Types: deb-src
URIs: http://deb.debian.org/debian
Suites: $suite
Components: main
Signed-By: /usr/share/keyrings/debian-archive-keyring.gpg
EOF
    apt-get update -q
fi

work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
cd "$work"
# The Debian part of the package is not needed; only the upstream tarball is checked.
apt-get source --download-only gnuchess-book || ls gnuchess-book_1.02.orig.tar.gz
echo "$ORIG_SHA256  gnuchess-book_1.02.orig.tar.gz" | sha256sum -c -
tar xzf gnuchess-book_1.02.orig.tar.gz gnuchess-book-1.02/book_1.02.pgn
pgn=gnuchess-book-1.02/book_1.02.pgn
echo "$PGN_SHA256  $pgn" | sha256sum -c -

# The move text of this file has no comments, variations or NAGs (checked: no "{", "(", ";"
# or "$" outside the tag lines), so splitting on blanks is enough. A game's result is its
# termination marker, or its Result tag when the marker is missing, as pellix-book reads it.
awk -v PLIES="$plies" '
function flush(  line, i) {
    if (!inGame) return
    line = ""
    for (i = 1; i <= n && i <= PLIES; i++) line = line moves[i] " "
    print line (marker != "" ? marker : (tag != "" ? tag : "*"))
    n = 0; marker = ""; tag = ""; inGame = 0
}
/^\[/ {
    if (inMoves) { flush(); inMoves = 0 }
    inGame = 1
    if ($1 == "[Result") { tag = $2; gsub(/[]"]/, "", tag) }
    next
}
{
    for (f = 1; f <= NF; f++) {
        t = $f
        if (t == "1-0" || t == "0-1" || t == "1/2-1/2" || t == "*") { marker = t; continue }
        sub(/^[0-9]+\.+/, "", t)
        if (t != "") moves[++n] = t
    }
    if (NF) { inMoves = 1; inGame = 1 }
}
END { flush() }' "$pgn" >games.pgn

if [ "$plies" = 20 ]; then
    echo "$CUT_SHA256  games.pgn" | sha256sum -c -
else
    sha256sum games.pgn
fi
tar --sort=name --mtime=@0 --owner=0 --group=0 --numeric-owner --mode=0644 -cf - games.pgn |
    xz -9e -T1 >"$here/games.tar.xz"
echo "wrote $here/games.tar.xz: $(wc -l <games.pgn) games, $(wc -c <"$here/games.tar.xz") bytes"
