#!/usr/bin/env bash
# Runs the command on the sample data and gathers what it made. Arguments: the build folder, the folder for the results.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
PATH=$(cd "$1/command" && pwd):$PATH
mkdir -p "$2"/{sections,blends,solids,models,records}
cp -r "$here/data" "$2/data"
rm "$2"/data/README.md "$2"/data/make_*.py
cd "$2/data"

# Shows a command and what it prints, and keeps both for the page. That a document has faults is no failure.
run() { # part, command
    local status=0
    { echo "$ ${*:2}"; "${@:2}" 2>&1 || status=$?; echo; } | tee -a "../$1/commands.txt"
    [ "$status" -le 1 ]
}

run sections sectrix check --limit 5 bad-elements.json
run sections sectrix cut --unit in -o ../sections i-girders-inches.json box-beam-inches.json pier-cap-inches.json \
    voided-slab-inches.json
run sections sectrix cut --unit m -o ../sections box-girder-single-cell.json box-girder-three-cells.json tunnel-horseshoe.json
run sections sectrix cut --unit m --scale 0.0254 -o ../sections t-girder-deck-inches.json
run sections sectrix cut --unit m --scale 0.001 -o ../sections culvert-millimetres.json
run sections sectrix cut -o ../sections bad-elements.json
run sections sectrix properties --unit in i-girders-inches.json box-beam-inches.json
run blends sectrix blend --unit m --count 8 --draw ../blends haunched-box-pier.json haunched-box-midspan.json
run blends sectrix blend haunched-box-pier.json haunched-box-one-cell.json
for ending in glb stl; do # from midspan, so that the picture shows the deep end
    run solids sectrix solid --from haunched-box-midspan.json --to haunched-box-pier.json --length 57.5 --unit m \
        -o ../solids/haunched-box.$ending --draw ../solids/haunched-box.svg
done
run solids sectrix solid box-girder-three-cells.json --length 40 --radius 60 --superelevation 4 --unit m \
    -o ../solids/curved-box.stl --draw ../solids/curved-box.svg
run models sectrix mesh --scale 0.001 --turn 15 --move 100,50,0 --unit m -o ../models pier.stl
run models sectrix mesh --unit m -o ../models bearing.obj
run models sectrix draw --unit m -o ../models girder.json girder-start.json girder-end.json
for schema in definitions direct; do
    sqlite3 "model-$schema.db" <"model-$schema.sql"
    run records sectrix records -o ../records "model-$schema.db"
done
"$here/make_index.py" ..
echo "all of it: $2/index.html"
