#!/usr/bin/env bash
# Whole-process benchmark of `gmlcodec convert` to CityGML, in one run beside its baselines:
#   CityGML -> CityGML on a large file, against `gmlcodec info` (decode alone);
#   OBJ of one million faces -> CityGML;
# both against a bare std::to_chars loop writing as many coordinates with as many decimals.
# Reports seconds, MB/s written and peak memory.
#
# usage: bench/encoder/encode_bench.sh BUILD_DIR [LARGE_FILE.gml]
# Without a file, the reader's generator (bench/reader/tile_citygml.py) makes one of MEGABYTES
# (default 200) from a corpus file.
set -euo pipefail
root="$(cd "$(dirname "$0")/../.." && pwd)"
build="${1:?usage: encode_bench.sh BUILD_DIR [LARGE_FILE.gml]}"
file="${2:-}"
faces="${FACES:-1000000}"
tools="$build/bin/encoder_bench_tools"
tool="$build/bin/gmlcodec"
work="${TMPDIR:-/tmp}/gmlcodec_encode_bench"
mkdir -p "$work"

if [[ -z "$file" ]]; then
    # The reader's generator tiles a real file into a large city with fresh ids.
    file="$work/large.gml"
    megabytes="${MEGABYTES:-200}"
    source="$root/../shared/testdata/citygml2_lod2_buildings/berlin_lod2_buildings_test_area.gml"
    [[ -s "$file" ]] || python3 "$root/bench/reader/tile_citygml.py" "$source" "$file" "$megabytes"
fi

# Runs a command; prints "seconds peak_MB".
measure() {
    /usr/bin/time -o "$work/time.txt" -f '%e %M' "$@" > /dev/null 2> "$work/stderr.txt"
    awk '{printf "%.2f %.0f\n", $1, $2 / 1024}' "$work/time.txt"
}

report() { # name seconds peakMB bytesWritten
    printf '%-34s %7.2f s  %7.1f MB/s written  peak %5d MB\n' "$1" "$2" \
        "$(echo "$4 / 1048576 / $2" | bc -l)" "$3"
}

size=$(stat -c %s "$file")
echo "CityGML input: $file ($((size / 1048576)) MB)"
read -r info_s info_mb < <(measure "$tool" info --json "$file")
rm -rf "$work/gml" && mkdir -p "$work/gml"
read -r gml_s gml_mb < <(measure "$tool" convert "$file" "$work/gml/out.gml")
gml_bytes=$(du -cb "$work/gml" | tail -1 | cut -f1)
gml_coords=$("$tools" count "$work/gml/out.gml")
decimals=$(grep -m1 -o '<gml:lowerCorner>[^ ]*' "$work/gml/out.gml" | sed 's/.*\.//' | tr -d '\n' | wc -c)
read -r chars_s chars_rate < <("$tools" to-chars "$gml_coords" "$decimals")
printf '%-34s %7.2f s  peak %5d MB\n' "gmlcodec info (decode alone)" "$info_s" "$info_mb"
report "gmlcodec convert .gml -> .gml" "$gml_s" "$gml_mb" "$gml_bytes"
printf '%-34s %7.2f s  %7.1f MB/s  (%s coordinates, %s decimals)\n' "std::to_chars of as many" \
    "$chars_s" "$chars_rate" "$gml_coords" "$decimals"
printf 'ratios: convert / decode %.2f, convert / to_chars %.1f\n' \
    "$(echo "$gml_s / $info_s" | bc -l)" "$(echo "$gml_s / $chars_s" | bc -l)"

obj="$work/grid.obj"
[[ -s "$obj" ]] || "$tools" make-obj "$obj" "$faces"
echo "OBJ input: $obj ($faces faces, $(($(stat -c %s "$obj") / 1048576)) MB)"
rm -rf "$work/obj" && mkdir -p "$work/obj"
read -r obj_s obj_mb < <(measure "$tool" convert "$obj" "$work/obj/out.gml")
obj_bytes=$(du -cb "$work/obj" | tail -1 | cut -f1)
obj_coords=$("$tools" count "$work/obj/out.gml")
read -r ochars_s ochars_rate < <("$tools" to-chars "$obj_coords" 3)
report "gmlcodec convert .obj -> .gml" "$obj_s" "$obj_mb" "$obj_bytes"
printf '%-34s %7.2f s  %7.1f MB/s  (%s coordinates)\n' "std::to_chars of as many" \
    "$ochars_s" "$ochars_rate" "$obj_coords"
printf 'ratio: convert / to_chars %.1f\n' "$(echo "$obj_s / $ochars_s" | bc -l)"
