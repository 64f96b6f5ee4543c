#!/usr/bin/env bash
# What the tests of the example hosts begin with; they source it, and pass it their arguments: the source folder, the
# build folder, a folder to work in, which is emptied.
source=$1 build=$2 work=$3
examples=$source/examples
rm -rf "$work" && mkdir -p "$work"
fail() { echo "FAILED: $1"; exit 1; }

# Runs a host on files that it must refuse, with its streams going to $work/out and $work/err.
refuses() { # exit code, host, its arguments
    local status=0
    "$build/examples/$2/$2" "${@:3}" >"$work/out" 2>"$work/err" || status=$?
    [ "$status" = "$1" ] || fail "exit status $status instead of $1 for $2 ${*:3}"
}

# Sample data is what its script writes, to the last byte.
writes_samples() { # script
    mkdir "$work/data"
    python3 "$examples/data/$1" "$work/data"
    for file in "$work"/data/*; do
        cmp "$file" "$examples/data/${file##*/}" || fail "$1 does not write the committed ${file##*/}"
    done
}
