#!/usr/bin/env bash
# Times our JPEG work against the usual command-line tools, one whole process each, so that
# start-up and file input/output count the same for both:
#   - a 12 MP photo read at screen size (long side 1334): ours vs vipsthumbnail, and ours by a
#     full decode and a resample;
#   - the same 12 MP pixels written at quality 95: ours vs cjpeg, with the chroma resolution
#     ours uses at that quality (full) and with cjpeg's default (half) for reference.
# Usage: bench/compare_jpeg.sh [BUILD_DIR] (default build/codec-release; RUNS=10 by default).
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build/codec-release}
runs=${RUNS:-10}
cli=$build/bench/orv_codec_cli
for tool in "$cli" vipsthumbnail cjpeg; do
  command -v "$tool" >/dev/null || { echo "missing: $tool (scripts/install-deps.sh --bench)" >&2; exit 1; }
done

mapfile -t inputs < <("$cli" make-photo)
jpeg=${inputs[0]}
ppm=${inputs[1]}
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

# shellcheck source=bench/measure.sh
source bench/measure.sh

echo "input: $jpeg ($(stat -c %s "$jpeg") bytes), $runs runs each"
echo "-- screen-size read (long side 1334)"
measure "ours, reduced while decoding" "$cli" decode-screen "$jpeg" 1334 "$tmp/ours.ppm"
measure "ours, full decode + resample" "$cli" decode-resize "$jpeg" 1334 "$tmp/full.ppm"
measure "vipsthumbnail -s 1334" vipsthumbnail "$jpeg" -s 1334 -o "$tmp/vips.v"
echo "-- 12 MP encode at quality 95"
measure "ours, 0.95" "$cli" encode "$ppm" "$tmp/ours.jpg" 0.95
measure "cjpeg -quality 95 -sample 1x1" sh -c "cjpeg -quality 95 -sample 1x1 '$ppm' > '$tmp/cjpeg444.jpg'"
measure "cjpeg -quality 95 (4:2:0)" sh -c "cjpeg -quality 95 '$ppm' > '$tmp/cjpeg420.jpg'"
