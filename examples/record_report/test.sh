#!/usr/bin/env bash
# Runs the record report on a model database in each schema and on one that it must refuse.
# Arguments: the source folder, the build folder, an empty folder to work in.
set -euo pipefail
. "$(dirname "$0")/../test_common.sh"

# By either path the data is the same. A definition, or data, that is missing leaves its row empty and ends nothing.
cat >"$work/expected" <<'TEXT'
model-definitions.sql
  table     key                           path        bytes  begins with
  geometry  Pier 0, footing               definition   3275  400 85 1 0.11 ORL_Sectrix 8 ACIS
  geometry  Pier 1, stem                  definition   3349  400 85 1 0.11 ORL_Sectrix 8 ACIS
  geometry  Widerlager Süd 0, not stored  definition      0
  mesh      1, Footing of pier 1          definition    158  o footing.v -2 -1.5 0.v 2 -1.5 0
  mesh      2, Fahrbahnplatte, Überbau    definition    176  ...................@...@.......@
model-direct.sql
  table     key                           path    bytes  begins with
  geometry  Pier 0, footing               direct   3275  400 85 1 0.11 ORL_Sectrix 8 ACIS
  geometry  Pier 1, stem                  direct   3349  400 85 1 0.11 ORL_Sectrix 8 ACIS
  geometry  Widerlager Süd 0, not stored  direct      0
  mesh      1, Footing of pier 1          direct    158  o footing.v -2 -1.5 0.v 2 -1.5 0
  mesh      2, Fahrbahnplatte, Überbau    direct    176  ...................@...@.......@
TEXT
"$examples/record_report/demo.sh" "$build" "$work/demo" | diff "$work/expected" - || fail "what is printed"
cat "$work"/demo/model-{definitions,direct}.txt | diff <(grep -v '^model' "$work/expected") - || fail "what is written"

echo 'no database, but long enough for the header of one' >"$work/none.db"
refuses 1 record_report "$work/none.db"
grep -q 'none.db: file is not a database' "$work/err" || fail "no message for a file that is no database"
refuses 2 record_report
