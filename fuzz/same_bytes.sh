#!/usr/bin/env bash
# The same answers, to the last bit, whatever has compiled the library: builds all of it with GCC and Clang, without
# and with optimisation, runs the corpora and the sample documents through everything, and compares the hashes.
set -euo pipefail
cd "$(dirname "$0")/.."
folder=build/same-bytes
mkdir -p $folder
fuzz/make_seeds.py tests/data $folder/seeds

# One source of all sources compiles several times as fast as each on its own. The tools are left out: test.sh compares
# what two builds of these say.
mapfile -t sources < <(find src/sectrix -name '*.cpp' | sort)
for source in fuzz/*.cpp; do
    case $source in fuzz/fuzzer_main.cpp | fuzz/time_test.cpp | fuzz/out_of_memory_test.cpp | fuzz/checks.cpp) ;; *) sources+=("$source") ;; esac
done
printf '#include "../../%s"\n' "${sources[@]}" >$folder/all.cpp

one() {
    local compiler=$1 level=$2 program=$folder/$1$2
    "$compiler" -std=c++17 "$level" -ffp-contract=off -Isrc -Itests $folder/all.cpp -o "$program" -lsimdjson -lsqlite3 -pthread
    {
        "$program" 1 all fuzz/corpus $folder/seeds
        for target in section_document extrusion; do "$program" 1 $target examples/data; done
        for target in cutting alignment mesh; do "$program" 1 $target --random 500; done
    } | sha256sum | sed "s/-/$compiler $level/"
}
export -f one
export folder
printf '%s\n' {g++,clang++}' '{-O0,-O2,-O3} | xargs -P 2 -L 1 bash -euo pipefail -c 'one "$@"' one | tee $folder/hashes
if [ "$(wc -l <$folder/hashes)" != 6 ] || [ "$(cut -d ' ' -f 1 $folder/hashes | sort -u | wc -l)" != 1 ]; then
    echo "the answers differ"
    exit 1
fi
