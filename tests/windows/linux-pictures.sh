#!/usr/bin/env bash
# Draws every layer of the demo skin with the Linux build's korvi, once as
# usual (OUT/with-fonts) and once with no fonts at all (OUT/without-fonts).
#   linux-pictures.sh LINUX_KORVI SKIN OUT
set -euo pipefail
korvi=$1 skin=$2 out=$3
if [ ! -x "$korvi" ]; then
    echo "$korvi is missing: build the Linux programs first (make build)" >&2
    exit 1
fi
rm -rf "$out"
mkdir -p "$out/with-fonts" "$out/without-fonts"
file="$skin/800_480/ui/main_800_480.ui"
QT_QPA_PLATFORM=offscreen "$korvi" render "$file" --skin-dir "$skin" --all-layers -o "$out/with-fonts" 2>/dev/null
# An empty font configuration: fontconfig finds no font.
printf '<?xml version="1.0"?>\n<fontconfig></fontconfig>\n' > "$out/no-fonts.conf"
FONTCONFIG_FILE="$out/no-fonts.conf" QT_QPA_PLATFORM=offscreen \
    "$korvi" render "$file" --skin-dir "$skin" --all-layers -o "$out/without-fonts" 2>/dev/null
ls "$out/with-fonts"/*.png >/dev/null
