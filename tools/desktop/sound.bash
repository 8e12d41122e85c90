# Sourced by the scripts that need a sound server.

# start_sound_server SOCKET LOG: one of its own, which plays into nothing; what would be heard can be
# taken from the monitor of its sink "cue". Sets sound_pid, to be ended by whoever has called it. Fails
# if the server does not answer. With rewinds, a sink's monitor would have passed on up to 20 ms of
# silence already in place of the first samples.
start_sound_server() {
    XDG_RUNTIME_DIR=${1%/*} pulseaudio -n --daemonize=no --use-pid-file=no --exit-idle-time=-1 \
        --high-priority=no -L "module-native-protocol-unix auth-anonymous=1 socket=$1" \
        -L "module-null-sink sink_name=cue norewinds=1" >"$2" 2>&1 &
    # shellcheck disable=SC2034 # for the caller
    sound_pid=$!
    for _ in {1..200}; do
        ! pactl --server="unix:$1" info >/dev/null 2>&1 || return 0
        sleep 0.1
    done
    cat "$2" >&2
    return 1
}
