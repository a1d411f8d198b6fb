#!/bin/sh
# Makes a thumbnail of each of ten Full HD recordings with this program's frame generator and with ffmpegthumbnailer, in
# one run, and prints milliseconds a file and the ratio.
# Usage: benchmarks/thumbnail.sh [BUILD-FOLDER]; needs the preset "bench" built, ffmpeg and ffmpegthumbnailer.
set -eu

build=${1:-$(dirname "$0")/../build/bench}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

for tool in "$build/bin/thumbnail-benchmark" ffmpeg ffmpegthumbnailer mawk; do
    command -v "$tool" >/dev/null || { echo "thumbnail.sh: $tool is missing" >&2; exit 1; }
done

# Noise keeps the encoder at the rate that recorders write: 13 Mbit/s, a key frame each second.
ffmpeg -v error -f lavfi -i "testsrc2=s=1920x1080:r=30,noise=alls=12:allf=t" -t 5 -c:v libx264 -preset veryfast \
    -b:v 13M -maxrate 13M -bufsize 13M -g 30 -sc_threshold 0 -pix_fmt yuv420p "$work/0.MP4"
for i in 1 2 3 4 5 6 7 8 9; do
    cp "$work/0.MP4" "$work/$i.MP4"
done
cat "$work"/*.MP4 >/dev/null

# The best of three runs over all files, in milliseconds a file.
theirs=
for _ in 1 2 3; do
    start=$(date +%s.%N)
    for file in "$work"/*.MP4; do
        ffmpegthumbnailer -i "$file" -o "$work/thumbnail.jpg" -s 240 -t 00:00:01 >/dev/null 2>&1
    done
    theirs=$(echo "$start $(date +%s.%N) ${theirs:-999999}" | mawk '{ t = ($2 - $1) * 100; print t < $3 ? t : $3 }')
done
best() {
    for _ in 1 2 3; do
        "$build/bin/thumbnail-benchmark" --at "$1" "$work"/*.MP4
    done | sort -n | head -n 1
}

echo "$theirs $(best 1) $(best 1.95)" | mawk '{
    printf "%-36s %7.1f ms\n", "ffmpegthumbnailer, at 1 s", $1
    printf "%-36s %7.1f ms   %.1f times as fast\n", "cardreel, at 1 s", $2, $1 / $2
    printf "%-36s %7.1f ms   %.1f times as fast\n", "cardreel, at 1.95 s (end of a GOP)", $3, $1 / $3
}'
