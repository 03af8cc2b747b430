#!/usr/bin/env bash
# The main job of `make run`: the editor on the demo skin. Without a display the
# editor draws its window off screen and writes a picture of it instead.
set -euo pipefail
build=${1:-build}
cd "$(dirname "$0")/.."
editor="$build/src/editor/korvi-editor"
skin=samples/demo-skin
file=$skin/800_480/ui/main_800_480.ui
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
    out=$(mktemp -d)/korvi-editor.png
    echo "No display (DISPLAY and WAYLAND_DISPLAY are empty): drawing the editor off screen."
    QT_QPA_PLATFORM=offscreen "$editor" --skin-dir "$skin" --screenshot "$out" "$file"
    echo "Picture of the editor window: $out"
else
    exec "$editor" --skin-dir "$skin" "$file"
fi
