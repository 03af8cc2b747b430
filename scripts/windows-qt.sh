#!/usr/bin/env bash
# Makes Qt 6.4.2 for 64-bit Windows (MinGW-w64) available once per machine and
# prints the folder to give as CMAKE_PREFIX_PATH.
#
#   scripts/windows-qt.sh            (cache: ${KORVI_CACHE:-~/.cache/korvi})
#
# When ../shared/windows beside the clone holds the prebuilt archive and its
# SHA-256, the archive is checked and unpacked (a minute). Otherwise Qt is
# built from Debian's own qt6-base source package, the same version as the
# host tools of qt6-base-dev (most of an hour on 2 cores). Both give the
# same files.
set -euo pipefail
repo=$(cd "$(dirname "$0")/.." && pwd)
cache=${KORVI_CACHE:-$HOME/.cache/korvi}
name=qt-6.4.2-mingw64
prefix=$cache/$name
qt=$prefix/qt6-mingw
stamp=$prefix/.complete
prebuilt=${KORVI_QT_ARCHIVE:-$repo/../shared/windows/$name.tar.xz}

say() { echo "windows-qt: $*" >&2; }

if [ -f "$stamp" ]; then
    echo "$qt"
    exit 0
fi

unpack_prebuilt() {
    local expected actual
    expected=$(awk '{print $1; exit}' "$prebuilt.sha256")
    actual=$(sha256sum "$prebuilt" | awk '{print $1}')
    if [ "$expected" != "$actual" ]; then
        say "$prebuilt does not match its SHA-256 ($actual, expected $expected)"
        return 1
    fi
    say "unpacking $prebuilt into $prefix"
    rm -rf "$prefix.part"
    mkdir -p "$prefix.part"
    tar -xJf "$prebuilt" -C "$prefix.part"
    [ -f "$prefix.part/qt6-mingw/lib/cmake/Qt6/Qt6Config.cmake" ] || {
        say "the archive does not hold qt6-mingw/"
        return 1
    }
}

build_from_source() {
    local work=$cache/qt-source-work
    say "building Qt from Debian's qt6-base source in $work (most of an hour)"
    mkdir -p "$work/lists/partial" "$work/sources.list.d"
    # A deb-src entry for the machine's own mirror and suite, kept in a folder
    # of our own so that the system's apt configuration stays untouched.
    local mirror suite
    read -r mirror suite < <(apt-get indextargets --format '$(REPO_URI) $(RELEASE)' 'Created-By: Packages' \
        | awk '$1 ~ /debian\/?$/ && $2 !~ /security|updates/ {print; exit}')
    [ -n "${mirror:-}" ] || { say "no Debian mirror found in apt's configuration"; return 1; }
    echo "deb-src $mirror $suite main" > "$work/sources.list.d/qt6-base-src.list"
    local apt_opts=(-o Dir::Etc::SourceList=/dev/null -o Dir::Etc::SourceParts="$work/sources.list.d"
                    -o Dir::State::Lists="$work/lists")
    apt-get "${apt_opts[@]}" update >&2
    (cd "$work" && apt-get "${apt_opts[@]}" source --download-only qt6-base=6.4.2+dfsg-10 >&2)
    rm -rf "$work/qtbase-everywhere-src-6.4.2" "$work/build"
    tar -xJf "$work"/qt6-base_6.4.2+dfsg.orig.tar.xz -C "$work"
    cmake -S "$work/qtbase-everywhere-src-6.4.2" -B "$work/build" -G Ninja \
        -DCMAKE_TOOLCHAIN_FILE="$repo/cmake/mingw-w64-x86_64.cmake" \
        -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake \
        -DQT_QMAKE_TARGET_MKSPEC=win32-g++ -DCMAKE_INSTALL_PREFIX="$prefix.part/qt6-mingw" \
        -DCMAKE_BUILD_TYPE=Release -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF \
        -DFEATURE_sql=OFF -DFEATURE_network=OFF -DFEATURE_dbus=OFF -DFEATURE_opengl=OFF \
        -DFEATURE_concurrent=OFF -DFEATURE_xml=OFF -DFEATURE_system_zlib=OFF -DFEATURE_icu=OFF \
        -DFEATURE_tabletevent=OFF -DFEATURE_dynamicgl=OFF >&2
    cmake --build "$work/build" -j "$(nproc)" >&2
    rm -rf "$prefix.part"
    cmake --install "$work/build" >&2
    rm -rf "$work/build" "$work/qtbase-everywhere-src-6.4.2"
}

mkdir -p "$cache"
if [ -f "$prebuilt" ] && [ -f "$prebuilt.sha256" ]; then
    unpack_prebuilt
else
    build_from_source
fi
rm -rf "$prefix"
mv "$prefix.part" "$prefix"
touch "$stamp"
say "Qt for Windows is in $qt"
echo "$qt"
