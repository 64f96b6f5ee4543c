#!/usr/bin/env bash
# Runs record_report on a model database in each of the two schemas. Arguments: the build folder, the folder for tables.
set -euo pipefail
data=$(cd "$(dirname "$0")/../data" && pwd)
mkdir -p "$2"
for schema in definitions direct; do
    echo "model-$schema.sql"
    sqlite3 "$2/model-$schema.db" <"$data/model-$schema.sql"
    "$1/examples/record_report/record_report" "$2/model-$schema.db" "$2/model-$schema.txt"
done
