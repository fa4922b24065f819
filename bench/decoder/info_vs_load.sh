#!/usr/bin/env bash
# Whole-process benchmark: `gmlcodec info` on a large generated file against the reader's bare
# load of the same file (reader_bench_load), alternating, in the same run. The decoder's own
# share is (info - load) / info and should stay under one half.
#
# usage: bench/decoder/info_vs_load.sh BUILD_DIR [LARGE_FILE.gml]
# Without a file, bench/reader/tile_citygml.py tiles the Berlin test file to 210 MB first.
set -euo pipefail
root="$(cd "$(dirname "$0")/../.." && pwd)"
build="${1:?usage: info_vs_load.sh BUILD_DIR [LARGE_FILE.gml]}"
file="${2:-}"
runs="${RUNS:-3}"
for program in gmlcodec reader_bench_load libcitygml_codec.so; do
    [[ -e "$build/bin/$program" ]] || { echo "build $program first" >&2; exit 2; }
done

if [[ -z "$file" ]]; then
    file="${TMPDIR:-/tmp}/gmlcodec_bench_210MB.gml"
    [[ -s "$file" ]] || python3 "$root/bench/reader/tile_citygml.py" \
        "$root/../shared/testdata/citygml2_lod2_buildings/berlin_lod2_buildings_test_area.gml" \
        "$file" 210
fi

# Wall and CPU (user + system) seconds of one run. On a shared machine the CPU time is the
# steadier figure, so the share is computed from it.
timed() {
    local start end times
    times=$(mktemp)
    start=$(date +%s.%N)
    /usr/bin/time -o "$times" -f "%U %S" "$@" >/dev/null 2>&1
    end=$(date +%s.%N)
    echo "$(echo "$end - $start" | bc -l) $(awk '{print $1 + $2}' "$times")"
    rm -f "$times"
}

median() { sort -g | awk '{a[NR]=$1} END {print a[int((NR+1)/2)]}'; }

size=$(stat -c %s "$file")
echo "file: $file ($((size / 1048576)) MB), $runs runs each, alternating"
load=()
info=()
for ((i = 0; i < runs; i++)); do
    load+=("$(timed "$build/bin/reader_bench_load" "$file")")
    info+=("$(timed "$build/bin/gmlcodec" info --json "$file")")
done
lw=$(printf '%s\n' "${load[@]}" | awk '{print $1}' | median)
lc=$(printf '%s\n' "${load[@]}" | awk '{print $2}' | median)
nw=$(printf '%s\n' "${info[@]}" | awk '{print $1}' | median)
nc=$(printf '%s\n' "${info[@]}" | awk '{print $2}' | median)
printf 'reader load:   wall %6.2f s  cpu %6.2f s  (%.0f MB/s of cpu)\n' "$lw" "$lc" \
    "$(echo "$size / 1048576 / $lc" | bc -l)"
printf 'gmlcodec info: wall %6.2f s  cpu %6.2f s  (%.2f x load)\n' "$nw" "$nc" "$(echo "$nc / $lc" | bc -l)"
printf "decoder's own share: %.0f %% of info's cpu time (wall: %.0f %%)\n" \
    "$(echo "($nc - $lc) * 100 / $nc" | bc -l)" "$(echo "($nw - $lw) * 100 / $nw" | bc -l)"
