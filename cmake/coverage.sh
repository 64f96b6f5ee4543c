#!/usr/bin/env bash
# Prints which lines of src/ the tests reach: cmake/coverage.sh. The lines that they do not reach are listed by file;
# docs/reliability.md says why each of them stands.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake -S . -B build/coverage -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_COMPILER=g++ -DCMAKE_CXX_FLAGS=--coverage \
    -DORL_SECTRIX_EXAMPLES=OFF >/dev/null
cmake --build build/coverage
find build/coverage -name '*.gcda' -delete
# What only says something about an optimised library is left out.
ctest --test-dir build/coverage -j "$(nproc)" -E '^(hostile_times|hygiene|consumer|api_pages)$' >/dev/null
gcovr --root . --filter src/ --exclude-throw-branches build/coverage
