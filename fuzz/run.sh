#!/usr/bin/env bash
# Builds one fuzz target (when needed) and runs it on a scratch copy of its seed corpus.
#   fuzz/run.sh TARGET MINUTES      TARGET: reader, decode, gml_roundtrip or obj
# Environment: JOBS (build jobs, default 2), FUZZ_BUILD (build folder, default build-fuzz),
# KEEP_GOING=1 keeps fuzzing after a finding (fork mode) instead of stopping at the first.
# Findings land in fuzz/findings/TARGET; the figures are printed at the end.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
target="${1:?usage: fuzz/run.sh TARGET MINUTES}"
minutes="${2:?usage: fuzz/run.sh TARGET MINUTES}"
build="${FUZZ_BUILD:-$root/build-fuzz}"
seeds="$root/fuzz/corpus/$target"
[ -d "$seeds" ] || { echo "no seed corpus $seeds" >&2; exit 2; }

bash "$root/fuzz/configure.sh" "$build"
cmake --build "$build" -j"${JOBS:-2}" --target "${target}_fuzzer" >/dev/null

work="$root/fuzz/corpus-run/$target"
findings="$root/fuzz/findings/$target"
rm -rf "$work"
mkdir -p "$work" "$findings"
cp -RL "$seeds/." "$work/"
log="$work.log"

# Inputs up to 256 kB reach deep nesting and long coordinate lists; an input that runs 10 s or
# needs 2 GB is itself a finding.
flags=(-max_total_time=$((minutes * 60)) -max_len=262144 -timeout=10 -rss_limit_mb=2048
       -malloc_limit_mb=2048 -print_final_stats=1 -artifact_prefix="$findings/")
if [ "${KEEP_GOING:-0}" = 1 ]; then
    flags+=(-fork=1 -ignore_crashes=1 -ignore_timeouts=1 -ignore_ooms=1)
fi
before=$(find "$findings" -type f | wc -l)
status=0
(cd "$work" && "$build/bin/${target}_fuzzer" "${flags[@]}" "$work") >"$log" 2>&1 || status=$?
after=$(find "$findings" -type f | wc -l)

runs=$(grep -o 'stat::number_of_executed_units: *[0-9]*' "$log" | grep -o '[0-9]*$' | tail -1 || true)
[ -n "$runs" ] || runs=$(grep -oE '^#[0-9]+' "$log" | tail -1 | tr -d '#' || true)
cov=$(grep -oE 'cov: [0-9]+ ft: [0-9]+' "$log" | tail -1 || true)
corpus=$(find "$work" -type f | wc -l)
echo "target:   $target (${minutes} min, exit $status)"
echo "runs:     ${runs:-?}"
echo "coverage: ${cov:-?}"
echo "corpus:   $corpus files (from $(find -L "$seeds" -type f | wc -l) seeds)"
echo "findings: $((after - before)) new in $findings"
echo "log:      $log"
[ "$after" -eq "$before" ]
