#!/usr/bin/env bash
# Builds everything, converts the bundled example to OBJ and prints what the codec read from it.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
bash "$root/scripts/build.sh"
tool="$root/build/bin/gmlcodec"
out="$root/build/demo"
mkdir -p "$out"
"$tool" --version
"$tool" selfcheck
"$tool" convert "$root/examples/small_house.gml" "$out/small_house.obj"
"$tool" info "$root/examples/small_house.gml"
# And back: CityGML to CityGML, and the OBJ just written to CityGML.
mkdir -p "$out/gml" "$out/from_obj"
"$tool" convert "$root/examples/small_house.gml" "$out/gml/small_house.gml"
"$tool" convert "$out/small_house.obj" "$out/from_obj/small_house.gml"
echo "OBJ, MTL, texture and attributes are in $out; CityGML written again in $out/gml and $out/from_obj"
