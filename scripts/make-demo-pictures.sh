#!/usr/bin/env bash
# Makes every picture of the demo skin (samples/demo-skin) from scratch:
# builds the small drawing program make-demo-pictures.cpp, runs it, and turns
# the pictures meant as RL files into RL pictures with "korvi png2rl".
# The pictures are committed, so the demo works without running this.
#
#   scripts/make-demo-pictures.sh [BUILD_DIR]      (default: build)
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
korvi="$build/src/cli/korvi"
if [ ! -x "$korvi" ]; then
    echo "korvi not found at $korvi: build the project first (make build)" >&2
    exit 1
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# shellcheck disable=SC2046
g++ -std=c++17 -O1 -fPIC scripts/make-demo-pictures.cpp -o "$work/make-demo-pictures" \
    $(pkg-config --cflags --libs Qt6Gui)
"$work/make-demo-pictures" samples/demo-skin "$work/rl"

( cd "$work/rl" && find . -name '*.png' | sort ) | while read -r png; do
    out="samples/demo-skin/${png#./}"
    out="${out%.png}.bmp"
    mkdir -p "$(dirname "$out")"
    "$korvi" png2rl "$work/rl/${png#./}" "$out"
    echo "$out (RL)"
done
