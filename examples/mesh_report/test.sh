#!/usr/bin/env bash
# Runs the mesh report on the sample models and on files that it must refuse.
# Arguments: the source folder, the build folder, an empty folder to work in.
set -euo pipefail
. "$(dirname "$0")/../test_common.sh"

writes_samples make_meshes.py
report=$("$examples/mesh_report/demo.sh" "$build" "$work/demo")
# In metres the seams of the columns, 0.06 mm wide, are below the tolerance: two columns of eight levels of two triangles.
grep -Eq '^  as imported +5094 +5094 +1698 +0$' <<<"$report" || fail "the pier as imported"
grep -Eq '^  merged +930 +5094 +1698 +32$' <<<"$report" || fail "the pier merged"
grep -q '^  7 faces that are no triangles are left out$' <<<"$report" || fail "the bearing's quads and lines"
[ "$(grep -c '^      profile ' <<<"$report")" = 16 ] || fail "the girder's profiles"
grep -q 'end plane girder-end.json: origin (12, 0, 0.9), .* skew -12$' <<<"$report" || fail "the girder's end plane"
xmllint --noout "$work"/demo/*.svg || fail "pictures are not XML"

# Bad files are named, and the others are reported on.
echo '{"Origin": [0, 0, 0]}' >"$work/plane.json"
echo 'solid' >"$work/cut-off.stl"
refuses 1 mesh_report --out "$work/bad" "$work/none.obj" "$work/cut-off.stl" "$work/plane.json" \
    "$examples/data/bearing.obj"
grep -q 'none.obj: cannot be opened: No such file' "$work/err" || fail "no message for a missing file"
grep -q 'cut-off.stl: cannot be imported: ' "$work/err" || fail "no message for a model that is none"
grep -q 'plane.json: is neither an extrusion nor an end plane behind one' "$work/err" || fail "no message for a plane"
grep -q '^bearing.obj$' "$work/out" || fail "the good file is not reported on"

# An extrusion whose picture cannot be written takes neither the file behind it with it nor, as the last one, the page.
mkdir -p "$work/barred/1-girder.svg" "$work/barred/3-girder.svg"
refuses 1 mesh_report --out "$work/barred" "$examples"/data/{girder.json,bearing.obj,girder.json}
[ "$(grep -c 'girder.svg: cannot be written: ' "$work/err")" = 2 ] || fail "no message for each barred picture"
grep -q '^bearing.obj$' "$work/out" || fail "the file behind a barred picture is not reported on"
[ "$(grep -c 'girder.svg: cannot be written: ' "$work/barred/index.html")" = 2 ] || fail "the page of barred pictures"

# So far off, rounding puts corners out of the planes of their own triangles.
"$build/examples/mesh_report/mesh_report" --out "$work/far" --move 1e15,1e15,1e15 "$examples/data/pier.stl" \
    >/dev/null || fail "a model far off the origin"
refuses 2 mesh_report --scale
