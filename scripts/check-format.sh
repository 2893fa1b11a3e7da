#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Fails if a source is not laid out as .clang-format says. To mend it: clang-format -i <file>
set -euo pipefail
cd "$(dirname "$0")/.."

find corvane apps bench docs tests \( -name '*.h' -o -name '*.cpp' \) -print0 |
    xargs -0 clang-format --dry-run -Werror
