#!/usr/bin/env bash
# SPDX-FileCopyrightText: The Tavenor developers
# SPDX-License-Identifier: MIT
# Takes pictures of the program's pages on a fresh sample collection, driven by the keyboard.
#
# Usage: scripts/screenshots.sh [--scale FACTOR] [--dark] [FOLDER]    default: screenshots
#   --scale FACTOR   as on a dense screen, e.g. 2
#   --dark           with the colours of a dark desktop
set -euo pipefail
root=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/..
root=$(cd "$root" && pwd)
# shellcheck source=scripts/display.bash
source "$root/scripts/display.bash"

readonly Title='DB Administration Tool'
scale=1
dark=no
pictures=screenshots

read_arguments() {
    while [ "$#" -gt 0 ]; do
        case "$1" in
        --scale)
            scale=${2?--scale needs a factor}
            shift
            ;;
        --dark) dark=yes ;;
        -*)
            echo "Usage: scripts/screenshots.sh [--scale FACTOR] [--dark] [FOLDER]" >&2
            return 2
            ;;
        *) pictures=$1 ;;
        esac
        shift
    done
    mkdir -p "$pictures"
    pictures=$(cd "$pictures" && pwd)
}

build() {
    "$root/scripts/install-dependencies" build run screenshots
    cd "$root"
    cmake --preset release
    cmake --build --preset release --target tavenor tavenor-sample
}

# A screen on which the window has its full size at any scale, with a window manager for the
# frames and the focus of dialogs.
start_desktop() {
    local size
    size=$(awk -v scale="$scale" 'BEGIN { printf "%dx%d", 1366 * scale, 900 * scale }')
    start_display "$size"
    export LC_ALL=C.UTF-8 QT_SCALE_FACTOR=$scale XDG_CONFIG_HOME="$scratch/config"
    openbox 2>/dev/null &
    manager_pid=$!
    until xdotool get_desktop >/dev/null 2>&1; do
        kill -0 "$manager_pid"
        sleep 0.1
    done
}

# Stands for a desktop whose colours are dark: the toolkit takes them from the GTK theme or
# the platform's settings, of which a virtual display has none.
dark_colours() {
    cat <<'STYLE'
STYLE
}
