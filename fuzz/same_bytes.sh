#!/usr/bin/env bash
# The same answers, to the last bit, whatever has compiled the library: fuzz/same_bytes.sh [COMPILER...] builds all of it
# with GCC and Clang, or with these, without and with optimisation, and compares the hashes of what they say. They stay
# in build/same-bytes, a file a build.
set -euo pipefail
cd "$(dirname "$0")/.."
[ $# -gt 0 ] || set -- g++ clang++
folder=build/same-bytes
rm -rf $folder
mkdir -p $folder

# One source of all sources compiles several times as fast as each on its own. The tools are left out: test.sh compares
# what two builds of these say.
mapfile -t sources < <(find src/sectrix -name '*.cpp' | sort)
for source in fuzz/*.cpp; do
    case $source in fuzz/fuzzer_main.cpp | fuzz/time_test.cpp | fuzz/out_of_memory_test.cpp | fuzz/checks.cpp) ;; *) sources+=("$source") ;; esac
done
printf '#include "../../%s"\n' "${sources[@]}" >$folder/all.cpp

one() {
    local name=$1$2
    "$1" -std=c++17 "$2" -ffp-contract=off -Isrc -Itests $folder/all.cpp -o $folder/"$name" -lsimdjson -lsqlite3 -pthread
    fuzz/answers.sh core,bundled $folder/"$name".work $folder/"$name" >$folder/"$name".answers
}
export -f one
export folder
for compiler; do printf "$compiler %s\n" -O0 -O2 -O3; done | xargs -P 2 -L 1 bash -euo pipefail -c 'one "$@"' one
sha256sum $folder/*.answers | tee $folder/hashes
if [ "$(wc -l <$folder/hashes)" != $((3 * $#)) ] || [ "$(cut -d ' ' -f 1 $folder/hashes | sort -u | wc -l)" != 1 ]; then
    echo "the answers differ"
    exit 1
fi
