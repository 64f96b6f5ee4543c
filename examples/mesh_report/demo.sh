#!/usr/bin/env bash
# Runs mesh_report on the sample models and the girder. Arguments: the build folder, and the folder for the report.
set -euo pipefail
data=$(cd "$(dirname "$0")/../data" && pwd)
exec "$1/examples/mesh_report/mesh_report" --out "$2" \
    --scale 0.001 --turn 15 --move 100,50,0 "$data/pier.stl" \
    --scale 1 --turn 0 --move 0,0,0 "$data/bearing.obj" \
    "$data/girder.json" "$data/girder-start.json" "$data/girder-end.json"
