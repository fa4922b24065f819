#!/usr/bin/env bash
# Builds everything and runs the tool on the bundled example.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
bash "$root/scripts/build.sh"
tool="$root/build/bin/gmlcodec"
"$tool" --version
"$tool" selfcheck
