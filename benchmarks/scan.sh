#!/usr/bin/env bash
# Scans a card of 5,000 recordings with rear videos and side files and 500 pictures, by turns with find asking for each
# entry's size and date, and prints the medians and their ratio.
# Usage: benchmarks/scan.sh [BUILD-FOLDER]; needs the preset "bench" built.
set -euo pipefail

build=${1:-$(dirname "$0")/../build/bench}
turns=15
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
card=$work/card

for tool in "$build/bin/sample-card" "$build/bin/scan-benchmark" find mawk; do
    command -v "$tool" >/dev/null || { echo "scan.sh: $tool is missing" >&2; exit 1; }
done
# Nothing is read of a video but its name, size and date, so a few bytes stand for each.
"$build/bin/sample-card" --recordings 5000 --no-video --seconds 1 --pictures 500 "$card" 2>/dev/null

now() { echo "${EPOCHREALTIME/[.,]/}"; } # microseconds, without starting a program

scan=()
theirs=()
for ((turn = 0; turn <= turns; turn++)); do
    line=$("$build/bin/scan-benchmark" "$card")
    start=$(now)
    find "$card" -printf '%p %s %T@\n' >/dev/null
    end=$(now)
    ((turn == 0)) && continue # fills the system's caches
    scan+=("$line")
    theirs+=($((end - start)))
done

median() { sort -n | mawk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }

whole=$(printf '%s\n' "${scan[@]}" | mawk '{ print $1 }' | median)
names=$(printf '%s\n' "${scan[@]}" | mawk '{ print $1 - $2 }' | median)
pictures=$(printf '%s\n' "${scan[@]}" | mawk '{ print $2 / $6 }' | median)
find=$(printf '%s\n' "${theirs[@]}" | mawk '{ print $1 / 1000 }' | median)
echo "$line $whole $names $pictures $find $turns" | mawk '{
    printf "%d recordings, %d with rear video, %d with side file, %d pictures; medians of %d turns\n", $3, $4, $5, $6, $11
    printf "%-44s %7.1f ms\n", "find with sizes and dates", $10
    printf "%-44s %7.1f ms   %.2f times find\n", "cardreel, without reading pictures", $8, $8 / $10
    printf "%-44s %7.1f ms   %.2f times find\n", "cardreel, all of it", $7, $7 / $10
    printf "%-44s %7.3f ms\n", "reading a picture'"'"'s properties, each", $9
}'
