#!/usr/bin/env bash
# Compares what an example prints with what is expected: run.sh EXPECTED PROGRAM ARGUMENT...
# A model database is given as the SQL that makes it.
set -euo pipefail
expected=$1 program=$2
shift 2
work=$(mktemp -d)
trap 'rm -r "$work"' EXIT
arguments=()
for argument; do
    case $argument in
    *.sql)
        sqlite3 "$work/model.db" <"$argument"
        arguments+=("$work/model.db")
        ;;
    *) arguments+=("$argument") ;;
    esac
done
"$program" "${arguments[@]}" >"$work/printed" 2>&1 || echo "exit status $?" >>"$work/printed"
diff "$expected" "$work/printed"
