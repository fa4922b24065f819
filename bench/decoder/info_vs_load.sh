#!/usr/bin/env bash
# Whole-process benchmark: `gmlcodec info` on a large generated file against the reader's bare
# load of the same file, in the same run. The decoder's own share is (info - load) / info and
# should stay under one half.
#
# usage: bench/decoder/info_vs_load.sh BUILD_DIR [LARGE_FILE.gml]
# Without a file, the reader's generator (bench/reader) tiles a real file to 200+ MB first.
set -euo pipefail
root="$(cd "$(dirname "$0")/../.." && pwd)"
build="${1:?usage: info_vs_load.sh BUILD_DIR [LARGE_FILE.gml]}"
file="${2:-}"
runs="${RUNS:-3}"

if [[ -z "$file" ]]; then
    generator="$(ls "$build"/bin/*generate* 2>/dev/null | head -1 || true)"
    if [[ -z "$generator" ]]; then
        echo "no generator in $build/bin (built from bench/reader); give a large file instead" >&2
        exit 2
    fi
    file="${TMPDIR:-/tmp}/gmlcodec_bench_large.gml"
    [[ -s "$file" ]] || "$generator" "$file"
fi

seconds() { # runs a command, prints its wall time in seconds
    local start end
    start=$(date +%s.%N)
    "$@" >/dev/null
    end=$(date +%s.%N)
    echo "$end - $start" | bc -l
}

median() { sort -g | awk '{a[NR]=$1} END {print a[int((NR+1)/2)]}'; }

size=$(stat -c %s "$file")
echo "file: $file ($((size / 1048576)) MB), $runs runs each, alternating"
"$build/bin/bench_reader_load" "$file"
load=()
info=()
for ((i = 0; i < runs; i++)); do
    load+=("$(seconds "$build/bin/bench_reader_load" "$file")")
    info+=("$(seconds "$build/bin/gmlcodec" info --json "$file")")
done
l=$(printf '%s\n' "${load[@]}" | median)
n=$(printf '%s\n' "${info[@]}" | median)
printf 'reader load:   %6.2f s  (%.0f MB/s)\n' "$l" "$(echo "$size / 1048576 / $l" | bc -l)"
printf 'gmlcodec info: %6.2f s  (%.2f x load)\n' "$n" "$(echo "$n / $l" | bc -l)"
printf "decoder's own share: %.0f %% of info\n" "$(echo "($n - $l) * 100 / $n" | bc -l)"
