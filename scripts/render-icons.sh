#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Renders the icons, corvane/presentation/images/svg/*.svg, to the PNG files that the library
# embeds, and then lays them out in docs/icons.png. Run it after changing an icon; a build uses the
# PNG files as they are and needs none of this.
#
#   scripts/render-icons.sh          renders
#   scripts/render-icons.sh --check  changes nothing, fails if a PNG file is not what would come out
#
# It takes rsvg-convert (Debian package librsvg2-bin). The same version gives the same bytes.
set -euo pipefail
cd "$(dirname "$0")/.."
images=corvane/presentation/images
sheet=docs/icons.png

command -v rsvg-convert >/dev/null || {
    echo "render-icons: rsvg-convert is missing; install librsvg2-bin" >&2
    exit 1
}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

mkdir "$work/images"
for svg in "$images"/svg/*.svg; do
    rsvg-convert --width 64 --height 64 --output "$work/images/$(basename "$svg" .svg).png" "$svg"
done
if [ "${1:-}" = --check ]; then
    diff --recursive --brief --exclude=svg --exclude='*.qrc' "$work/images" "$images"
    exit 0
fi
rm -f "$images"/*.png
cp "$work"/images/*.png "$images/"
scripts/icon-sheet.sh "$images" "$sheet"
echo "render-icons: $(find "$images" -name '*.png' | wc -l) images in $images, all of them in $sheet"
