#!/bin/sh
# SPDX-FileCopyrightText: The Tavenor developers
# SPDX-License-Identifier: MIT
# Draws the PNG files of the icons anew from their SVG sources. Needs rsvg-convert (Debian:
# librsvg2-bin). Run it after every change of an SVG file and commit both.
set -eu

root=$(cd "$(dirname "$0")/.." && pwd)
source="$root/resources/svg"
target="$root/resources/png"

# draw SVG SIZE PNG
draw() {
    rsvg-convert --width "$2" --height "$2" --output "$3" "$1"
}

mkdir -p "$target"
for svg in "$source"/*.svg; do
    name=$(basename "$svg" .svg)
    case $name in
    listIcon | generalIcon | filterIcon) size=64 ;; # shown larger than a button's icon
    *) size=32 ;;
    esac
    draw "$svg" "$size" "$target/$name.png"
    draw "$svg" $((size * 2)) "$target/$name@2x.png"
done

# The program's icon in the sizes that desktops ask for.
for size in 16 24 32 48 64 128 256; do
    draw "$source/listIcon.svg" "$size" "$target/listIcon-$size.png"
done

# The table icons of the sample collection.
for svg in "$root"/samples/icons/*.svg; do
    draw "$svg" 128 "${svg%.svg}.png"
done
