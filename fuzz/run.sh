#!/usr/bin/env bash
# Looks for inputs that break the library: fuzz/run.sh SECONDS [target...]
# Runs each target (by default all of them, one after the other) for that many seconds, and stops at the first finding
# with the input saved in build/fuzz-findings. What a run learns stays in build/fuzz-corpus for the next one. A finding
# that is mended belongs into fuzz/corpus/<target>, under a name that says what it is.
set -euo pipefail
seconds=${1:?usage: fuzz/run.sh SECONDS [target...]}
shift
cd "$(dirname "$0")/.."
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz

[ $# -gt 0 ] || set -- $(find fuzz/corpus -mindepth 1 -type d -printf '%f\n' | sort)
mkdir -p build/fuzz-findings
fuzz/make_seeds.py tests/data build/fuzz-seeds
for target; do
    learned=build/fuzz-corpus/$target
    log=build/fuzz-$target.log
    mkdir -p "$learned"
    seeds=("fuzz/corpus/$target")
    [ ! -d build/fuzz-seeds/"$target" ] || seeds+=(build/fuzz-seeds/"$target")
    options=(-max_total_time="$seconds" -max_len=4096 -timeout=20 -rss_limit_mb=2048 -print_final_stats=1
             -artifact_prefix="build/fuzz-findings/$target-")
    case $target in section_document | extrusion | checks) options+=(-dict=fuzz/json.dict) ;; esac
    if ! build/fuzz/fuzz/fuzz_"$target" "${options[@]}" "$learned" "${seeds[@]}" >"$log" 2>&1; then
        tail -n 40 "$log"
        echo "$target: a finding, see build/fuzz-findings"
        exit 1
    fi
    echo "$target: $(grep -oE 'number_of_executed_units: *[0-9]+' "$log" | grep -oE '[0-9]+') inputs, no finding"
done
