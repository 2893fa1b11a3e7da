#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Installs the Debian packages that building and testing corvane needs.
#
#   scripts/setup.sh          to build, test and run
#   scripts/setup.sh --checks also the formatter, the linter and what renders the icons
#
# Packages that are there already are left alone; when all are, nothing is run and no network used.
set -euo pipefail

packages=(
    cmake ninja-build g++ binutils
    qt6-base-dev qtbase5-dev
    libxerces-c-dev
)
[ "${1:-}" = --checks ] && packages+=(clang-format clang-tidy librsvg2-bin)

if ! command -v dpkg-query >/dev/null; then
    echo "setup: no dpkg here; this system must provide by itself: ${packages[*]}"
    exit 0
fi

missing=()
for package in "${packages[@]}"; do
    state=$(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$state" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
        echo "setup: run as root: apt-get install --no-install-recommends ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo)
fi

echo "setup: installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get -qq update
"${as_root[@]}" apt-get -qq install -y --no-install-recommends "${missing[@]}" >/dev/null
