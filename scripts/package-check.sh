#!/usr/bin/env bash
# Checks the Debian package as a user meets it: builds it from the existing
# build folder, installs it on this machine with dpkg, runs the installed
# programs, draws the demo skin with the installed korvi, and removes the
# package again, also when a step fails. Needs root or sudo.
#
#   scripts/package-check.sh [BUILD_DIR]      (default: build)
#
# A korvi-skin-editor package installed before is replaced, then removed.
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
package=korvi-skin-editor
prefix=/usr
sudo=""
[ "$(id -u)" = 0 ] || sudo=sudo

step() { echo "== package check: $*"; }
fail() {
    echo "package check FAILED: $*" >&2
    exit 1
}

installed() { dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; }

remove_package() {
    step "removing $package"
    $sudo dpkg -r "$package" >/dev/null || echo "package check: dpkg -r $package failed" >&2
}

step "building the package in $build"
cmake --build "$build" --target package
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")
[ -n "$version" ] || fail "no project version in $build/CMakeCache.txt"
deb="$build/${package}_${version}_$(dpkg --print-architecture).deb"
[ -f "$deb" ] || fail "$deb was not made"
depends=$(dpkg-deb -f "$deb" Depends)
echo "Depends: $depends"
case "$depends" in
*libqt6widgets6*) ;;
*) fail "the package's dependencies were not computed from its programs" ;;
esac

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
step "the package's files, as a software centre reads them"
dpkg-deb -x "$deb" "$work/tree"
appstreamcli validate-tree --no-net "$work/tree"

trap 'remove_package; rm -rf "$work"' EXIT
step "installing $deb"
$sudo dpkg -i "$deb"
installed || fail "$package is not installed after dpkg -i"

for file in bin/korvi bin/korvi-editor share/applications/korvi-editor.desktop \
    share/metainfo/io.github.korvi8.skin_editor.metainfo.xml \
    share/icons/hicolor/scalable/apps/korvi-editor.svg share/icons/hicolor/48x48/apps/korvi-editor.png \
    share/doc/$package/README.md share/doc/$package/LICENSE; do
    [ -f "$prefix/$file" ] || fail "$prefix/$file is not installed"
done

step "the installed programs' versions"
out=$("$prefix/bin/korvi" --version)
echo "$out"
[ "$out" = "korvi $version" ] || fail "korvi --version printed \"$out\", not \"korvi $version\""
out=$(QT_QPA_PLATFORM=offscreen "$prefix/bin/korvi-editor" --version)
echo "$out"
[ "$out" = "korvi-editor $version" ] ||
    fail "korvi-editor --version printed \"$out\", not \"korvi-editor $version\""

step "drawing the demo skin with the installed korvi"
skin=samples/demo-skin
render() {
    "$1" render "$skin/800_480/ui/main_800_480.ui" --skin-dir "$skin" --all-layers -o "$2"
}
render "$prefix/bin/korvi" "$work/installed"
[ -f "$work/installed/index.html" ] || fail "no index.html in the drawn pictures"
pictures=$(grep -o 'src="[^"]*\.png"' "$work/installed/index.html" | sed 's/^src="//; s/"$//')
[ -n "$pictures" ] || fail "index.html shows no picture"
# The installed program draws what the one in the build folder draws.
render "$build/src/cli/korvi" "$work/built" 2>/dev/null
for picture in $pictures; do
    [ "$(head -c 4 "$work/installed/$picture" | tail -c 3)" = PNG ] || fail "$picture is not a PNG picture"
    cmp -s "$work/installed/$picture" "$work/built/$picture" ||
        fail "$picture differs from the build folder's korvi's"
    echo "$picture"
done

trap 'rm -rf "$work"' EXIT
remove_package
! installed || fail "$package is still installed after dpkg -r"
[ ! -e "$prefix/bin/korvi" ] || fail "$prefix/bin/korvi is still there after dpkg -r"
step "passed"
