# Sourced by tools/windows/build and tools/linux/build, whose steps run in a clean Debian system that is
# kept. They set target, as the folder in build/ is called, and suite, the system's.
#
# What they were called with is divided here: [--root FOLDER] [-DVARIABLE=VALUE]... [STEP]...
. tools/packaging/roots.bash

# shellcheck disable=SC2154 # set by those that source this file
logs=$PWD/build/$target
root=$logs/root
variables=()
while [[ ${1:-} == -* ]]; do
    case $1 in
    -D*) variables+=("$1") ;;
    --root) root=$(realpath "$2") && shift ;;
    *) sed -n '4s/^# *//p' "$0" >&2 && exit 2 ;;
    esac
    shift
done
# shellcheck disable=SC2034 # for those that source this file
steps=("$@")
can_make_roots
mkdir -p "$logs"

say() { printf '%s: %s\n' "$target" "$1"; }

# logged NAME COMMAND...: with a log of its own, whose end is shown if the command fails.
logged() {
    local log=$logs/$1.log begin=$SECONDS
    "${@:2}" >"$log" 2>&1 || {
        tail -n 40 "$log" >&2
        say "$1 failed" >&2
        exit 1
    }
    say "$1: $((SECONDS - begin)) s"
}

make_system() {
    [ ! -d "$root" ] || return 0
    rm -rf --one-file-system "$root.new"
    # shellcheck disable=SC2154
    logged system make_root "$suite" "$root.new" ca-certificates
    mv "$root.new" "$root"
}

# in_system COMMAND...: in /velmora, with the sources as they are now, and what was built of them before.
# What has changed is dated now: a file may be older than the one in its place.
in_system() {
    rm -rf "$root/sources"
    copy_sources "$root/sources"
    mkdir -p "$root/velmora"
    rsync --recursive --links --perms --checksum --delete --exclude=/build \
        "$root/sources/" "$root/velmora"
    in_root "$root" env -C /velmora CCACHE_DIR=/build/ccache "$@"
}

# in_system_bash SCRIPT WORD...
in_system_bash() { in_system bash -euo pipefail -c "$1" bash "${@:2}"; }

# build PRESET [OPTION]...: configures and builds it. Afresh, as a variable given once would be kept
# for the next time.
build() {
    # shellcheck disable=SC2016 # expanded in the system
    in_system_bash '
        cmake --fresh --preset "$@" -DCMAKE_PREFIX_PATH=/build/toolkit \
            -DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DVELMORA_LICENSES=/build/licenses
        cmake --build --preset "$1"' "$@"
}
