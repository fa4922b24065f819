#!/usr/bin/env bash
# Whole-process benchmark of decoding and encoding, each figure beside its baseline, in one run.
#
# usage: bench/run_all.sh BUILD_DIR [MORE_BUILD_DIRS...]
#   RUNS=N (default 3)         runs of every case; the median counts
#   BENCH_DATA=DIR             where the generated inputs live (default FIRST_BUILD_DIR/bench-data)
#   MEGABYTES=N, FACES=N       size of the generated CityGML file (200) and OBJ grid (1000000)
#
# Inputs, made once: a CityGML 2.0 LoD2 city file of the shared test data tiled with fresh ids to
# about 200 MB (bench/reader/tile_citygml.py), and an OBJ grid of a million quads with one texture.
# Cases, run alternately (round by round, and across builds when several are given, so that the
# load of a shared machine falls on all of them alike):
#   sax        libxml2 SAX2 push pass that only counts elements (the floor)
#   libcitygml Debian's libcitygml, load without tesselation
#   info       gmlcodec info --json big.gml (read and decode to host meshes)
#   gml2gml    gmlcodec convert big.gml out.gml
#   obj2gml    gmlcodec convert grid.obj out.gml
#   to_chars   a bare std::to_chars loop writing as many coordinates to a file
# Prints the medians of wall time, CPU time (user + system) and peak RSS, and the goals' ratios.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
[[ $# -ge 1 ]] || { sed -n '4,8p' "$0" >&2; exit 2; }
builds=()
for dir in "$@"; do builds+=("$(cd "$dir" && pwd)"); done
runs="${RUNS:-3}"
data="${BENCH_DATA:-${builds[0]}/bench-data}"
megabytes="${MEGABYTES:-200}"
faces="${FACES:-1000000}"
mkdir -p "$data"
data="$(cd "$data" && pwd)"
source_gml="$root/../shared/testdata/citygml2_lod2_buildings/berlin_lod2_buildings_test_area.gml"
[[ -f "$source_gml" ]] || { echo "missing $source_gml" >&2; exit 2; }

# The tool, the codec and the baseline programs, built where they are missing or stale.
for build in "${builds[@]}"; do
    echo "building in $build" >&2
    cmake --build "$build" -j2 --target gmlcodec citygml_codec reader_bench_sax \
        libcitygml_bench_load encoder_bench_tools >/dev/null
done
bin0="${builds[0]}/bin"
[[ -x "$bin0/libcitygml_bench_load" ]] || echo "note: libcitygml-dev missing, no libcitygml figure" >&2

big="$data/tiled_${megabytes}mb.gml"
[[ -s "$big" ]] || python3 "$root/bench/reader/tile_citygml.py" "$source_gml" "$big" "$megabytes" >&2
obj="$data/grid_${faces}.obj"
[[ -s "$obj" && -s "${obj%.obj}.png" ]] || "$bin0/encoder_bench_tools" make-obj "$obj" "$faces"
out="$data/out"
rm -rf "$out" && mkdir -p "$out"

# The baseline for obj2gml writes as many numbers as the tool's document holds, with as many
# decimals as the tool's vertex precision keeps.
precision=$("$bin0/gmlcodec" convert "$obj" "$out/grid.gml" 2>/dev/null | sed -n 's/.*vertex precision \([0-9.e-]*\).*/\1/p')
obj_coords=$("$bin0/encoder_bench_tools" count "$out/grid.gml")
obj_decimals=$(awk -v p="$precision" 'BEGIN {printf "%d", -log(p) / log(10) + 0.5}')
# A baseline of no numbers would time nothing: a first build that cannot convert the OBJ (or
# count its document) stops the run here instead of printing a ratio against 0 s.
if [[ -z "$precision" || ! "$obj_coords" =~ ^[1-9][0-9]*$ ]]; then
    echo "no OBJ baseline: $bin0/gmlcodec gave precision '$precision' and $obj_coords coordinates" >&2
    exit 1
fi
rm -rf "$out" && mkdir -p "$out"

# case name -> command (BIN stands for the build's bin folder; the baselines are the first
# build's, the same programs for every build)
declare -A command=(
    [sax]="$bin0/reader_bench_sax $big"
    [libcitygml]="$bin0/libcitygml_bench_load $big"
    [info]="BIN/gmlcodec info --json $big"
    [gml2gml]="BIN/gmlcodec convert $big $out/big.gml"
    [obj2gml]="BIN/gmlcodec convert $obj $out/grid.gml"
    [to_chars]="$bin0/encoder_bench_tools to-chars $obj_coords $obj_decimals $out/numbers.txt"
)
cases=(sax libcitygml info gml2gml obj2gml to_chars)

declare -A samples # "build case" -> lines of "wall cpu rss_kb"
for ((round = 1; round <= runs; ++round)); do
    for b in "${!builds[@]}"; do
        for name in "${cases[@]}"; do
            cmd="${command[$name]//BIN/${builds[$b]}/bin}"
            [[ -x "${cmd%% *}" ]] || continue
            if ! /usr/bin/time -o "$data/time.txt" -f '%e %U %S %M' $cmd >/dev/null 2>"$data/stderr.txt"; then
                echo "failed: $cmd" >&2
                cat "$data/stderr.txt" >&2
                exit 1
            fi
            samples["$b $name"]+="$(awk 'END {print $1, $2 + $3, $4}' "$data/time.txt")"$'\n'
            rm -rf "${out:?}"/*
        done
    done
    echo "round $round of $runs done" >&2
done

median() { sort -g | awk '{a[NR] = $1} END {print (NR % 2) ? a[(NR + 1) / 2] : (a[NR / 2] + a[NR / 2 + 1]) / 2}'; }
# figure BUILD CASE COLUMN(1 wall, 2 cpu, 3 rss_kb) -> median
figure() {
    printf '%s' "${samples["$1 $2"]:-}" | awk -v c="$3" 'NF {print $c}' | median
}
ratio() { awk -v a="$1" -v b="$2" 'BEGIN {if (a == "" || b == "" || b == 0) print "-"; else printf "%.2f", a / b}'; }

echo "CityGML input: $big ($(($(stat -c %s "$big") / 1048576)) MB); OBJ input: $obj ($faces quads," \
    "$obj_coords coordinates with $obj_decimals decimals); median of $runs runs"
for b in "${!builds[@]}"; do
    echo
    echo "build ${builds[$b]} ($(git -C "${builds[$b]}/.." rev-parse --short HEAD 2>/dev/null || echo '?'))"
    printf '  %-11s %8s %8s %9s\n' case wall_s cpu_s rss_MB
    declare -A w c r
    for name in "${cases[@]}"; do
        w[$name]=$(figure "$b" "$name" 1)
        c[$name]=$(figure "$b" "$name" 2)
        r[$name]=$(figure "$b" "$name" 3)
        [[ -n "${w[$name]}" ]] || continue
        printf '  %-11s %8.2f %8.2f %9.1f\n' "$name" "${w[$name]}" "${c[$name]}" \
            "$(awk -v k="${r[$name]}" 'BEGIN {print k / 1024}')"
    done
    echo "  goal 1: info / sax            wall $(ratio "${w[info]}" "${w[sax]}")  cpu $(ratio "${c[info]}" "${c[sax]}")  (<= 2)"
    echo "          libcitygml / info     wall $(ratio "${w[libcitygml]:-}" "${w[info]}")  cpu $(ratio "${c[libcitygml]:-}" "${c[info]}")  (>= 5)"
    echo "          info / libcitygml RSS      $(ratio "${r[info]}" "${r[libcitygml]:-}")  (<= 0.75)"
    echo "  goal 2: gml2gml / info        wall $(ratio "${w[gml2gml]}" "${w[info]}")  cpu $(ratio "${c[gml2gml]}" "${c[info]}")  (<= 2)"
    echo "          gml2gml / info RSS         $(ratio "${r[gml2gml]}" "${r[info]}")  (<= 1.5)"
    echo "  goal 3: obj2gml / to_chars    wall $(ratio "${w[obj2gml]}" "${w[to_chars]}")  cpu $(ratio "${c[obj2gml]}" "${c[to_chars]}")  (<= 3)"
    unset w c r
done
