#!/usr/bin/env bash
# Builds and tests the project: installs what is missing, then runs all tests as a release with GCC and under the
# sanitizers with Clang, and checks formatting and sources.
set -euo pipefail
cd "$(dirname "$0")"
cmake/install-packages.sh

echo "== formatting"
git ls-files -z -co --exclude-standard -- '*.h' '*.cpp' | xargs -0 clang-format --dry-run --Werror

for preset in release check; do
    echo "== $preset"
    options=()
    [ $preset = check ] || options=(-DCMAKE_CXX_COMPILER=g++ -DORL_SECTRIX_STRICT=ON)
    cmake --preset $preset ${options[@]+"${options[@]}"} >/dev/null
    cmake --build --preset $preset
    ctest --preset $preset -j "$(nproc)"
done

echo "== clang-tidy"
git ls-files -z -- 'src/*.cpp' 'examples/*.cpp' | xargs -0 -n 2 -P "$(nproc)" clang-tidy -p build/check --quiet
