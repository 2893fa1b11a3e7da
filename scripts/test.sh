#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Builds everything and runs the whole test suite. The output ends with CTest's summary.
#
#   scripts/test.sh [preset]   release (Qt 6) unless another test preset is named: debug, qt5,
#                              sanitize
set -euo pipefail
cd "$(dirname "$0")/.."

preset=${1:-release}
scripts/setup.sh
scripts/build.sh "$preset"
ctest --preset "$preset" --parallel "$(nproc)"
