# shellcheck shell=bash disable=SC2154
# Sourced: Jansson's source, for machines that Debian has no package of it for. It is the package of this machine.

jansson_version=2.14-2
jansson_archive=jansson_2.14.orig.tar.gz
jansson_sha256=c739578bf6b764aa0752db9a2fdadcfe921c78f1228c7ec0bb47fa804c55d17b
sources=$root/build/sources

# apt-get with the machine's own sources of packages, read as sources of their source text.
apt_source() {
    apt-get -o Dir::Etc::SourceList=/dev/null -o Dir::Etc::SourceParts="$sources/apt" \
        -o Dir::State::Lists="$sources/lists" -o APT::Sandbox::User=root "$@"
}

# fetch_jansson: into $sources/jansson.
fetch_jansson() {
    [ ! -f "$sources/jansson/CMakeLists.txt" ] || return 0
    local list
    mkdir -p "$sources/apt" "$sources/lists/partial"
    for list in /etc/apt/sources.list.d/*.sources; do
        [ ! -f "$list" ] || sed 's/^Types:.*/Types: deb-src/' "$list" > "$sources/apt/${list##*/}"
    done
    for list in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
        [ ! -f "$list" ] || sed -n 's/^deb /deb-src /p' "$list" > "$sources/apt/$(basename "$list" .list).list"
    done
    quietly apt_source update
    (
        cd "$sources" || exit
        quietly apt_source --download-only source "jansson=$jansson_version"
        echo "$jansson_sha256  $jansson_archive" > jansson.sha256
        quietly sha256sum --check jansson.sha256
        rm -rf jansson.new
        quietly dpkg-source --extract "jansson_$jansson_version.dsc" jansson.new
    )
    mv "$sources/jansson.new" "$sources/jansson"
}

# install_package SOURCE FOLDER PREFIX TOOLCHAIN [ARGUMENT...]: builds a CMake package for another machine.
install_package() {
    quietly cmake -S "$1" -B "$2" -G Ninja -DCMAKE_BUILD_TYPE=Release "-DCMAKE_INSTALL_PREFIX=$3" \
        "-DCMAKE_TOOLCHAIN_FILE=$4" "${@:5}"
    quietly cmake --build "$2" --parallel "$(nproc)" --target install
}

# install_jansson FOLDER PREFIX TOOLCHAIN [ARGUMENT...]
install_jansson() {
    install_package "$sources/jansson" "$@" -DJANSSON_BUILD_DOCS=OFF -DJANSSON_EXAMPLES=OFF -DJANSSON_WITHOUT_TESTS=ON
}
