# Sourced by the scripts that run a command on a private desktop: a folder of its own, the processes
# that the desktop consists of, and the end of all of it.

fail() {
    printf '%s: %s\n' "${0##*/}" "$1" >&2
    exit 125
}

directory=$(mktemp -d "${TMPDIR:-/tmp}/velmora-desktop.XXXXXXXX") || fail "no temporary directory"
mkdir -m 700 "$directory/runtime" || exit 125
# The sockets of this desktop, and of no other session of the machine.
export XDG_RUNTIME_DIR=$directory/runtime
processes=()

# If the script itself is killed the hard way, its processes go with it.
leash=()
if setpriv --pdeathsig TERM true 2>/dev/null; then
    leash=(setpriv --pdeathsig TERM)
fi

# start NAME COMMAND...: in the background; what it prints is in NAME.log of the folder.
start() {
    "${leash[@]}" "${@:2}" >"$directory/$1.log" 2>&1 </dev/null &
    processes=($! "${processes[@]}")
}

# await WHAT COMMAND...: waits up to half a minute (a busy machine) until the command succeeds, as
# long as the process started last lives.
await() {
    for _ in {1..600}; do
        ! "${@:2}" || return 0
        kill -0 "${processes[0]}" 2>/dev/null || break
        sleep 0.05
    done
    tail -n 20 "$directory"/*.log >&2
    fail "$1 did not start"
}

# run COMMAND...: the one that the desktop is for. Exits with its status.
run() {
    "$@" <&0 &
    processes=($! "${processes[@]}")
    wait $!
    local status=$?
    processes=("${processes[@]:1}")
    exit "$status"
}

# The last process started ends first; one that does not end within five seconds is killed.
clean_up() {
    trap '' INT TERM HUP
    local process
    for process in "${processes[@]}"; do
        kill -TERM "$process" 2>/dev/null || continue
        for _ in {1..100}; do
            kill -0 "$process" 2>/dev/null || break
            sleep 0.05
        done
        kill -KILL "$process" 2>/dev/null
        wait "$process" 2>/dev/null
    done
    rm -rf "$directory"
}
trap clean_up EXIT
trap 'exit 130' INT
trap 'exit 143' TERM
trap 'exit 129' HUP
