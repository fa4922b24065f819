#!/usr/bin/env bash
# Hashes every output the tool writes for each CityGML file of the shared test data: GML to OBJ
# (.obj, .mtl, .attributes.json) and GML to GML (the document, random identifiers masked by
# mask_ids.py).
# Compares them with hashes.txt beside this script, or rewrites it when KOLT_UPDATE_GOLDEN=1.
#
# usage: output_hashes.sh GMLCODEC [TESTDATA_DIR]
# Exit 0 when equal (or rewritten, or the test data is absent: prints a SKIP line), 1 otherwise.
set -euo pipefail
tool="${1:?usage: output_hashes.sh GMLCODEC [TESTDATA_DIR]}"
here="$(cd "$(dirname "$0")" && pwd)"
data="${2:-$here/../../../../shared/testdata}"
golden="$here/hashes.txt"
jobs="${KOLT_GOLDEN_JOBS:-2}"

if [[ ! -d "$data" ]]; then
    echo "SKIP: no test data at $data"
    exit 0
fi
data="$(cd "$data" && pwd)"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

# One line per output: "relative/path.gml kind sha256" (or "exit N" when the tool failed).
hash_one() {
    local tool="$1" data="$2" work="$3" here="$4" file="$5"
    local rel="${file#"$data"/}" dir
    dir="$work/$(printf '%s' "$rel" | sha256sum | cut -c1-16)"
    mkdir -p "$dir/obj" "$dir/gml"
    if "$tool" convert "$file" "$dir/obj/out.obj" >/dev/null 2>&1; then
        for ext in obj mtl attributes.json; do
            if [[ -f "$dir/obj/out.$ext" ]]; then
                echo "$rel $ext $(sha256sum <"$dir/obj/out.$ext" | cut -d' ' -f1)"
            else
                echo "$rel $ext missing"
            fi
        done
    else
        echo "$rel obj exit $?"
    fi
    if "$tool" convert "$file" "$dir/gml/out.gml" >/dev/null 2>&1; then
        echo "$rel gml $(python3 "$here/mask_ids.py" "$dir/gml/out.gml" | sha256sum | cut -d' ' -f1)"
    else
        echo "$rel gml exit $?"
    fi
    rm -rf "$dir"
}
export -f hash_one

find "$data" -type f \( -name '*.gml' -o -name '*.xml' \) -not -path "$data/schemas/*" -print0 |
    xargs -0 -P "$jobs" -n 1 bash -c 'hash_one "$@"' _ "$tool" "$data" "$work" "$here" |
    LC_ALL=C sort >"$work/hashes.txt"

if [[ "${KOLT_UPDATE_GOLDEN:-0}" == 1 ]]; then
    cp "$work/hashes.txt" "$golden"
    echo "rewrote $golden ($(wc -l <"$golden") outputs)"
    exit 0
fi
if ! diff -u "$golden" "$work/hashes.txt"; then
    echo "outputs differ from $golden; if the change is meant, run again with KOLT_UPDATE_GOLDEN=1" >&2
    exit 1
fi
echo "$(wc -l <"$golden") outputs unchanged"
