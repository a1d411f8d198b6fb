#!/usr/bin/env bash
# Backs up a card of 2 GB by turns with cp -a of the same files to the same disk, both until everything has reached it,
# and prints the medians and their ratio. Fails below 0.9 times cp's throughput.
# Usage: benchmarks/backup.sh [BUILD-FOLDER]; needs the preset "bench" built and 6 GB below the temporary folder.
set -euo pipefail

build=${1:-$(dirname "$0")/../build/bench}
turns=7
recordings=40
megabytes=51
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
card=$work/card

for tool in "$build/bin/sample-card" "$build/bin/cardreel" cp sync mawk; do
    command -v "$tool" >/dev/null || { echo "backup.sh: $tool is missing" >&2; exit 1; }
done
"$build/bin/sample-card" --recordings $recordings --no-video --seconds 60 --no-rear "$card" 2>/dev/null
# What is in a video doesn't matter here, but for file systems that would leave zeros out.
find "$card" -name '*.MP4' -print0 | while IFS= read -r -d '' video; do
    head -c ${megabytes}M /dev/urandom >"$video"
done
sync -f "$work"

now() { echo "${EPOCHREALTIME/[.,]/}"; } # microseconds, without starting a program

# Seconds that a command takes to have a copy of the card on the disk.
copy() {
    local start
    rm -rf "$work/copy"
    sync -f "$work"
    start=$(now)
    "$@" "$card" "$work/copy" >/dev/null
    sync -f "$work/copy"
    echo $(($(now) - start))
}

ours=()
theirs=()
for ((turn = 0; turn <= turns; turn++)); do
    first=$(copy "$build/bin/cardreel" backup)
    second=$(copy cp -a)
    ((turn == 0)) && continue # fills the system's caches
    ours+=("$first")
    theirs+=("$second")
done

median() { sort -n | mawk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] / 1000000 }'; }

echo "$(printf '%s\n' "${ours[@]}" | median) $(printf '%s\n' "${theirs[@]}" | median)" |
    mawk -v mb=$((recordings * megabytes)) -v turns=$turns '{
        printf "%d MB, medians of %d turns\n", mb, turns
        printf "%-20s %6.2f s   %5.0f MB/s\n", "cp -a", $2, mb / $2
        printf "%-20s %6.2f s   %5.0f MB/s   %.2f times cp (aim: 0.9)\n", "cardreel backup", $1, mb / $1, $2 / $1
        exit $2 / $1 < 0.9
    }'
