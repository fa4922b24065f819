#!/bin/bash
# Whole-process benchmark of the CityGML reader.
# usage: run_reader_bench.sh BUILD_DIR [WORK_DIR]
# Reads (a) the largest file of the shared test data and (b) a file of at least 200 MB tiled from
# a real one, each with: a bare libxml2 SAX2 pass (the floor), our reader, and Debian's
# libcitygml (tesselation off). Each program runs three times; the best time counts. Times are
# given as wall clock and as CPU time (user + system), which stays meaningful on a busy machine.
set -euo pipefail

build=${1:?usage: run_reader_bench.sh BUILD_DIR [WORK_DIR]}
work=${2:-$build/bench-data}
bin=$build/bin
here=$(cd "$(dirname "$0")" && pwd)
data=$here/../../../shared/testdata
mkdir -p "$work"

largest=$(find "$data" -type f \( -name '*.gml' -o -name '*.xml' \) -not -path '*/schemas/*' \
    -printf '%s %p\n' | sort -n | tail -1 | cut -d' ' -f2-)
big=$work/tiled_berlin_200mb.gml
if [ ! -s "$big" ]; then
    python3 "$here/tile_citygml.py" "$data/citygml2_lod2_buildings/berlin_lod2_buildings_test_area.gml" \
        "$big" 205 >&2
fi

# best_of PROGRAM FILE REPEAT -> "wall cpu rss_kb"
best_of() {
    local best_wall=999999 best_cpu=999999 rss=0 line wall user sys kb
    for _ in 1 2 3; do
        /usr/bin/time -o "$work/time.txt" -f '%e %U %S %M' "$1" "$2" "$3" >/dev/null 2>&1
        line=$(tail -1 "$work/time.txt")
        read -r wall user sys kb <<<"$line"
        local cpu
        cpu=$(echo "$user + $sys" | bc)
        if (( $(echo "$wall < $best_wall" | bc) )); then best_wall=$wall; fi
        if (( $(echo "$cpu < $best_cpu" | bc) )); then best_cpu=$cpu; fi
        if (( kb > rss )); then rss=$kb; fi
    done
    echo "$best_wall $best_cpu $rss"
}

printf '%-28s %-12s %8s %8s %10s %10s %9s\n' file program wall_s cpu_s MB/s_wall MB/s_cpu rss_MB
for file in "$largest" "$big"; do
    # Small files are read repeatedly in one process, about 200 MB in all, so that the 10 ms
    # resolution of the timer stays small against the run.
    bytes=$(stat -L -c %s "$file")
    repeat=$(( 209715200 / bytes ))
    (( repeat < 1 )) && repeat=1
    mb=$(echo "scale=3; $bytes * $repeat / 1048576" | bc)
    declare -A wall cpu rss
    for program in reader_bench_sax reader_bench_load libcitygml_bench_load; do
        [ -x "$bin/$program" ] || continue
        read -r w c r <<<"$(best_of "$bin/$program" "$file" "$repeat")"
        wall[$program]=$w cpu[$program]=$c rss[$program]=$r
        printf '%-28s %-12s %8.2f %8.2f %10.1f %10.1f %9.1f\n' "$(basename "$file" | cut -c1-28)" \
            "${program/_bench_/ }" "$w" "$c" "$(echo "$mb / $w" | bc -l)" \
            "$(echo "$mb / $c" | bc -l)" "$(echo "$r / 1024" | bc -l)"
    done
    echo "  $(basename "$file"): $(echo "scale=1; $bytes / 1048576" | bc) MB read $repeat times"
    echo "  reader / bare SAX time:      wall $(echo "scale=2; ${wall[reader_bench_load]} / ${wall[reader_bench_sax]}" | bc)x, cpu $(echo "scale=2; ${cpu[reader_bench_load]} / ${cpu[reader_bench_sax]}" | bc)x (goal <= 2)"
    if [ -n "${wall[libcitygml_bench_load]:-}" ]; then
        echo "  reader throughput / libcitygml: wall $(echo "scale=2; ${wall[libcitygml_bench_load]} / ${wall[reader_bench_load]}" | bc)x, cpu $(echo "scale=2; ${cpu[libcitygml_bench_load]} / ${cpu[reader_bench_load]}" | bc)x (goal >= 5)"
        echo "  reader peak RSS / libcitygml:   $(echo "scale=2; ${rss[reader_bench_load]} / ${rss[libcitygml_bench_load]}" | bc)x (goal < 1)"
    fi
    unset wall cpu rss
done
