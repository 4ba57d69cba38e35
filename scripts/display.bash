# shellcheck shell=bash
# SPDX-FileCopyrightText: The Tavenor developers
# SPDX-License-Identifier: MIT
# The program on a virtual display, and pictures of it. Sourced by scripts that run with
# "set -euo pipefail"; they call end_all when they leave.

scratch=$(mktemp -d)
display_pid=
program_pid=

# start_display SIZE: a display of its own (SIZE like 1280x800), taken by everything that is
# started afterwards.
start_display() {
    local number
    mkfifo "$scratch/number"
    # Without -noreset the display would start anew whenever its last client leaves.
    Xvfb -displayfd 3 -screen 0 "$1x24" -nolisten tcp -noreset \
        3>"$scratch/number" 2>"$scratch/display.log" &
    display_pid=$!
    if ! read -r -t 60 number <"$scratch/number"; then
        echo "The virtual display did not start:" >&2
        cat "$scratch/display.log" >&2
        return 1
    fi
    export DISPLAY=":$number" QT_QPA_PLATFORM=xcb
    export XDG_RUNTIME_DIR="${XDG_RUNTIME_DIR:-$scratch}"
    unset WAYLAND_DISPLAY
    # A pointer over the window would light up what lies under it.
    xdotool mousemove "${1%x*}" "${1#*x}"
}

# start_program COMMAND…: runs it in the background.
start_program() {
    "$@" &
    program_pid=$!
}

# until_true SECONDS COMMAND…: repeats the command until it succeeds; fails when the time is
# over or the program has ended.
until_true() {
    local deadline=$((SECONDS + $1))
    shift
    until "$@"; do
        if [ "$SECONDS" -ge "$deadline" ] || ! kill -0 "$program_pid" 2>/dev/null; then
            return 1
        fi
        sleep 0.1
    done
}

# find_window TITLE: prints the program's visible window whose title matches.
find_window() {
    xdotool search --onlyvisible --all --pid "$program_pid" --name "$1" 2>/dev/null |
        head -n 1 | grep .
}

# wait_for_window TITLE: prints it once it is there, for at most a minute.
wait_for_window() {
    until_true 60 find_window "$1" || {
        echo "No window with the title \"$1\" appeared." >&2
        return 1
    }
}

# Succeeds when the picture is the one taken just before, shows more than plain areas, and is
# not the one saved last: what was done since then would not have reached the screen yet.
is_at_rest() {
    local colours
    if [ -e "$scratch/new.png" ]; then
        mv "$scratch/new.png" "$scratch/old.png"
    fi
    # Stripped of its date, a picture of the same window is the same file.
    import "$@" -strip -define png:exclude-chunks=date,time "$scratch/new.png" || return 1
    colours=$(identify -format %k "$scratch/new.png")
    [ "$colours" -gt 16 ] && cmp -s "$scratch/old.png" "$scratch/new.png" &&
        ! cmp -s "$scratch/saved.png" "$scratch/new.png"
}

# take_picture FILE WHAT…: saves as a PNG what import's arguments WHAT name, e.g. "-window ID",
# as soon as it is painted and at rest.
take_picture() {
    local file=$1
    shift
    rm -f "$scratch/old.png" "$scratch/new.png"
    if ! until_true 60 is_at_rest "$@"; then
        echo "Nothing new was painted for $file." >&2
        return 1
    fi
    cp "$scratch/new.png" "$scratch/saved.png"
    mkdir -p "$(dirname "$file")"
    cp "$scratch/new.png" "$file"
}

# end_program: asks it to end; fails when it does not, or not in good order.
end_program() {
    local pid=$program_pid deadline=$((SECONDS + 30))
    program_pid=
    if [ -z "$pid" ]; then
        return
    fi
    kill -TERM "$pid" 2>/dev/null || true
    while kill -0 "$pid" 2>/dev/null; do
        if [ "$SECONDS" -ge "$deadline" ]; then
            echo "The program did not end when asked." >&2
            kill -KILL "$pid"
            break
        fi
        sleep 0.1
    done
    wait "$pid"
}

# end_all: ends whatever still runs and removes the scratch files.
end_all() {
    end_program || true
    if [ -n "$display_pid" ]; then
        kill "$display_pid" 2>/dev/null || true
        wait "$display_pid" 2>/dev/null || true
    fi
    rm -rf "$scratch"
}
