#!/usr/bin/env bash
# Draws the pictures of the documentation anew. Argument: the build folder, with the command and the Python package.
set -euo pipefail
images=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
sectrix=$1/command/sectrix
data=$images/../../examples/data
"$sectrix" cut -o "$work" "$images/cutting.json" >/dev/null
"$sectrix" cut --unit m -o "$work" "$data/box-girder-single-cell.json" >/dev/null
"$sectrix" blend --unit m --count 8 --draw "$work" "$data"/haunched-box-{pier,midspan}.json >/dev/null 2>&1
cp "$work"/cutting_1_*.svg "$images/square-with-a-hole.svg"
cp "$work"/cutting_2_*.svg "$images/overlapping-holes.svg"
cp "$work"/box-girder-single-cell_1_*.svg "$images/box-girder.svg"
cp "$work"/haunched-box-pier-blend_1_along.svg "$images/haunched-box.svg"
python=$(sed -n 's/^Python_EXECUTABLE:[A-Z]*=//p' "$1/CMakeCache.txt")
PYTHONPATH=$1/python "$python" "$images/../../python/examples/girder_along_span.py" "$data"/haunched-box-{pier,midspan}.json \
    "$images/girder-along-span.svg" "$work/girder.stl" >/dev/null
