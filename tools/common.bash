# Sourced by scripts and tools, which stand in the project's folder by then.

# fail MESSAGE: prints it, with the script's name, and ends the script.
fail() {
    printf '%s: %s\n' "${0##*/}" "$1" >&2
    exit 1
}

# quietly LOG COMMAND...: keeps what the command prints in the log. Where it fails, prints the log's
# end, and CMake's errors, which debhelper has follow by all of the cache.
quietly() {
    mkdir -p "$(dirname "$1")"
    "${@:2}" >"$1" 2>&1 || {
        tail -n 40 "$1" >&2
        sed -n '/^CMake Error/,/^-- /p' "$1" >&2
        fail "failed; the log is $1"
    }
}

# build PRESET [TARGET]...: configures and builds the targets, or everything.
build() {
    cmake --preset "$1" && cmake --build --preset "$1" ${2:+--target} "${@:2}"
}

# describe: the line that belongs to every figure: commit, machine, Qt, load and time.
describe() {
    printf '%s, %s, %s processors, Qt %s; load %s at %s\n' \
        "$(git describe --always --dirty 2>/dev/null || printf 'no version control')" \
        "$(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -n 1)" "$(nproc)" \
        "$(qmake6 -query QT_VERSION)" \
        "$(cut -d ' ' -f 1-3 /proc/loadavg)" "$(date -u '+%F %T UTC')"
}
