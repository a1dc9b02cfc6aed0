#!/usr/bin/env bash
# Times decoding every frame of a large animated GIF (640 × 480, 200 frames) against the usual
# tools, one whole process each: ours composes every frame on the canvas, giflib's DGifSlurp
# only decodes the frames' colour indices (no composition), ImageMagick coalesces to R, G, B, A
# and ffmpeg decodes to raw R, G, B, A. Also prints our peak memory, which must stay at a canvas
# or two however many frames the file has.
# Usage: bench/compare_gif.sh [BUILD_DIR] (default build/release; RUNS=5 by default;
#        CONVERT names ImageMagick's convert).
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build/release}
runs=${RUNS:-5}
convert=${CONVERT:-convert}
cli=$build/bench/orv_gif_cli
for tool in "$cli" "$convert" ffmpeg /usr/bin/time; do
  command -v "$tool" >/dev/null || { echo "missing: $tool (scripts/install-deps.sh --bench)" >&2; exit 1; }
done
# shellcheck source=bench/measure.sh
source bench/measure.sh

gif=$build/bench-data/animated-200.gif
mkdir -p "$(dirname "$gif")"
[ -f "$gif" ] || "$cli" make-gif "$gif" 200

echo "input: $gif ($(stat -c %s "$gif") bytes), $runs runs each"
"$cli" compose "$gif"
"$cli" slurp "$gif"
measure "ours, every frame composed" "$cli" compose "$gif"
measure "giflib DGifSlurp (no composing)" "$cli" slurp "$gif"
measure "convert -coalesce rgba:" "$convert" "$gif" -coalesce rgba:/dev/null
measure "ffmpeg to raw rgba" ffmpeg -v error -i "$gif" -f rawvideo -pix_fmt rgba -y /dev/null
echo "-- peak memory (max resident)"
for label in compose slurp; do
  /usr/bin/time -f "$label: %M KB" "$cli" "$label" "$gif" >/dev/null
done
/usr/bin/time -f "convert: %M KB" "$convert" "$gif" -coalesce rgba:/dev/null
/usr/bin/time -f "ffmpeg: %M KB" ffmpeg -v error -i "$gif" -f rawvideo -pix_fmt rgba -y /dev/null
