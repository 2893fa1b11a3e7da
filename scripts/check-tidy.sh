#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Runs clang-tidy with .clang-tidy over sources of the release build.
#
#   scripts/check-tidy.sh [folder or file...]   everything unless some are named
set -euo pipefail
cd "$(dirname "$0")/.."

# Generated sources (moc) exist only after a build.
scripts/build.sh release

[ $# -gt 0 ] || set -- apps bench corvane docs tests
database=build/release/compile_commands.json
sources=()
for wanted in "$@"; do
    mapfile -t found < <(sed -n "s|^ *\"file\": \"$PWD/\($wanted\(/.*\)\{0,1\}\)\",\{0,1\}\$|\1|p" \
        "$database" | sort -u)
    sources+=("${found[@]}")
done
if [ ${#sources[@]} -eq 0 ]; then
    echo "check-tidy: nothing in $database matches: $*" >&2
    exit 1
fi

echo "check-tidy: ${#sources[@]} sources"
# The compile commands are GCC's, and clang does not know all of its warnings.
printf '%s\0' "${sources[@]}" |
    xargs -0 -n 1 -P "$(nproc)" \
        clang-tidy -p build/release --quiet --extra-arg=-Wno-unknown-warning-option
