#!/usr/bin/env bash
# Runs each example host on its sample data and gathers what they made. Arguments: the build folder, and the folder for
# the results.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)

echo "== sections: documents of outlines, cut into convex loops"
"$here/section_report/demo.sh" "$1" "$2/sections"

echo "== meshes: imported models with near positions merged, and extrusions"
"$here/mesh_report/demo.sh" "$1" "$2/meshes"

echo "== records: geometry stored in a model database"
"$here/record_report/demo.sh" "$1" "$2/records"

cp -r "$here/data" "$2/data"
rm "$2"/data/README.md "$2"/data/make_*.py
"$here/make_index.py" "$2"
echo "all of it: $2/index.html"
