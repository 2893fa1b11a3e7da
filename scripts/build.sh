#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Configures and builds one preset of CMakePresets.json into build/<preset>.
#
#   scripts/build.sh <preset> [target...]
set -euo pipefail
cd "$(dirname "$0")/.."

preset=$1
shift
if command -v ccache >/dev/null; then
    export CMAKE_CXX_COMPILER_LAUNCHER=${CMAKE_CXX_COMPILER_LAUNCHER-ccache}
fi
cmake --preset "$preset" --log-level=WARNING
cmake --build --preset "$preset" ${1:+--target "$@"}
