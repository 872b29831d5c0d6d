#!/usr/bin/env bash
# Starts Tamrick on a virtual X display with a picture and saves a PNG of the
# screen. Usage: scripts/screenshot.sh [TAMRICK] [PICTURE] [OUT.png]
set -euo pipefail
cd "$(dirname "$0")/.."
TAMRICK=${1:-build/release/src/tamrick}
PICTURE=${2:-}
OUT=${3:-docs/screenshot.png}
SIZE=${SCREENSHOT_SIZE:-1100x760x24}
mkdir -p "$(dirname "$OUT")"
# A private settings folder, so the shot never depends on (or changes) the user's own.
export XDG_CONFIG_HOME
XDG_CONFIG_HOME=$(mktemp -d)
trap 'rm -rf "$XDG_CONFIG_HOME"' EXIT
args=(--screenshot "$OUT")
if [ -n "$PICTURE" ]; then
  args+=("$PICTURE")
fi
QT_QPA_PLATFORM=xcb timeout 60 xvfb-run -a -s "-screen 0 $SIZE" "$TAMRICK" "${args[@]}"
echo "$OUT"
