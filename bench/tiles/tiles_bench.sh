#!/usr/bin/env bash
# Whole-process benchmark of `gmlcodec tiles`, baselines measured in the same run:
#  1. one file on one job: tiles against `gmlcodec info` (decode only); target at most 1.5x
#  2. a folder of copies: --jobs 2 against --jobs 1 (wall time); target at least 1.7x faster on
#     two cores, and peak memory that follows the jobs, not the size of the folder.
# Medians of RUNS runs (default 3), alternating.
#
# usage: bench/tiles/tiles_bench.sh BUILD_DIR [LARGE_FILE.gml]
# Without a file, bench/reader/tile_citygml.py tiles the Berlin test file to SIZE MB (default 60).
set -euo pipefail
root="$(cd "$(dirname "$0")/../.." && pwd)"
build="${1:?usage: tiles_bench.sh BUILD_DIR [LARGE_FILE.gml]}"
file="${2:-}"
runs="${RUNS:-3}"
size="${SIZE:-60}"
copies="${COPIES:-4}"
tool="$build/bin/gmlcodec"
[[ -x "$tool" ]] || { echo "build gmlcodec first" >&2; exit 2; }
if [[ -z "$file" ]]; then
    file="${TMPDIR:-/tmp}/gmlcodec_bench_${size}MB.gml"
    [[ -s "$file" ]] || python3 "$root/bench/reader/tile_citygml.py" \
        "$root/../shared/testdata/citygml2_lod2_buildings/berlin_lod2_buildings_test_area.gml" \
        "$file" "$size"
fi
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
mkdir "$work/in"
for ((i = 0; i < copies; i++)); do cp "$file" "$work/in/copy$i.gml"; done

# Wall seconds, CPU seconds (user + system) and peak resident kilobytes of one run.
measure() {
    local times
    times=$(mktemp)
    rm -rf "$work/out"
    /usr/bin/time -o "$times" -f "%e %U %S %M" "$@" >/dev/null 2>&1
    awk '{print $1, $2 + $3, $4}' "$times"
    rm -f "$times"
}
median() { sort -g | awk '{a[NR]=$1} END {print a[int((NR+1)/2)]}'; }
col() { printf '%s\n' "${@:2}" | awk -v c="$1" '{print $c}' | median; }

echo "file: $file ($(($(stat -c %s "$file") / 1048576)) MB); folder: $copies copies;" \
    "$runs runs each, alternating; $(nproc) cores"
info=() one=() j1=() j2=()
for ((i = 0; i < runs; i++)); do
    info+=("$(measure "$tool" info --json "$file")")
    one+=("$(measure "$tool" tiles --jobs 1 "$file" "$work/out")")
    j1+=("$(measure "$tool" tiles --jobs 1 "$work/in" "$work/out")")
    j2+=("$(measure "$tool" tiles --jobs 2 "$work/in" "$work/out")")
done
"$tool" tiles --jobs 2 "$work/in" "$work/out" | sed 's/^/last run: /'
line() {
    printf '%-28s wall %7.2f s  cpu %7.2f s  peak %6.0f MB\n' "$1" "$(col 1 "${@:2}")" \
        "$(col 2 "${@:2}")" "$(echo "$(col 3 "${@:2}") / 1024" | bc -l)"
}
line "info (decode), one file" "${info[@]}"
line "tiles --jobs 1, one file" "${one[@]}"
line "tiles --jobs 1, folder" "${j1[@]}"
line "tiles --jobs 2, folder" "${j2[@]}"
printf 'tiles / decode, one file, one job: cpu %.2f, wall %.2f (target: at most 1.5)\n' \
    "$(echo "$(col 2 "${one[@]}") / $(col 2 "${info[@]}")" | bc -l)" \
    "$(echo "$(col 1 "${one[@]}") / $(col 1 "${info[@]}")" | bc -l)"
printf 'folder, --jobs 1 / --jobs 2 wall: %.2f (target: at least 1.7)\n' \
    "$(echo "$(col 1 "${j1[@]}") / $(col 1 "${j2[@]}")" | bc -l)"
printf 'peak memory, folder --jobs 2 / one file --jobs 1: %.2f (bounded per job: about 2 or less)\n' \
    "$(echo "$(col 3 "${j2[@]}") / $(col 3 "${one[@]}")" | bc -l)"
