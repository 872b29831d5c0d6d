#!/usr/bin/env bash
# Installs every Debian package Tamrick needs to build, run, test and benchmark.
# Idempotent: packages already present are skipped, and the package lists are
# refreshed at most once per run. Works as root; uses sudo otherwise.
set -euo pipefail

PACKAGES=(
  build-essential
  cmake
  ninja-build
  pkg-config
  clang-format
  qt6-base-dev
  qt6-base-dev-tools
  qt6-qpa-plugins
  libgl-dev
  libjpeg62-turbo-dev
  libgtest-dev
  libgmock-dev
  libbenchmark-dev
  fonts-dejavu-core
  xvfb
  xauth
  libjpeg-turbo-progs
  giflib-tools
  imagemagick
  python3
  clang
  libclang-rt-14-dev
  qt6-image-formats-plugins
  librsvg2-bin
  desktop-file-utils
  appstream
  bash-completion
  man-db
  groff-base
  dpkg-dev
  file
  libvips-tools
  hyperfine
  valgrind
)

# `--desktop-fonts` adds the fonts a typical desktop brings along, for running
# the window tests on a machine that has more than the bare minimum.
if [ "${1:-}" = "--desktop-fonts" ]; then
  PACKAGES+=(fonts-noto-mono fonts-liberation2 fonts-urw-base35 fonts-noto-core)
fi

missing=()
for pkg in "${PACKAGES[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$pkg")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

SUDO=""
if [ "$(id -u)" -ne 0 ]; then
  SUDO="sudo"
fi

echo "Installing: ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -q
$SUDO apt-get install -y -q --no-install-recommends "${missing[@]}"
