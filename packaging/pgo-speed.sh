#!/usr/bin/env bash
# Search speed of two builds of pellix-bench, for instance Release against profile-guided.
# Runs of the two alternate, so slow spells of a shared machine hit both alike, and the
# medians of the per-pair ratios are the answer: one from the bench's own nps (wall clock),
# one from the processor time each run used, which other jobs on the machine disturb less.
# Every run must print the recorded bench signature.
# Usage: pgo-speed.sh BASELINE_BENCH CANDIDATE_BENCH [RUNS]
set -euo pipefail
here=$(dirname "$0")
baseline=$1
candidate=$2
runs=${3:-5}
report=$(mktemp)
trap 'rm -f "$report"' EXIT

# "WALL_NPS CPU_SECONDS" of one run; the wall nps from the line
# "depth 10, 30 positions, 12.90 s, 3823997 nps".
measure() {
    local TIMEFORMAT='%U %S' times
    times=$( { time "$1" search 0 0 >"$report"; } 2>&1)
    "$here/check-signature.sh" "$report" >/dev/null
    echo "$(sed -n 's/^depth .* \([0-9][0-9]*\) nps$/\1/p' "$report")" \
        "$(awk '{ print $1 + $2 }' <<<"$times")"
}

median() { sort -n | awk '{ r[NR] = $1 } END { print (NR % 2) ? r[(NR + 1) / 2] : (r[NR / 2] + r[NR / 2 + 1]) / 2 }'; }

wall=() cpu=()
for ((i = 1; i <= runs; i++)); do
    read -r a_nps a_cpu < <(measure "$baseline")
    read -r b_nps b_cpu < <(measure "$candidate")
    wall+=("$(awk -v a="$a_nps" -v b="$b_nps" 'BEGIN { printf "%.4f", b / a }')")
    cpu+=("$(awk -v a="$a_cpu" -v b="$b_cpu" 'BEGIN { printf "%.4f", a / b }')")
    echo "run $i: baseline $a_nps nps ${a_cpu} s cpu, candidate $b_nps nps ${b_cpu} s cpu," \
        "speed ratio ${wall[-1]} (wall) ${cpu[-1]} (cpu)"
done
echo "signature $(cat "$here/../bench/signature") in every run"
echo "median speed ratio candidate/baseline: $(printf '%s\n' "${wall[@]}" | median) (wall)," \
    "$(printf '%s\n' "${cpu[@]}" | median) (cpu)"
