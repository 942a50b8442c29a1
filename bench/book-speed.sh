#!/usr/bin/env bash
# The book builder's speed and memory: wall time, games per second and peak resident memory
# of `pellix-book build` (20 plies), beside Debian's `polyglot make-book -max-ply 20
# -min-game 1` when it is installed, on three inputs:
#   real     the games file given (for instance gnuchess-book's book_1.02.pgn);
#   ten      the same file ten times over, with --memory 64;
#   random   random legal games (pellix-bench random-games), whose positions no real game
#            reaches, with more distinct positions than 64 MB hold, with --memory 64.
# The two programs are run in turn, RUNS times on the real file (the median is printed) and
# once on the large ones, so that both see the same load on a shared machine. Peak memory is
# measured by GNU time (/usr/bin/time, Debian's package "time").
#
#   bench/book-speed.sh BUILD_DIR GAMES.pgn [RUNS] [RANDOM_GAMES]
set -euo pipefail
build="$(cd "$1" && pwd)"
games="$(cd "$(dirname "$2")" && pwd)/$(basename "$2")"
runs="${3:-5}"
random_games="${4:-300000}"
polyglot="$(command -v polyglot || echo /usr/games/polyglot)"
[ -x "$polyglot" ] || polyglot=""
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

# Runs a command and prints "seconds kilobytes"; the command's own output goes to $work/out.
measure() {
    /usr/bin/time -f "%e %M" -o "$work/time" "$@" >"$work/out" 2>&1 || {
        cat "$work/out" >&2
        return 1
    }
    cat "$work/time"
}

median() { sort -n | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }

# One row: input, program, median seconds, games per second, median peak memory in MB.
row() {
    local name="$1" program="$2" count="$3" file="$4"
    local seconds kb
    seconds="$(cut -d' ' -f1 "$file" | median)"
    kb="$(cut -d' ' -f2 "$file" | median)"
    awk -v n="$name" -v p="$program" -v s="$seconds" -v g="$count" -v k="$kb" 'BEGIN {
        printf "%-7s %-9s %8.2f s %10.0f games/s %8.1f MB\n", n, p, s, g / s, k / 1024 }'
}

compare() {
    local name="$1" file="$2" times="$3"
    shift 3
    : >"$work/pellix" && : >"$work/polyglot"
    for _ in $(seq "$times"); do
        measure "$build/pellix-book" build "$file" "$work/book.bin" --quiet "$@" >>"$work/pellix"
        count="$(sed -n 's/^games \([0-9]*\),.*/\1/p' "$work/out")"
        if [ -n "$polyglot" ]; then
            measure "$polyglot" make-book -pgn "$file" -bin "$work/poly.bin" -max-ply 20 \
                -min-game 1 >>"$work/polyglot"
        fi
    done
    row "$name" pellix "$count" "$work/pellix"
    [ -z "$polyglot" ] || row "$name" polyglot "$count" "$work/polyglot"
}

echo "input   program     wall time   speed            peak memory"
compare real "$games" "$runs"
for _ in 1 2 3 4 5 6 7 8 9 10; do cat "$games"; done >"$work/ten.pgn"
compare ten "$work/ten.pgn" 1 --memory 64
rm -f "$work/ten.pgn"
"$build/pellix-bench" random-games "$random_games" 1 >"$work/random.pgn"
compare random "$work/random.pgn" 1 --memory 64
