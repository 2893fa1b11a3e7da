#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Lays out icons with their names on one sheet: on light and on dark ground, at 16, 32 and 64
# pixels. scripts/render-icons.sh calls it.
#
#   icon-sheet.sh <folder of PNG files> <sheet to write>
#
# It takes rsvg-convert (Debian package librsvg2-bin).
set -euo pipefail
folder=$(realpath "$1")
sheet=$2

columns=4
cell_width=400
cell_height=80
light=#ffffff
dark=#1e1e1e

icons=("$folder"/*.png)
rows=$(((${#icons[@]} + columns - 1) / columns))

show() { # <png> <x> <y> <size>
    # Files beside the sheet's source are all that librsvg reads, so the image goes inside.
    printf '<image x="%d" y="%d" width="%d" height="%d" href="data:image/png;base64,%s"/>\n' \
        "$2" "$3" "$4" "$4" "$(base64 --wrap=0 "$1")"
}

{
    printf '<svg xmlns="http://www.w3.org/2000/svg" width="%d" height="%d">\n' \
        $((columns * cell_width)) $((rows * cell_height))
    printf '<rect width="100%%" height="100%%" fill="%s"/>\n' "$light"
    for i in "${!icons[@]}"; do
        png=${icons[i]}
        x=$((i / rows * cell_width))
        y=$((i % rows * cell_height))
        printf '<text x="%d" y="%d" font-family="sans-serif" font-size="13">%s</text>\n' \
            $((x + 8)) $((y + 44)) "$(basename "$png" .png | sed 's/^scl_//')"
        printf '<rect x="%d" y="%d" width="146" height="%d" fill="%s"/>\n' \
            $((x + 250)) "$y" "$cell_height" "$dark"
        for left in $((x + 104)) $((x + 254)); do
            show "$png" "$left" $((y + 32)) 16
            show "$png" $((left + 24)) $((y + 24)) 32
            show "$png" $((left + 68)) $((y + 8)) 64
        done
    done
    printf '</svg>\n'
} | rsvg-convert --output "$sheet"
