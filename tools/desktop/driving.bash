# Sourced by the scripts that drive Velmora on the virtual desktop: starting it, finding its
# windows and the places on them, pressing keys, looking at pixels, taking pictures.
#
# Places and sizes are told in the program's own units. A script that has Velmora drawn larger
# (QT_SCALE_FACTOR) sets "scale" to the same whole number before it sources this file.
scale=${scale:-1}

# The Control window as these scripts lay it out: tall enough to show everything at once.
control_width=560
control_height=900

die() {
    printf '%s: %s\n' "${0##*/}" "$1" >&2
    exit 1
}

# await SECONDS WHAT COMMAND...: repeats the command until it succeeds; dies with WHAT.
await() {
    local end=$((SECONDS + $1)) what=$2
    shift 2
    until "$@"; do
        [ "$SECONDS" -lt "$end" ] || die "$what"
        [ -z "${velmora_pid:-}" ] || kill -0 "$velmora_pid" 2>/dev/null || die "Velmora has ended: $what"
        sleep 0.1
    done
}

# The id of the visible window with exactly this title; fails when there is none.
window() {
    wmctrl -l | awk -v title="$1" '{
        id = $1
        sub(/^[^ ]+ +[^ ]+ +[^ ]+ /, "")
        if ($0 == title) { print id; found = 1; exit }
    } END { exit !found }'
}

has_window() { window "$1" >/dev/null; }
has_no_window() { ! window "$1" >/dev/null; }

# The window's place as "X Y WIDTH HEIGHT".
geometry() {
    xdotool getwindowgeometry --shell "$(window "$1")" | awk -F= -v scale="$scale" '
        { value[$1] = $2 / scale }
        END { print value["X"], value["Y"], value["WIDTH"], value["HEIGHT"] }'
}

has_geometry() { [ "$(geometry "$1" 2>/dev/null)" = "$2" ]; }
has_size() { [[ "$(geometry "$1" 2>/dev/null)" == *" $2" ]]; }

# Places the Control window on the first monitor: WIDTH HEIGHT.
resize_control() {
    wmctrl -i -r "$control" \
        -e "0,$((80 * scale)),$((40 * scale)),$(($1 * scale)),$(($2 * scale))"
}

start_velmora() {
    # shellcheck disable=SC2154 # the caller's
    "${velmora[@]}" 2>"$log" &
    velmora_pid=$!
    await 30 "the Control window did not come up" has_window "Velmora — Control"
    await 30 "the Output window did not come up on the second monitor" \
        has_geometry "Velmora — Output" "1920 0 1920 1080"
    control=$(window "Velmora — Control")
    resize_control "$control_width" "$control_height"
    await 10 "the Control window could not be sized" \
        has_size "Velmora — Control" "$control_width $control_height"
    await 10 "the Set button is not to be seen" find_set_button
}

# Closes the Control window as a person does and returns the program's status.
close_velmora() {
    local pid=$velmora_pid
    wmctrl -i -c "$control"
    velmora_pid=
    wait "$pid"
}

# The pixels of a rectangle of the screen, three bytes each: X Y WIDTH HEIGHT.
pixels() {
    import -silent -window root \
        -crop "$(($3 * scale))x$(($4 * scale))+$(($1 * scale))+$(($2 * scale))" +repage -depth 8 rgb:-
}

# Whether the pixels on standard input have a run of the colour (rrggbb).
shows_run() { LC_ALL=C grep -caP "(\\x${1:0:2}\\x${1:2:2}\\x${1:4:2}){3}" >/dev/null; }

# Whether a run of pixels of the colour is seen there: COLOUR X Y WIDTH HEIGHT.
sees() { shows_run "$1" < <(pixels "${@:2}"); }

# Whether the audience's figure is seen in the colour (above the clock and the bar).
figure_is() { sees "$1" 1920 200 1920 400; }

# The Set button is the only one with a border two pixels wide: two rows of green, one right
# under the other. It is the anchor by which the scroll area's other places are found.
find_set_button() {
    local found
    found=$(import -silent -window "$control" -depth 8 rgb:- |
        LC_ALL=C grep -obUaP "(\x2a\x9c\x4a){$((40 * scale)),}" |
        awk -F: -v scale="$scale" -v width="$((control_width * scale))" '{
            x = int($1 / 3) % width; y = int($1 / 3 / width)
            near = y == last_y + 1 && x - last_x >= -4 * scale && x - last_x <= 4 * scale
            rows = near ? rows + 1 : 1
            if (rows == 1) first_y = y
            if (rows == 2 * scale) { print int(x / scale), int(first_y / scale); exit }
            last_x = x; last_y = y
        }')
    [ -n "$found" ] || return 1
    set_x=${found% *}
    set_y=${found#* }
}

# Clicks into the Control window: X Y [TIMES]. The window manager holds a click back until it has
# given the window the focus; keys do not wait for it, so they get a moment.
click_control() {
    xdotool mousemove --window "$control" $(($1 * scale)) $(($2 * scale)) click --repeat "${3:-1}" --delay 60 1
    sleep 0.2
}

# Clicks at a place relative to the Set button's corner.
click_near_set() { click_control $((set_x + $1)) $((set_y + $2)); }

# Types a time into the Set Time row and presses Set: MINUTES SECONDS.
set_time() {
    click_near_set -214 16
    xdotool key ctrl+a type --delay 30 "$1"
    click_near_set -75 16
    xdotool key ctrl+a type --delay 30 "$2"
    click_near_set 30 16
}

# Types into the message row and presses Return: TEXT. The focus is left on "Push", so that
# the next keys are shortcuts again.
push_message() {
    click_near_set 60 222
    xdotool key ctrl+a type --delay 30 "$1"
    xdotool key Return
    click_near_set $((control_width - 111 - set_x)) 222
}

click_preview() { click_control $((control_width - 62)) $((control_height - 25)); }
click_settings() { click_control $((control_width - 45)) 30; }
