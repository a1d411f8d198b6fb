#!/usr/bin/env bash
# Exports a card of 1,000 recordings of 180 s to KML, by turns with gpsbabel doing the same with the card's side files,
# and prints the medians, their ratio and the memory taken. Exits with 1 when a target is missed.
# Usage: benchmarks/export.sh [BUILD-FOLDER]; needs the preset "bench" built and gpsbabel.
set -euo pipefail

build=${1:-$(dirname "$0")/../build/bench}
turns=3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
card=$work/card
export XDG_CACHE_HOME=$work/cache

for tool in "$build/bin/sample-card" "$build/bin/export-benchmark" gpsbabel mawk; do
    command -v "$tool" >/dev/null || { echo "export.sh: $tool is missing" >&2; exit 1; }
done
# Nothing of a video is exported, so a few bytes stand for each.
"$build/bin/sample-card" --recordings 1000 --no-video --seconds 180 --pictures 0 "$card" 2>/dev/null
sources=()
while IFS= read -r file; do
    sources+=(-i nmea -f "$file")
done < <(find "$card" -name '*.NMEA' | sort)

now() { echo "${EPOCHREALTIME/[.,]/}"; } # microseconds, without starting a program

ours=()
theirs=()
for ((turn = 0; turn <= turns; turn++)); do
    start=$(now)
    line=$("$build/bin/export-benchmark" "$card" "$work/ours.kml")
    middle=$(now)
    gpsbabel "${sources[@]}" -o kml -F "$work/theirs.kml"
    end=$(now)
    ((turn == 0)) && continue # fills the system's caches
    ours+=("$((middle - start)) $line")
    theirs+=($((end - middle)))
done

median() { sort -n | mawk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }

whole=$(printf '%s\n' "${ours[@]}" | median)
job=$(printf '%s\n' "${ours[@]}" | mawk '{ print $3 }' | median)
peak=$(printf '%s\n' "${ours[@]}" | mawk '{ print -$4 }' | sort -n | mawk 'NR == 1 { print -$1 }')
gpsbabel=$(printf '%s\n' "${theirs[@]}" | median)
echo "$(grep -c '<coord>' "$work/ours.kml") $whole $job $peak $gpsbabel $turns" | mawk '{
    fixes = $1; whole = $2 / 1000; theirs = $5 / 1000
    printf "1000 recordings, %d fixes, medians of %d turns\n", fixes, $6
    printf "%-44s %8.0f ms\n", "gpsbabel -i nmea -o kml", theirs
    printf "%-44s %8.0f ms   gpsbabel takes %.1f times as long\n", "cardreel, from start to end", whole, theirs / whole
    printf "%-44s %8.0f ms\n", "of that the export, with parsing", $3
    printf "%-44s %8.0f MB\n", "most memory", $4
    if (fixes < 150000) { print "export.sh: fixes are missing"; exit 1 }
    if (theirs < 5 * whole) { print "export.sh: gpsbabel takes less than 5 times as long"; exit 1 }
    if ($4 >= 300) { print "export.sh: 300 MB or more"; exit 1 }
}'
