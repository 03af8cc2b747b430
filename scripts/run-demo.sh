#!/usr/bin/env bash
# The main job of `make run`: read the demo skin file and write it back.
set -euo pipefail
build=${1:-build}
cd "$(dirname "$0")/.."
sample=samples/demo.ui
out=$(mktemp -d)/demo.ui
echo "== korvi dump $sample"
"$build/src/cli/korvi" dump "$sample"
echo "== korvi format $sample $out"
"$build/src/cli/korvi" format "$sample" "$out"
cat "$out"
