#!/usr/bin/env bash
# Builds and tests the project: installs what is missing, checks the formatting, runs all tests as a release with GCC
# and under the sanitizers with Clang, builds the benchmarks, checks the sources, runs the hostile corpus on four
# threads under the thread sanitizer, compares the answers of six builds to the last bit, and looks ten seconds a target
# for input that breaks anything.
set -euo pipefail
cd "$(dirname "$0")"
cmake/install-packages.sh

echo "== formatting"
git ls-files -z -co --exclude-standard -- '*.h' '*.cpp' | xargs -0 clang-format --dry-run --Werror

for preset in release check; do
    echo "== $preset"
    options=(-DORL_SECTRIX_PYTHON=ON -DPython_EXECUTABLE=/usr/bin/python3)
    [ $preset = check ] || options+=(-DCMAKE_CXX_COMPILER=g++ -DORL_SECTRIX_STRICT=ON)
    cmake --preset $preset "${options[@]}" >/dev/null
    cmake --build --preset $preset
    ctest --preset $preset -j "$(nproc)"
done

echo "== bench"
cmake --preset bench -DCMAKE_CXX_COMPILER=g++ -DORL_SECTRIX_STRICT=ON >/dev/null
cmake --build --preset bench

echo "== clang-tidy"
git ls-files -z -- 'src/*.cpp' 'command/*.cpp' 'examples/*.cpp' | xargs -0 -n 2 -P "$(nproc)" clang-tidy -p build/check --quiet

echo "== threads"
cmake --preset threads >/dev/null
cmake --build --preset threads --target sectrix_replay
build/threads/fuzz/sectrix_replay 4 all fuzz/corpus | tail -n 1

echo "== same bytes"
fuzz/same_bytes.sh
for preset in release check; do build/$preset/fuzz/sectrix_replay 1 checks --random 3000 >build/checks-$preset; done
cmp build/checks-release build/checks-check

echo "== fuzzing"
fuzz/run.sh 10
