#!/usr/bin/env bash
# Draws the pictures of the documentation anew. Argument: the build folder.
set -euo pipefail
images=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$1/examples/section_report/section_report" --out "$work" "$images/cutting.json" \
    --unit m "$images/../../examples/data/box-girder-single-cell.json" \
    --blend 8 "$images/../../examples/data/haunched-box-pier.json" \
    "$images/../../examples/data/haunched-box-midspan.json" >/dev/null
cp "$work"/cutting_1_*.svg "$images/square-with-a-hole.svg"
cp "$work"/cutting_2_*.svg "$images/overlapping-holes.svg"
cp "$work"/box-girder-single-cell_1_*.svg "$images/box-girder.svg"
cp "$work"/haunched-box-pier-blend_1_along.svg "$images/haunched-box.svg"
