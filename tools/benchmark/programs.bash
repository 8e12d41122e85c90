# Sourced by what measures the programs, after tools/common.bash.
# shellcheck disable=SC2034 # what it sets is for them

# build_programs TARGET...: with the release flags. Names them in $velmora, $floor and $benchmarks,
# and makes a $directory for this run: no sound server and no setting of the user is used or started.
build_programs() {
    scripts/install-packages benchmark
    quietly build/benchmark.log cmake -G Ninja -B build/benchmark -DCMAKE_BUILD_TYPE=Release \
        -DVELMORA_BENCHMARKS=ON -DBUILD_TESTING=OFF
    quietly build/benchmark.log cmake --build build/benchmark --target "$@"
    velmora=$PWD/build/benchmark/src/velmora
    floor=$PWD/build/benchmark/benchmarks/velmora_floor
    benchmarks=$PWD/build/benchmark/benchmarks/velmora_benchmarks

    directory=$(mktemp -d "${TMPDIR:-/tmp}/velmora-benchmark.XXXXXXXX")
    trap 'rm -rf "$directory"' EXIT
    export XDG_CONFIG_HOME=$directory PULSE_CLIENTCONFIG=$directory/client.conf
    printf 'autospawn = no\n' >"$PULSE_CLIENTCONFIG"
    unset PULSE_SERVER PULSE_RUNTIME_PATH PIPEWIRE_REMOTE
}
