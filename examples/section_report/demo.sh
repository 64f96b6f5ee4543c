#!/usr/bin/env bash
# Runs section_report on the sample documents. Arguments: the build folder, and the folder for the report.
set -euo pipefail
data=$(cd "$(dirname "$0")/../data" && pwd)
exec "$1/examples/section_report/section_report" --out "$2" \
    --unit in "$data/i-girders-inches.json" "$data/box-beam-inches.json" "$data/pier-cap-inches.json" \
    "$data/voided-slab-inches.json" \
    --unit m "$data/box-girder-single-cell.json" "$data/box-girder-three-cells.json" "$data/tunnel-horseshoe.json" \
    "$data/t-girder-deck-inches.json@0.0254" "$data/culvert-millimetres.json@0.001" \
    --unit units "$data/bad-elements.json" \
    --unit m --blend 8 "$data/haunched-box-pier.json" "$data/haunched-box-midspan.json" \
    --blend 8 "$data/haunched-box-pier.json" "$data/haunched-box-one-cell.json"
