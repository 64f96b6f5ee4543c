#!/usr/bin/env bash
# Builds and tests the project for each platform in cmake/platforms/ on a Debian 12 machine, and compares what all of them
# say to the last bit: cmake/platforms.sh [NAME...], without names for all. Installs what is missing. Prints a table,
# and fails where a test fails or a hash differs. Works in build/platforms/NAME, which has the log.
#
# A platform NAME is cmake/platforms/NAME.sh, with its packages in the section [NAME] of debian-packages.txt. That file is
# read by bash in the project's folder, finds the variables $name, $folder (build/platforms/NAME, empty), $prefix
# (for what is built from source) and may set
#
#   options  an array: what CMake is told, besides the build type, for all that is built for the platform
#   runner   an array: the words that go before a program of the platform
#   program  of the replay; by default where the build puts it
#   kinds    which answers it has, as fuzz/answers.sh takes them; by default all
#
# and may define functions, which are called in this order around the build, the tests and the answers:
#
#   prepare  gets what the platform needs and no package has; `build_into_prefix SOURCE OPTION...` helps
#   finish   does what is to be done behind all others; further answers go into files $folder/*.answers
set -euo pipefail
cd "$(dirname "$0")/.."
if [ $# = 0 ]; then
    for file in cmake/platforms/*.sh; do set -- "$@" "$(basename "$file" .sh)"; done
fi
results=build/platforms
mkdir -p $results

build_into_prefix() { # source folder, CMake options
    cmake -S "$1" -B "$folder/$(basename "$1")" -G Ninja --install-prefix "$PWD/$prefix" -DCMAKE_BUILD_TYPE=Release \
        "${options[@]}" "${@:2}"
    cmake --build "$folder/$(basename "$1")"
    cmake --install "$folder/$(basename "$1")"
}

prepare() { :; }
finish() { :; }

platform() { # name
    local name=$1 folder=$results/$1 prefix=$results/$1/prefix options=() runner=() kinds=core,bundled,tools
    local program=$folder/build/fuzz/sectrix_replay
    cmake/install-packages.sh "$name"
    # shellcheck source=/dev/null
    . "cmake/platforms/$name.sh"
    prepare
    cmake -S . -B "$folder/build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DORL_SECTRIX_STRICT=ON \
        -DCMAKE_PREFIX_PATH="$PWD/$prefix" "${options[@]}"
    cmake --build "$folder/build"
    ctest --test-dir "$folder/build" -j "$(nproc)" --output-on-failure --no-tests=error | tee "$folder/tests"
    fuzz/answers.sh "$kinds" "$folder/work" "${runner[@]}" "$program" >"$folder/build.answers"
    finish
}

hash_of() { # name, kind
    cat "$results/$1"/*.answers 2>/dev/null | grep "^$2/" | sort -u | sha256sum | cut -c 1-16
}

failed=()
for name; do
    rm -rf "${results:?}/$name"
    mkdir "$results/$name"
    echo "== $name"
    begin=$SECONDS
    # Not in a condition, where bash would go on behind a command that fails.
    set +e
    (set -e; platform "$name") >"$results/$name/log" 2>&1
    status=$?
    set -e
    echo $((SECONDS - begin)) >"$results/$name/seconds"
    [ $status = 0 ] || { failed+=("$name"); tail -n 40 "$results/$name/log"; }
done

printf '\n%-10s %6s %8s  %-16s  %-16s  %-16s\n' platform tests seconds core bundled tools
for name; do
    tests=$(sed -nE 's/.* tests failed out of ([0-9]+)/\1/p' "$results/$name/tests" 2>/dev/null || true)
    printf '%-10s %6s %8s' "$name" "${tests:--}" "$(cat "$results/$name/seconds")"
    for kind in core bundled tools; do
        if grep -qs "^$kind/" "$results/$name"/*.answers; then printf '  %s' "$(hash_of "$name" $kind)"; else printf '  %-16s' -; fi
    done
    echo
done

# Each answer has one hash, in whichever builds it was asked for.
for name; do cat "$results/$name"/*.answers 2>/dev/null || true; done | sort -u >$results/answers
different=$(cut -d ' ' -f 1 $results/answers | uniq -d)
if [ "$different" ]; then
    echo "answers that differ:" $different
    for answer in $different; do
        for name; do grep -H "^$answer " "$results/$name"/*.answers || true; done
    done
fi
[ ${#failed[@]} = 0 ] || echo "failed: ${failed[*]}"
[ -z "$different" ] && [ ${#failed[@]} = 0 ]
