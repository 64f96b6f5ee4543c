#!/usr/bin/env bash
# Prints which lines of src/ the tests reach: cmake/coverage.sh. docs/reliability.md says why the others stand.
set -euo pipefail
cd "$(dirname "$0")/.."
rm -rf build/coverage # what an earlier state of the sources has left would be counted too
cmake -S . -B build/coverage -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_COMPILER=g++ -DCMAKE_CXX_FLAGS=--coverage \
    -DORL_SECTRIX_EXAMPLES=OFF >/dev/null
cmake --build build/coverage
# What only says something about an optimised library is left out.
ctest --test-dir build/coverage -j "$(nproc)" -E '^(time_test|hygiene|consumer|api_pages)$' >/dev/null
# GCC counts some branches below zero, which gcovr would stop at.
gcovr --root . --filter src/ --gcov-ignore-parse-errors build/coverage
