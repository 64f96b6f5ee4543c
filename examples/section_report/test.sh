#!/usr/bin/env bash
# Runs the section report on the sample documents and on files that it must refuse.
# Arguments: the source folder, the build folder, an empty folder to work in.
set -euo pipefail
. "$(dirname "$0")/../test_common.sh"

writes_samples make_sections.py
table=$("$examples/section_report/demo.sh" "$build" "$work/demo")
# The areas that the girders' makers publish, in square inches.
grep -Eq 'AASHTO Type IV +12 +0 +4 .* 789 +789 +0 +0$' <<<"$table" || fail "area of the AASHTO Type IV girder"
grep -Eq 'PCI BT-72 +14 +0 +4 .* 767 +767 +0 +0$' <<<"$table" || fail "area of the PCI BT-72 girder"
grep -Eq '^  sections +19 +8 +11$' <<<"$table" || fail "count of dropped sections"
# At 4/7 of the way, depth and slab lie 4/7 between those at the pier and at midspan; the other pair lacks a cell and a name.
grep -Eq '^ +0.571 +4.05714 +14.2779 +2 .* 0 +0.485714 +4.05714 ' <<<"$table" || fail "blended box girder"
grep -Eq 'interior loops +2 +1$' <<<"$table" || fail "count of cells that differs"
grep -Eq 'missing in the exterior loop +TipRight$' <<<"$table" || fail "name that is missing"
xmllint --noout "$work"/demo/*.svg || fail "pictures are not XML"
for svg in "$work"/demo/*.svg; do
    grep -q "$(basename "$svg")" "$work/demo/index.html" || fail "$svg is not on the page"
done
# What is written back is a document that the schema takes.
python3 "$source/tests/schemas_test.py" "$source" "$work"/demo/*.json || fail "documents against the schemas"

# Bad files are named, the others are reported on, and text is escaped wherever it goes.
cat >"$work/q&a.json" <<'JSON'
{"Outlines": [[{"name": "<b>&\"'\u0001", "coordinates": [0, 0]}, [1, 0], [1, 1]],
              [{"assemblyPartName": "<i>&\"'\u0001", "loops": [[[0, 1, 2], true]]}]]}
JSON
echo '{"Outlines": [' >"$work/cut-off.json"
refuses 1 section_report --out "$work/bad" "$work/none.json" "$work/cut-off.json" "$work/q&a.json"
grep -q 'none.json: cannot be opened: No such file' "$work/err" || fail "no message for a missing file"
grep -q 'cut-off.json: is not JSON: ' "$work/err" || fail "no message for text that is not JSON"
xmllint --noout "$work"/bad/*.svg || fail "a picture with special characters is not XML"
! grep -q '<[bi]>&' "$work"/bad/*.svg "$work/bad/index.html" || fail "text is not escaped"

refuses 2 section_report --unit m --foo "$work/q&a.json"
grep -q '^section_report: there is no option --foo$' "$work/err" || fail "no message for an option that there is not"
grep -q '^usage: ' "$work/err" || fail "no usage for an option that there is not"
