#!/usr/bin/env bash
# Draws the pictures of the documentation anew. Argument: the build folder.
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
