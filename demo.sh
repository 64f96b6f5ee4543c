#!/usr/bin/env bash
# Shows what the library does: installs what is missing, builds the example hosts and runs each on sample data.
# The results lie under build/demo/.
set -euo pipefail
cd "$(dirname "$0")"
cmake/install-packages.sh
# The same compiler as in test.sh: another one would have CMake throw the shared build folder's settings away.
cmake --preset release -DCMAKE_CXX_COMPILER=g++ >/dev/null
rm -rf build/demo

echo "== sections: documents of outlines, cut into convex loops"
cmake --build --preset release --target section_report
examples/section_report/demo.sh build/release build/demo/sections

echo "== meshes: imported models with near positions merged, and extrusions"
cmake --build --preset release --target mesh_report
examples/mesh_report/demo.sh build/release build/demo/meshes

echo "== records: geometry stored in a model database"
cmake --build --preset release --target record_report
examples/record_report/demo.sh build/release build/demo/records

cp -r examples/data build/demo/data
rm build/demo/data/README.md build/demo/data/make_*.py
examples/make_index.py build/demo
echo "all of it: build/demo/index.html"
