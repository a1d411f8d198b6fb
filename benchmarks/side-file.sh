#!/bin/sh
# Parses one long side file with this program's parser, with gpsbabel and with mawk, in one run, and prints times and
# ratios. Usage: benchmarks/side-file.sh [BUILD-FOLDER]; needs the preset "bench" built, gpsbabel and mawk.
set -eu

build=${1:-$(dirname "$0")/../build/bench}
fixes=200000
samples=2000000
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
file=$work/side-file.nmea

for tool in "$build/bin/sample-card" "$build/bin/side-file-cost" gpsbabel mawk; do
    command -v "$tool" >/dev/null || { echo "side-file.sh: $tool is missing" >&2; exit 1; }
done
"$build/bin/sample-card" --side-file "$file" --fixes $fixes --samples $samples
size=$(stat -c %s "$file")
cat "$file" >/dev/null

# The best of three runs, in seconds.
seconds() {
    best=
    for _ in 1 2 3; do
        start=$(date +%s.%N)
        "$@" >/dev/null
        best=$(echo "$start $(date +%s.%N) ${best:-999999}" | mawk '{ t = $2 - $1; print t < $3 ? t : $3 }')
    done
    echo "$best"
}

ours=$("$build/bin/side-file-cost" "$file")
mawk=$(seconds mawk -F, '{s+=$2}END{print s}' "$file")
gpsbabel=$(seconds gpsbabel -i nmea -f "$file" -o unicsv -F /dev/null)

echo "$size $mawk $gpsbabel $ours" | mawk '{
    mb = $1 / 1e6
    printf "%.1f MB, %d samples, %d fixes\n", mb, $7, $8
    printf "%-12s %8.3f s %8.0f MB/s\n", "cardreel", $4, mb / $4
    printf "%-12s %8.3f s %8.0f MB/s   %.2f times as long as cardreel\n", "mawk", $2, mb / $2, $2 / $4
    printf "%-12s %8.3f s %8.0f MB/s   %.1f times as long as cardreel\n", "gpsbabel", $3, mb / $3, $3 / $4
    printf "held in memory: %.1f bytes per sample, %.1f bytes per fix\n", $5, $6
}'
