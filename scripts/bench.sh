#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Builds the benchmarks, generates stations under build/ and prints all tables.
# docs/benchmarks.md tells what the figures mean.
#
#   scripts/bench.sh [--quick] [--rounds N] [--processor-time]
#
#   --quick            stations of 2 and 20 MB in place of 10 and 100
#   --rounds N         rounds to take the median of
#   --processor-time   for a machine that is busy otherwise
set -euo pipefail
cd "$(dirname "$0")/.."

sizes=(10 100)
options=(--schema samples/SCL.xsd)
while [ $# -gt 0 ]; do
    case "$1" in
    --quick) sizes=(2 20) ;;
    --processor-time) options+=(--processor-time) ;;
    --rounds)
        options+=(--rounds "${2:?--rounds needs a number}")
        shift
        ;;
    *)
        echo "usage: scripts/bench.sh [--quick] [--rounds N] [--processor-time]" >&2
        exit 2
        ;;
    esac
    shift
done

scripts/build.sh bench

bin=build/bench/bin
mkdir -p build/stations
files=()
for size in "${sizes[@]}"; do
    file=build/stations/station-$size.scd
    "$bin/corvane-generate" --megabytes "$size" -o "$file"
    files+=("$file")
done

for program in load save search binary references crc addresses edits peers; do
    "$bin/corvane-bench-$program" "${options[@]}" "${files[@]}"
done
