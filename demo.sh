#!/usr/bin/env bash
# Shows what the library does: installs what is missing, builds the command and runs it on sample data.
# The results lie under build/demo/.
set -euo pipefail
cd "$(dirname "$0")"
cmake/install-packages.sh
# The same compiler as in test.sh: another one would have CMake throw the shared build folder's settings away.
cmake --preset release -DCMAKE_CXX_COMPILER=g++ >/dev/null
cmake --build --preset release --target sectrix
rm -rf build/demo
examples/demo.sh build/release build/demo
