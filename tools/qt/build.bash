# Sourced by tools/windows/build-qt and tools/linux/build-qt, which build Qt and FFmpeg of Debian 13's
# source packages in a clean Debian system. All of it is below /build there: the sources below
# sources, what is installed in toolkit, and in licenses the texts of all that a package brings.
set -euo pipefail
project=$PWD
qt_options=() # of each part of Qt; for the recipe to add to
packaged=(ffmpeg qt6-base qt6-multimedia)
export DEBIAN_FRONTEND=noninteractive CCACHE_DIR=/build/ccache
export CMAKE_C_COMPILER_LAUNCHER=ccache CMAKE_CXX_COMPILER_LAUNCHER=ccache

# part NAME COMMAND...: runs it in /build, unless it has been there.
part() {
    [ ! -e "/build/done/$1" ] || return 0
    printf '== %s\n' "$1"
    mkdir -p /build/done
    (cd /build && "${@:2}")
    touch "/build/done/$1"
}

# options FILE: the words of one of the files beside this one.
options() {
    grep -v '^#' "$project/tools/qt/$1"
}

# unpack_sources PACKAGE...: half of them may be there.
unpack_sources() {
    rm -rf sources
    mkdir sources
    cd sources
    apt-get -q source "$@"
}

# build_ffmpeg OPTION...
build_ffmpeg() {
    local words
    mapfile -t words < <(options ffmpeg-options)
    cd sources/ffmpeg-*/
    ./configure --prefix=/build/toolkit "$@" "${words[@]}"
    make -j"$(nproc)" install
}

# configure SOURCE OPTION...: a part of Qt, in a folder of the package's name.
configure() {
    cmake -G Ninja -S "$(echo sources/"$1"-6*/)" -B "$1" -DCMAKE_INSTALL_PREFIX=/build/toolkit \
        -DCMAKE_PREFIX_PATH=/build/toolkit -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=ON \
        -DQT_UNITY_BUILD=ON -DQT_BUILD_TESTS=OFF -DQT_BUILD_EXAMPLES=OFF -DQT_GENERATE_SBOM=OFF \
        "${qt_options[@]}" "${@:2}"
}

# build_base OPTION...: CMake's own gzip would write the time into the list of file types.
build_base() {
    local words
    mapfile -t words < <(options qtbase-options | sed 's/.*/-DFEATURE_&=OFF/')
    configure qt6-base -DINPUT_opengl=no -DQT_AVOID_CMAKE_ARCHIVING_API=ON "${words[@]}" "$@"
    cmake --build qt6-base
    cmake --install qt6-base
}

# build_multimedia OPTION...: of its parts the library, and of its backends FFmpeg's, which decodes the
# same on every system. The library compiles shaders for videos, which need another part of Qt; a cue
# has none.
build_multimedia() {
    local folder=toolkit/lib/cmake/Qt6ShaderTools
    mkdir -p $folder
    cat >$folder/Qt6ShaderToolsConfig.cmake <<'CONFIG'
function(qt_internal_add_shaders target name)
    set(none "${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp")
    file(WRITE "${none}" "int qInitResources_${name}() { return 0; }\n")
    target_sources(${target} PRIVATE "${none}")
endfunction()
if(NOT TARGET Qt6::ShaderTools)
    add_library(Qt6::ShaderTools INTERFACE IMPORTED)
endif()
set(Qt6ShaderTools_FOUND TRUE)
CONFIG
    cat >$folder/Qt6ShaderToolsConfigVersion.cmake <<'CONFIG'
set(PACKAGE_VERSION "${PACKAGE_FIND_VERSION}")
set(PACKAGE_VERSION_COMPATIBLE TRUE)
CONFIG
    configure qt6-multimedia -DFFMPEG_DIR=/build/toolkit -DFEATURE_ffmpeg=ON "$@"
    cmake --build qt6-multimedia --target Multimedia QFFmpegMediaPlugin
    cmake --install qt6-multimedia/src/multimedia
    cmake --install qt6-multimedia/src/plugins/multimedia/ffmpeg
}

# collect_licenses TEMPLATE [FILE NAME]... -- [SED-OPTION]...: the terms as Debian has them, those of
# files under these names besides, and the template with the versions of the sources and with
# FFmpeg's options.
collect_licenses() (
    rm -rf /build/licenses
    mkdir -p /build/licenses/licenses
    cd /build/licenses/licenses
    cp /usr/share/common-licenses/{LGPL-2.1,LGPL-3,GPL-3} .
    local template=$1 source
    shift
    while [ "$1" != -- ]; do
        cp "$1" "$2"
        shift 2
    done
    local edits=("${@:2}")
    for source in "${packaged[@]}"; do
        cp "/build/sources/$source"-[0-9]*/debian/copyright "$source.txt"
        edits+=(-e "s/@${source//-/_}@/$(dpkg-parsechangelog -S Version \
            -l "$(echo "/build/sources/$source"-[0-9]*/debian/changelog)")/")
    done
    options ffmpeg-options | paste -s -d ' ' | fold -s -w 88 | sed 's/^/        /' >/build/ffmpeg-words
    sed -e '/@ffmpeg_options@/{
            r /build/ffmpeg-words
            d
        }' "${edits[@]}" "$project/$template" >../THIRD-PARTY.txt
    ! grep @ ../THIRD-PARTY.txt
)
