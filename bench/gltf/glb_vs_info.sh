#!/usr/bin/env bash
# Whole-process benchmark: `gmlcodec convert FILE OUT.glb` against `gmlcodec info` of the same
# file, alternating, in the same run: CPU time and peak memory (maximum resident set), with the
# ratios. The target is at most 1.5 for both.
#
# usage: bench/gltf/glb_vs_info.sh BUILD_DIR [LARGE_FILE.gml]
# Without a file, bench/reader/tile_citygml.py tiles the Berlin test file to 100 MB first.
set -euo pipefail
root="$(cd "$(dirname "$0")/../.." && pwd)"
build="${1:?usage: glb_vs_info.sh BUILD_DIR [LARGE_FILE.gml]}"
file="${2:-}"
runs="${RUNS:-3}"
[[ -x "$build/bin/gmlcodec" ]] || { echo "build gmlcodec first" >&2; exit 2; }
if [[ -z "$file" ]]; then
    file="${TMPDIR:-/tmp}/gmlcodec_bench_100MB.gml"
    [[ -s "$file" ]] || python3 "$root/bench/reader/tile_citygml.py" \
        "$root/../shared/testdata/citygml2_lod2_buildings/berlin_lod2_buildings_test_area.gml" \
        "$file" 100
fi
out="$(mktemp -d)"
trap 'rm -rf "$out"' EXIT

# CPU seconds (user + system) and peak resident kilobytes of one run.
measure() {
    local times
    times=$(mktemp)
    /usr/bin/time -o "$times" -f "%U %S %M" "$@" >/dev/null 2>&1
    awk '{print $1 + $2, $3}' "$times"
    rm -f "$times"
}
median() { sort -g | awk '{a[NR]=$1} END {print a[int((NR+1)/2)]}'; }

echo "file: $file ($(($(stat -c %s "$file") / 1048576)) MB), $runs runs each, alternating"
info=()
glb=()
for ((i = 0; i < runs; i++)); do
    info+=("$(measure "$build/bin/gmlcodec" info --json "$file")")
    glb+=("$(measure "$build/bin/gmlcodec" convert "$file" "$out/out.glb")")
done
ic=$(printf '%s\n' "${info[@]}" | awk '{print $1}' | median)
im=$(printf '%s\n' "${info[@]}" | awk '{print $2}' | median)
gc=$(printf '%s\n' "${glb[@]}" | awk '{print $1}' | median)
gm=$(printf '%s\n' "${glb[@]}" | awk '{print $2}' | median)
printf 'gmlcodec info:    cpu %6.2f s  peak %6.0f MB\n' "$ic" "$(echo "$im / 1024" | bc -l)"
printf 'convert to GLB:   cpu %6.2f s  peak %6.0f MB  (GLB %d MB)\n' "$gc" \
    "$(echo "$gm / 1024" | bc -l)" "$(($(stat -c %s "$out/out.glb") / 1048576))"
printf 'ratios: time %.2f, memory %.2f (target: at most 1.5 each)\n' \
    "$(echo "$gc / $ic" | bc -l)" "$(echo "$gm / $im" | bc -l)"
