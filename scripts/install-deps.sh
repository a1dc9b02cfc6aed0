#!/usr/bin/env bash
# Installs every Debian package that the build, the tests and the demo need
# (with --bench, also what the benchmarks and fuzzers compare with and build with).
# Safe to run again: apt-get skips what is already there. Run as root (or with sudo).
set -euo pipefail

packages=(
  # toolchain and build
  build-essential g++ cmake ninja-build pkg-config ccache clang-format
  # tests and benchmarks
  googletest libgtest-dev libgmock-dev libbenchmark-dev
  # pixels, paths and text
  libpixman-1-dev libcairo2-dev libpango1.0-dev libfontconfig-dev libpng-dev
  # codecs, metadata and downloads
  libturbojpeg0-dev libexif-dev libwebp-dev libgif-dev libcurl4-openssl-dev
  fonts-noto-cjk fonts-dejavu-core
  # data
  nlohmann-json3-dev
)

# The comparison tools and peer libraries of bench/, the fuzzing compiler of fuzz/, the colour emoji font the
# sticker pictures are drawn from (tools/sticker-images) and the wallpapers the bundled phone
# photo is made from (tools/sample-photo) are only needed by those who run them:
# `scripts/install-deps.sh --bench` adds them.
if [ "${1:-}" = "--bench" ]; then
  packages+=(libvips-tools libjpeg-turbo-progs imagemagick ffmpeg time clang libclang-rt-14-dev
             fonts-noto-color-emoji lomiri-wallpapers-16.04 libmypaint-dev)
fi

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q '^install ok installed$' || missing+=("$p")
done

if [ ${#missing[@]} -eq 0 ]; then
  echo "install-deps: all ${#packages[@]} packages present"
  exit 0
fi

SUDO=""
[ "$(id -u)" -eq 0 ] || SUDO="sudo"
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -q
$SUDO apt-get install -y -q --no-install-recommends "${missing[@]}"
