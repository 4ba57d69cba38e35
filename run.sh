#!/usr/bin/env bash
# SPDX-FileCopyrightText: The Tavenor developers
# SPDX-License-Identifier: MIT
# Builds the program and starts it on a sample collection, which is made at the first run.
# Without a screen it runs on a virtual display for a moment and leaves a picture of its window.
#
#   XDG_DATA_HOME        the collection lies in $XDG_DATA_HOME/tavenor (default: ~/.local/share)
#   TAVENOR_SCREENSHOT   the picture's file (default: tavenor.png beside the collection)
set -euo pipefail

started_in=$PWD
root=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
readonly started_in root
readonly Program="$root/build/release/app/tavenor"
readonly Title='DB Administration Tool'

has_screen() {
    [ -n "${DISPLAY-}${WAYLAND_DISPLAY-}" ]
}

build() {
    local groups=(build run)
    has_screen || groups+=(display)
    "$root/scripts/install-dependencies" "${groups[@]}"
    cd "$root"
    cmake --preset release
    cmake --build --preset release --target tavenor tavenor-sample
}

# A copy that was killed leaves its mark behind; only a person can tell it from a running one's.
explain_lock() {
    if grep -qs Locked lockDb.dat; then
        echo "Another copy of Tavenor uses $PWD, so this one only reads."
        echo "If no other copy is running (the last one was killed), remove its mark and start again:"
        printf '  rm %q\n' "$PWD/lockDb.dat"
    fi
}

# run_unseen PICTURE: starts the program on a virtual display, takes the picture, ends it.
run_unseen() {
    local picture=$1 window
    # shellcheck source=scripts/display.bash
    source "$root/scripts/display.bash"
    trap end_all EXIT
    trap 'exit 1' INT TERM HUP
    start_display 1366x900
    start_program "$Program"
    window=$(wait_for_window "^$Title")
    take_picture "$picture" -window "$window"
    if ! end_program; then
        echo "The program did not end in good order." >&2
        return 1
    fi
    echo "There is no screen here. A picture of the window: $picture"
}

build

# File names and texts beyond ASCII need a locale that can write them.
if [ "$(locale charmap)" != UTF-8 ]; then
    export LC_ALL=C.UTF-8
fi
folder=${XDG_DATA_HOME:-$HOME/.local/share}/tavenor
mkdir -p "$folder"
"$root/build/release/samples/tavenor-sample" "$folder"
cd "$folder"
explain_lock
if has_screen; then
    exec "$Program"
fi
picture=${TAVENOR_SCREENSHOT:-$PWD/tavenor.png}
case "$picture" in
/*) ;;
*) picture=$started_in/$picture ;;
esac
run_unseen "$picture"
