#!/usr/bin/env bash
# Hashes what the library says to the corpora, the documents of the test cases, the samples and random input:
# fuzz/answers.sh KINDS FOLDER PROGRAM..., where PROGRAM... is how sectrix_replay is called on this platform, and FOLDER
# is one to work in. A line is a name and a hash. KINDS is what the program holds, a list with commas:
#   core     what needs no interface, and the documents that every parser takes
#   bundled  what only the bundled interfaces answer: text that parsers differ about, and databases
#   tools    what the checks say
set -euo pipefail
kinds=,$1, folder=$2 program=("${@:3}")
cd "$(dirname "$0")/.."
mkdir -p "$folder"
fuzz/make_seeds.py tests/data "$folder/seeds"

answer() { # name, the replay's arguments behind the number of threads
    # Windows ends lines with two characters and writes paths with a slash of its own.
    "${program[@]}" 1 "${@:2}" | tr -d '\r' | tr '\\' / | sed "s|$folder/||" >"$folder/answers" || { echo "no answers: $1" >&2; exit 1; }
    echo "$1 $(sha256sum <"$folder/answers" | cut -c 1-16)"
}

if [[ $kinds = *,core,* ]]; then
    for target in section_document extrusion; do
        answer "core/$target" $target "$folder/seeds/$target" examples/data
    done
    for target in cutting alignment mesh; do
        answer "core/$target" $target fuzz/corpus/$target
        answer "core/$target-random" $target --random 500
    done
    answer core/text text fuzz/corpus/text
fi
if [[ $kinds = *,bundled,* ]]; then
    for target in section_document extrusion database; do answer "bundled/$target" $target fuzz/corpus/$target; done
fi
if [[ $kinds = *,tools,* ]]; then
    answer tools/checks checks fuzz/corpus/{checks,section_document,extrusion} "$folder"/seeds/checks
    answer tools/checks-random checks --random 3000
fi
