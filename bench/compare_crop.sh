#!/usr/bin/env bash
# The crop tool's result against the same work done with vips and with jpegtran, one whole
# command (or chain of commands) each, on the bundled 12 MP phone photo: turn a quarter right,
# mirror left to right, crop a rectangle of the turned photo, save a JPEG.
#   ours      orv_crop_cli: decode, turn and mirror by the orientation tag, crop upright,
#             encode at quality 95 with the photo's EXIF
#   vips      vips rot d90, vips flip horizontal, vips extract_area to a JPEG at Q 95 (the
#             first two write vips' own uncompressed format in between)
#   jpegtran  jpegtran -transpose -crop: lossless, no decode to pixels at all, for reference
# The commands take turns within each round (the first one rotating), and the medians and the
# ratios come from this one run.
#
# Usage: bench/compare_crop.sh [BUILD_DIR]  (default build/release; RUNS=7,
#        PHOTO=resources/photos/dragonfly.jpg)
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=bench/measure.sh
source bench/measure.sh
build=${1:-build/release}
runs=${RUNS:-7}
photo=${PHOTO:-resources/photos/dragonfly.jpg}
cli=$build/bench/orv_crop_cli
for tool in "$cli" vips vipsheader jpegtran; do
  command -v "$tool" >/dev/null || { echo "missing: $tool (scripts/install-deps.sh --bench)" >&2; exit 1; }
done
[ -f "$photo" ] || { echo "missing: $photo" >&2; exit 1; }
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

# The photo is landscape; turned, it is portrait. The crop: fractions of the turned photo, and
# the same in pixels (multiples of 16, so that jpegtran crops exactly there too).
width=$(vipsheader -f width "$photo") height=$(vipsheader -f height "$photo")
turned_w=$height turned_h=$width
x=$((turned_w / 10 / 16 * 16)) y=$((turned_h / 5 / 16 * 16))
w=$((turned_w * 7 / 10 / 16 * 16)) h=$((turned_h / 2 / 16 * 16))
fx=$(awk "BEGIN { print $x / $turned_w }") fy=$(awk "BEGIN { print $y / $turned_h }")
fw=$(awk "BEGIN { print $w / $turned_w }") fh=$(awk "BEGIN { print $h / $turned_h }")
echo "photo: $photo (${width}x${height}); crop of the turned photo: ${w}x${h} at ($x, $y)"


ours() { "$cli" "$photo" "$tmp/ours.jpg" "$fx" "$fy" "$fw" "$fh"; }
vips_chain() {
  vips rot "$photo" "$tmp/rot.v" d90
  vips flip "$tmp/rot.v" "$tmp/flip.v" horizontal
  vips extract_area "$tmp/flip.v" "$tmp/vips.jpg[Q=95]" "$x" "$y" "$w" "$h"
}
lossless() { jpegtran -transpose -crop "${w}x${h}+${x}+${y}" -outfile "$tmp/jpegtran.jpg" "$photo"; }

names=(ours vips_chain lossless)
for name in "${names[@]}"; do time_ms "$name" >/dev/null; done  # warm-up
declare -A times
for ((i = 0; i < runs; i++)); do
  for ((k = 0; k < 3; k++)); do
    name=${names[$(((i + k) % 3))]}
    times[$name]+="$(time_ms "$name") "
  done
done

ours_ms=$(median ${times[ours]})
vips_ms=$(median ${times[vips_chain]})
jpegtran_ms=$(median ${times[lossless]})
echo "sizes: ours $(vipsheader "$tmp/ours.jpg" | sed 's/.*: //'), vips $(vipsheader "$tmp/vips.jpg" | sed 's/.*: //')"
printf 'mean absolute difference ours vs vips: %.3f levels\n' \
  "$(vips subtract "$tmp/ours.jpg" "$tmp/vips.jpg" "$tmp/d.v" && vips abs "$tmp/d.v" "$tmp/a.v" && vips avg "$tmp/a.v")"
echo "medians of $runs runs: ours ${ours_ms} ms, vips ${vips_ms} ms, jpegtran ${jpegtran_ms} ms"
awk "BEGIN { printf \"ours / vips %.2f, ours / jpegtran %.2f\n\", $ours_ms / $vips_ms, $ours_ms / $jpegtran_ms }"
