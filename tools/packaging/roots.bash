# Sourced by the scripts that try something in a clean Debian system of its own: a folder with
# nothing but the system's essential packages, entered by chroot. Needs root's rights and the
# packages of scripts/install-packages roots.

# Says so and fails when this machine or this user cannot make such systems.
can_make_roots() {
    if [ "$(id -u)" -ne 0 ] || ! unshare --mount true 2>/dev/null; then
        printf '%s: needs the rights to make and enter a clean system; run it as root.\n' \
            "${0##*/}" >&2
        return 1
    fi
}

# make_root SUITE FOLDER [PACKAGE,...]: with packages beyond the essential ones. A mirror that lags
# behind does; what comes from it is verified anyway.
make_root() {
    mmdebstrap --quiet --variant=minbase --components=main ${3:+"--include=$3"} \
        --aptopt='Acquire::Check-Valid-Until "false"' "$1" "$2"
}

# Run in a mount namespace of its own, with the folder as $root. Device files work only where the
# file system of that folder lets them: those of this machine stand in for them.
mount_system='
    set -e
    mount -t proc proc "$root/proc"
    for device in null zero full random urandom tty; do
        mount --bind "/dev/$device" "$root/dev/$device"
    done
    mount -t devpts -o newinstance,ptmxmode=0666 devpts "$root/dev/pts"
    mount --bind "$root/dev/pts/ptmx" "$root/dev/ptmx"
    mount -t tmpfs tmpfs "$root/dev/shm"
'
root_path=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin

# in_root FOLDER COMMAND...: runs the command there, in an environment of nothing but HOME, PATH
# and a plain terminal. Whatever it leaves running ends with it.
in_root() {
    unshare --mount --pid --fork --kill-child bash -c "root=\$1; shift; $mount_system"'
        exec chroot "$root" env -i HOME=/root TERM=dumb PATH='"$root_path"' "$@"
    ' in_root "$@"
}

# copy_sources FOLDER: the sources as git knows them, with what is changed but not committed.
copy_sources() {
    mkdir -p "$1"
    git ls-files -z --cached --others --exclude-standard |
        tar --create --null --files-from=- | tar --extract --directory="$1"
}
