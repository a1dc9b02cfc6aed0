#!/usr/bin/env bash
# Times our blur and sharpen against the usual command-line tools on the same 12 MP photo, one
# whole process each, binary PPM in and out for every tool:
#   - gaussian blur of sigma 10: ours, `vips gaussblur`, ImageMagick `-gaussian-blur 0x10`;
#   - the sharpen tool's default: ours, `vips sharpen` (its defaults, which sharpen far less
#     than ours: bench/compare_sharpen.sh compares the two at equal strength).
# Usage: bench/compare_filters.sh [BUILD_DIR] (default build/release; RUNS=5 by default, and
#        SLOW_RUNS=1 for ImageMagick's blur, which takes minutes; CONVERT names its convert).
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build/release}
runs=${RUNS:-5}
slow_runs=${SLOW_RUNS:-1}
convert=${CONVERT:-convert}
cli=$build/bench/orv_filter_cli
codec=$build/bench/orv_codec_cli
for tool in "$cli" "$codec" vips "$convert"; do
  command -v "$tool" >/dev/null || { echo "missing: $tool (scripts/install-deps.sh --bench)" >&2; exit 1; }
done

mapfile -t inputs < <("$codec" make-photo)
ppm=${inputs[1]}
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

# shellcheck source=bench/measure.sh
source bench/measure.sh

echo "input: $ppm (4000 × 3000), $runs runs each"
echo "-- gaussian blur, sigma 10"
measure "ours" "$cli" gaussblur 10 "$ppm" "$tmp/ours.ppm"
measure "vips gaussblur" vips gaussblur "$ppm" "$tmp/vips.ppm" 10
runs=$slow_runs measure "convert -gaussian-blur 0x10" "$convert" "$ppm" -gaussian-blur 0x10 "$tmp/im.ppm"
echo "-- sharpen"
measure "ours (unsharp mask 0.5)" "$cli" sharpen "$ppm" "$tmp/ours-sharp.ppm"
measure "vips sharpen" vips sharpen "$ppm" "$tmp/vips-sharp.ppm"
