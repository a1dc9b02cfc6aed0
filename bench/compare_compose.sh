#!/usr/bin/env bash
# Times the sticker composition against the usual command-line tools, one whole run each on the
# same inputs (bench/ComposeScene.h): the 12 MP camera JPEG decoded, ten stickers scaled and
# turned clockwise to their places (some over the photo's edges), the water mark's picture and
# text stamped at the bottom right, the result written as a JPEG at quality 92.
#   - ours:        orv_compose_cli compose, one process;
#   - libvips:     `vips similarity` for each sticker into a .v file, then one `vips composite`
#                  of them all on the photo, written straight to the JPEG (a script of eleven
#                  commands, timed as a whole);
#   - ImageMagick: one `convert` command with -resize, -rotate and -composite.
# The peers cannot lay out our text, so they get the water mark's text as the ready picture ours
# draws (mark-text.png) and stamp it, like the mark's picture, where ours puts it (marks.txt).
# Reported: best and mean wall time, and the peak memory (the largest resident size any one
# process of the run reached, from /usr/bin/time). The three results stay in OUT_DIR to look at.
# Usage: bench/compare_compose.sh [BUILD_DIR] (default build/release; RUNS=5 by default;
#        OUT_DIR defaults to BUILD_DIR/compose-results; CONVERT names ImageMagick's convert).
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build/release}
runs=${RUNS:-5}
out=${OUT_DIR:-$build/compose-results}
convert=${CONVERT:-convert}
cli=$build/bench/orv_compose_cli
for tool in "$cli" vips vipsheader "$convert" /usr/bin/time; do
  command -v "$tool" >/dev/null || { echo "missing: $tool (scripts/install-deps.sh --bench)" >&2; exit 1; }
done

inputs=$build/bench-data/compose
mapfile -t written < <("$cli" make-inputs "$inputs")
photo=${written[0]:-}
[ -f "$photo" ] || { echo "cannot make the inputs with $cli" >&2; exit 1; }
mkdir -p "$out"
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
read -r width height < <(vipsheader -f width "$photo" | tr '\n' ' '; vipsheader -f height "$photo")

# ---- libvips: one similarity scales and turns a sticker, as the layout keeps each picture's
# proportions. The stickers are turned once beforehand only to learn the size of each result,
# which places its centre; the timed script does the same work again.
vips_script=$tmp/vips.sh
vips_images=("$photo") vips_x=() vips_y=()
i=0
while read -r file cx cy w h deg; do
  pw=$(vipsheader -f width "$inputs/$file")
  scale=$(awk -v w="$w" -v pw="$pw" 'BEGIN { printf "%.6f", w / pw }')
  turned=$tmp/sticker-$i.v
  cmd="vips similarity '$inputs/$file' '$turned' --scale $scale --angle $deg"
  echo "$cmd" >>"$vips_script"
  eval "$cmd"
  ow=$(vipsheader -f width "$turned")
  oh=$(vipsheader -f height "$turned")
  vips_images+=("$turned")
  vips_x+=("$(awk -v c="$cx" -v s="$ow" 'BEGIN { printf "%d", int(c - s / 2 + 1000000.5) - 1000000 }')")
  vips_y+=("$(awk -v c="$cy" -v s="$oh" 'BEGIN { printf "%d", int(c - s / 2 + 1000000.5) - 1000000 }')")
  i=$((i + 1))
done <"$inputs/layout.txt"
while read -r file left top; do
  vips_images+=("$inputs/$file")
  vips_x+=("$left")
  vips_y+=("$top")
done <"$inputs/marks.txt"
# 2 is VIPS_BLEND_MODE_OVER; the command line takes the modes as numbers.
modes=$(printf '2 %.0s' "${vips_x[@]}")
echo "vips composite '${vips_images[*]}' '$out/vips.jpg[Q=92]' '$modes' --x '${vips_x[*]}' --y '${vips_y[*]}'" >>"$vips_script"

# ---- ImageMagick: each sticker resized, turned on a clear background and laid with its centre
# at the offset from the photo's centre; then the marks by their top left corners.
im_args=("$photo" -background none)
while read -r file cx cy w h deg; do
  geometry=$(awk -v x="$cx" -v y="$cy" -v W="$width" -v H="$height" \
    'BEGIN { printf "%+d%+d", int(x - W / 2 + 1000000.5) - 1000000, int(y - H / 2 + 1000000.5) - 1000000 }')
  size=$(awk -v w="$w" -v h="$h" 'BEGIN { printf "%.0fx%.0f!", w, h }')
  im_args+=(\( "$inputs/$file" -resize "$size" -rotate "$deg" \) -gravity center -geometry "$geometry" -composite)
done <"$inputs/layout.txt"
while read -r file left top; do
  im_args+=("$inputs/$file" -gravity northwest -geometry "+$left+$top" -composite)
done <"$inputs/marks.txt"
# Full chroma resolution, as ours and libvips write at this quality.
im_args+=(-quality 92 -sampling-factor 1x1 "$out/imagemagick.jpg")

# Best and mean wall time in milliseconds and the peak resident size of a command, after one
# warm-up run.
measure() {
  local label=$1 result=$2
  shift 2
  rm -f "$result"
  "$@" >/dev/null 2>&1 || { echo "failed: $*" >&2; exit 1; }
  [ -s "$result" ] || { echo "no result from: $label ($result)" >&2; exit 1; }
  local best=0 total=0 peak=0 start elapsed rss
  for ((n = 0; n < runs; n++)); do
    start=$(date +%s%N)
    /usr/bin/time -f %M -o "$tmp/rss" "$@" >/dev/null 2>&1
    elapsed=$((($(date +%s%N) - start) / 1000))
    rss=$(tail -1 "$tmp/rss")
    total=$((total + elapsed))
    ((best == 0 || elapsed < best)) && best=$elapsed
    ((rss > peak)) && peak=$rss
  done
  awk -v l="$label" -v b="$best" -v t="$total" -v n="$runs" -v m="$peak" \
    'BEGIN { printf "%-14s best %7.1f ms   mean %7.1f ms   peak RSS %6.1f MB\n", l, b / 1000, t / n / 1000, m / 1024 }'
}

echo "input: $photo (${width}x$height, $(stat -c %s "$photo") bytes), $runs runs each"
echo "-- our stages (one run)"
"$cli" compose "$photo" "$inputs" "$out/ours.jpg" 2>/dev/null | sed 's/^/   /'
echo "-- ten stickers and a water mark, JPEG at quality 92"
measure "ours" "$out/ours.jpg" "$cli" compose "$photo" "$inputs" "$out/ours.jpg"
measure "libvips" "$out/vips.jpg" sh "$vips_script"
measure "ImageMagick" "$out/imagemagick.jpg" "$convert" "${im_args[@]}"
echo "results: $out/ours.jpg $out/vips.jpg $out/imagemagick.jpg"
