#!/usr/bin/env bash
# SPDX-FileCopyrightText: The Tavenor developers
# SPDX-License-Identifier: MIT
# Takes pictures of the program's pages and dialogs on a fresh sample collection.
#
# Usage: scripts/screenshots.sh [OPTION…] [FOLDER]    default: screenshots
#   --scale FACTOR        as on a dense screen, e.g. 2
#   --dark                with the colours of a dark desktop
#   --size WIDTHxHEIGHT   of the window, instead of its own
#   --screen WIDTHxHEIGHT of the screen; the window takes its first size on it
#   --built FOLDER        takes the programs of a build folder instead of building a release
#   --only CHAPTERS       some of the chapters below, e.g. "browsing entry"
set -euo pipefail
root=$(cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.." && pwd)
readonly root
# shellcheck source=scripts/display.bash
source "$root/scripts/display.bash"

readonly Title='DB Administration Tool'
readonly collection=$scratch/collection
scale=1
colours=light
size=
screen=1366x900
pictures=screenshots
built=
chapters='browsing entry filtering calculating following exporting designing menus dialogs first_start modes'
window=
area=
moments=

read_arguments() {
    while [ "$#" -gt 0 ]; do
        case "$1" in
        --scale)
            scale=${2?--scale needs a factor}
            shift
            ;;
        --dark) colours=dark ;;
        --size)
            size=${2?--size needs a width and a height}
            shift
            ;;
        --screen)
            screen=${2?--screen needs a width and a height}
            shift
            ;;
        --built)
            built=$(cd "${2?--built needs a folder}" && pwd)
            shift
            ;;
        --only)
            chapters=${2?--only needs the names of chapters}
            shift
            ;;
        -*)
            echo "Usage: scripts/screenshots.sh [OPTION…] [FOLDER]; the options stand at the top of the script." >&2
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
    if [ -n "$built" ]; then
        return
    fi
    built=$root/build/release
    "$root/scripts/install-dependencies" build run screenshots
    cd "$root"
    cmake --preset release
    cmake --build --preset release --target tavenor tavenor-sample
}

scaled() {
    awk -v pixels="$1" -v scale="$scale" 'BEGIN { printf "%d", pixels * scale }'
}

# The toolkit reads a desktop's settings only where it knows the desktop; of those it reads
# without further packages, this is the one that has files for them. A cursor that does not
# blink makes pictures of editors come out alike.
write_desktop_settings() {
    export XDG_CONFIG_HOME=$scratch/config XDG_CURRENT_DESKTOP=KDE KDE_SESSION_VERSION=5
    mkdir -p "$XDG_CONFIG_HOME"
    {
        printf '%s\n' '[General]' 'font=DejaVu Sans,9,-1,5,50,0,0,0,0,0' \
            '[KDE]' 'CursorBlinkRate=0'
        "${colours}_colours"
    } >"$XDG_CONFIG_HOME/kdeglobals"
}

light_colours() {
    cat <<'COLOURS'
[Colors:Window]
BackgroundNormal=239,239,239
ForegroundNormal=0,0,0
[Colors:View]
BackgroundNormal=255,255,255
BackgroundAlternate=247,247,247
ForegroundNormal=0,0,0
ForegroundInactive=120,120,120
ForegroundLink=0,0,255
[Colors:Button]
BackgroundNormal=239,239,239
ForegroundNormal=0,0,0
[Colors:Selection]
BackgroundNormal=48,140,198
ForegroundNormal=255,255,255
[Colors:Tooltip]
BackgroundNormal=255,255,220
ForegroundNormal=0,0,0
COLOURS
}

dark_colours() {
    cat <<'COLOURS'
[Colors:Window]
BackgroundNormal=53,53,53
ForegroundNormal=240,240,240
[Colors:View]
BackgroundNormal=35,35,35
BackgroundAlternate=45,45,45
ForegroundNormal=240,240,240
ForegroundInactive=160,160,160
ForegroundLink=110,170,240
[Colors:Button]
BackgroundNormal=60,60,60
ForegroundNormal=240,240,240
[Colors:Selection]
BackgroundNormal=48,110,180
ForegroundNormal=255,255,255
[Colors:Tooltip]
BackgroundNormal=60,60,60
ForegroundNormal=240,240,240
COLOURS
}

# A screen that the window fits on at its full size, and a window manager, which gives dialogs
# their frames and the keyboard.
start_desktop() {
    local manager
    start_display "$(scaled "${screen%x*}")x$(scaled "${screen#*x}")"
    export LC_ALL=C.UTF-8 QT_SCALE_FACTOR=$scale
    write_desktop_settings
    openbox 2>/dev/null &
    manager=$!
    until xdotool get_desktop >/dev/null 2>&1; do
        kill -0 "$manager"
        sleep 0.1
    done
}

# start [NAME]: begins with the program's first page, and takes its picture when given a name.
start() {
    cd "$collection"
    start_program "$built/app/tavenor"
    window=$(wait_for_window "^$Title")
    xdotool windowactivate --sync "$window"
    if [ -n "$size" ]; then
        xdotool windowsize --sync "$window" "$(scaled "${size%x*}")" "$(scaled "${size#*x}")"
    fi
    # Asking for the window's place would count its frame twice; a pointer on its corner tells.
    xdotool mousemove --window "$window" 0 0
    area=$(xdotool getwindowgeometry --shell "$window" getmouselocation --shell |
        awk -F= '{ value[$1] = $2 } END { print value["WIDTH"] "x" value["HEIGHT"] "+" value["X"] "+" value["Y"] }')
    rest_pointer
    rm -f "$scratch/saved.png"
    if [ "$#" -eq 1 ]; then
        shot "$1"
    else
        settle
    fi
    moments=0
    until_true 60 has_keyboard
}

# Succeeds when keys go to the program's window and went there some moments before. On a busy
# machine its own last call for the keyboard comes late, and so does what the window manager
# makes of ours: either takes the keyboard away for a moment, and keys that are sent then are lost.
has_keyboard() {
    if [ "$(xdotool getwindowfocus)" = "$window" ]; then
        moments=$((moments + 1))
    else
        moments=0
        xdotool windowactivate "$window"
    fi
    [ "$moments" -ge 3 ]
}

stop() {
    end_program
}

rest_pointer() {
    xdotool mousemove "$(scaled "${screen%x*}")" "$(scaled "${screen#*x}")"
}

# settle [FILE]: waits until the last step has reached the screen, where it must change
# something. Every step that is not followed by shot is followed by this, because keys that
# come before a page is there go to the one before.
settle() {
    take_picture "${1-$scratch/settled.png}" -window root -crop "$area" +repage
}

# shot NAME: saves what is then seen where the window stands, dialogs over it included.
shot() {
    settle "$pictures/$1.png"
    echo "$pictures/$1.png"
}

# key KEY…: presses keys, named as xdotool names them.
key() {
    xdotool key --clearmodifiers "$@"
}

# write TEXT: types it.
write() {
    xdotool type --clearmodifiers "$1"
}

# times COUNT COMMAND…: repeats it.
times() {
    local left=$1
    shift
    for (( ; left > 0; left--)); do
        "$@"
    done
}

# place PIXELS LENGTH: a place along a side of the window that is so long on the screen, from
# pixels at scale 1; negative ones are counted from its end.
place() {
    local from_start
    from_start=$(scaled "$1")
    echo $((from_start < 0 ? $2 + from_start : from_start))
}

# click X Y: at a place of the window. For what no key reaches.
click() {
    press_button 1 "$1" "$2"
}

# menu_at X Y: opens the menu of what is seen there.
menu_at() {
    press_button 3 "$1" "$2"
}

press_button() {
    local extent=${area%%+*}
    xdotool mousemove --window "$window" "$(place "$2" "${extent%x*}")" \
        "$(place "$3" "${extent#*x}")" click "$1"
    rest_pointer
}

# options_menu KEY…: opens the menu "Opzioni" on its first entry and goes on with the keys;
# entries that are switched off are passed over. The Alt key would do nothing when the window
# got the keyboard anew before it was released.
options_menu() {
    click 70 10
    key Down "$@"
}

# file_menu KEY…: the same for the menu "File".
file_menu() {
    click 20 10
    key Down "$@"
}

# table NUMBER: the table that stands at this place of the list.
table() {
    click 110 $((91 + 43 * ($1 - 1)))
}

browsing() {
    start start
    # The list has the keyboard and goes to the line that is typed.
    write 'Il Gattopardo'
    shot record
    key shift+Tab shift+Tab shift+Tab
    settle
    write 'casa'
    shot search
    write 'x'
    shot search-without-match
    table 2
    shot authors
    table 3
    shot members
    stop
}

entry() {
    start
    key F2
    shot change
    # From the title to the button beside the picture's path.
    times 18 key Tab
    key space
    shot image-dialog
    key Escape
    settle
    key Escape
    settle
    key ctrl+n
    settle
    key ctrl+s
    shot refused
    key Return
    settle
    write 'Il sentiero dei nidi di ragno'
    shot new
    key Escape
    shot unsaved
    stop
}

dialogs() {
    start
    key ctrl+Delete
    shot delete
    key Escape
    settle
    options_menu Up
    shot options
    key Return
    shot about
    stop
}

modes() {
    start
    options_menu Return
    shot administrator
    options_menu Down
    shot administrator-options
    key Return
    shot hidden-tables
    options_menu Up Up Up Up Return
    shot advanced-question
    key alt+y
    shot advanced
    stop
    echo Locked >"$collection/lockDb.dat"
    start read-only
    stop
}

# A table with a row of every kind that the designer knows. Authors are listed meanwhile,
# because a link can only lead to a table that names the listed one, and books name authors.
designing() {
    start
    table 2
    settle
    options_menu Return
    settle
    key ctrl+t
    shot designer-empty
    write 'Mostre'
    times 4 key Tab
    write 'Titolo'
    key Return
    write 'Locandina'
    key Tab
    write 'IMAGE'
    key shift+Tab Return
    # A link is chosen by its type, then by the table that it leads to.
    key Tab
    write 'LINK'
    key shift+Tab Down
    times 3 key Tab
    key space
    settle
    # A copied field: its box is checked, then the table and the field are chosen.
    times 3 key Tab
    key space shift+Tab shift+Tab
    write 'soci'
    times 3 key Tab
    key space
    settle
    key Tab
    write 'SUBTABLE'
    key shift+Tab
    write 'Opere esposte'
    times 4 key Tab
    write 'Sala'
    key Return
    write 'Esposta dal'
    key Tab
    write 'DATE'
    shot designer
    stop
    start
    options_menu Return
    settle
    key ctrl+shift+t
    shot add-field
    stop
}

# What stands in the row above the list of records.
calculate() {
    click -120 95
}

filter() {
    click -40 95
}

filtering() {
    start
    filter
    shot filter-empty
    # Titles that contain "la" …
    write 'la'
    times 3 key Tab
    key space
    # … older than 1950: past the rest of the title's buttons, the author, − and +.
    times 13 key Tab
    write '1950'
    times 6 key Tab
    key space
    # … or with a genre that contains "Romanzo".
    times 4 key Tab
    write 'Romanzo'
    times 3 key Tab
    key space
    times 4 key Tab
    key space
    shot filter
    # The button before the main one saves the filter.
    click -140 -21
    shot filter-name
    write 'Vecchi romanzi'
    key Return
    shot filtered
    # The saved filters take the place of the tables.
    click 110 -54
    shot saved-filters
    click 110 $((91 + 43))
    shot saved-filter
    filter
    settle
    # Azzera, Applica
    click -320 -21
    settle
    click -40 -21
    shot unfiltered
    # A title that nothing has.
    filter
    settle
    write 'la'
    click -40 -21
    shot filtered-out
    stop
}

calculating() {
    start
    calculate
    settle
    # Years and pages are left out of the total.
    click 605 171
    settle
    click 605 205
    settle
    click -60 -21
    shot calculator
    stop
}

following() {
    start
    # A book with loans and without a cover.
    write 'Harry Potter'
    settle
    # VAI, Indietro, Apri
    click -80 211
    shot linked
    click -220 95
    settle
    click -80 517
    shot detail-table
    stop
}

menus() {
    start
    file_menu
    shot file-menu
    key Escape
    settle
    options_menu Return
    settle
    file_menu
    shot administrator-file-menu
    key Escape
    settle
    menu_at 110 134
    shot table-menu
    stop
    context_menus
}

# What the right button opens on the page of a table, and on the one of a record.
context_menus() {
    start
    menu_at 340 266
    shot list-menu
    key Escape
    settle
    menu_at 700 216
    shot value-menu
    key Escape
    settle
    key F2
    settle
    # From the title to the picture's path, whose menu the menu key opens.
    times 17 key Tab
    key Menu
    shot file-field-menu
    key Escape
    settle
    key Escape
    settle
    click 110 -54
    settle
    menu_at 110 91
    shot filter-menu
    stop
}

# A table whose export lasts some seconds.
add_long_table() {
    sqlite3 "$collection/biblioteca.db" <<'SQL'
CREATE TABLE Prestiti_passati(RINTEGERFORMAT_Id INTEGER PRIMARY KEY,
    RSTRINGFORMAT_Titolo text, NDATEFORMAT_Dal text, NLONGSTRINGFORMAT_UserPath);
WITH RECURSIVE loan(number) AS
    (SELECT 1 UNION ALL SELECT number + 1 FROM loan WHERE number < 1500000)
INSERT INTO Prestiti_passati
    SELECT number, 'Prestito ' || number, '01/03/1998', number FROM loan;
SQL
}

# Succeeds when the program has written so many bytes. The export's file has no name until it
# is complete, so its size does not tell.
has_written() {
    awk -v wanted="$1" '$1 == "wchar:" { exit $2 < wanted }' "/proc/$program_pid/io"
}

# The program is held still for the picture, and so is its bar.
exporting() {
    cp "$collection/biblioteca.db" "$scratch/kept.db"
    add_long_table
    start
    # "Esporta Tutto"; the long table comes last and is half written then.
    file_menu Down Down Down Down Return
    wait_for_window '^Esportazione' >/dev/null
    until_true 60 has_written 120000000
    kill -STOP "$program_pid"
    shot progress
    kill -CONT "$program_pid"
    until_true 60 test -e "$collection/ExportManagerFiles/Prestiti_passati.xmf"
    shot exported
    stop
    mv "$scratch/kept.db" "$collection/biblioteca.db"
    rm -r "$collection/ExportManagerFiles"
}

# remembering FILE COMMAND…: does something with the program's last database being another.
remembering() {
    local kept=$scratch/remembered
    cp "$collection/lastDb.dat" "$kept"
    printf '%s' "$1" >"$collection/lastDb.dat"
    shift
    "$@"
    cp "$kept" "$collection/lastDb.dat"
}

# From nothing to the first record.
first_start() {
    remembering '' first_page
    remembering "$collection/nuova.db" first_table
}

first_page() {
    start first-start
    stop
}

first_table() {
    start empty-database
    click 110 -54
    shot no-saved-filters
    click 110 -54
    settle
    options_menu Return
    settle
    key ctrl+t
    settle
    write 'Francobolli'
    times 4 key Tab
    write 'Nome'
    click -40 -21
    shot first-table
    table 1
    shot empty-table
    click -40 -21
    shot first-record
    write 'Gronchi rosa'
    click -40 -21
    shot first-record-saved
    stop
}

read_arguments "$@"
trap end_all EXIT
trap 'exit 1' INT TERM HUP
build
start_desktop
"$built/samples/tavenor-sample" "$collection"
for chapter in $chapters; do
    "$chapter"
done
