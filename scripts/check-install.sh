#!/usr/bin/env bash
# Installs a built tree (default build/release) into a temporary prefix and
# checks the result as a desktop would see it: with the build folder moved
# out of reach, the installed tamrick-cli prints its version and the
# installed tamrick starts (offscreen) and shows its window; the desktop
# entry and the metainfo pass their validators; the manual pages format.
set -euo pipefail
cd "$(dirname "$0")/.."
BUILD="${1:-build/release}"
APP_ID=com.quorvane.Tamrick

prefix="$(mktemp -d)"
away="$(mktemp -d)"
restore() {
    [ -d "$away/build" ] && mv "$away/build" "$BUILD"
    rm -rf "$prefix" "$away"
}
trap restore EXIT

cmake --install "$BUILD" --prefix "$prefix" >/dev/null
mv "$BUILD" "$away/build"

"$prefix/bin/tamrick-cli" --version
QT_QPA_PLATFORM=offscreen timeout 60 "$prefix/bin/tamrick" --screenshot "$prefix/started.png"
[ -s "$prefix/started.png" ] || { echo "the installed tamrick showed no window"; exit 1; }

desktop-file-validate "$prefix/share/applications/$APP_ID.desktop"
appstreamcli validate --no-net "$prefix/share/metainfo/$APP_ID.metainfo.xml"
for size in 16 22 24 32 48 64 128 256; do
    [ -s "$prefix/share/icons/hicolor/${size}x${size}/apps/$APP_ID.png" ] || { echo "no ${size}px icon"; exit 1; }
done
[ -s "$prefix/share/icons/hicolor/scalable/apps/$APP_ID.svg" ] || { echo "no scalable icon"; exit 1; }
[ -s "$prefix/share/bash-completion/completions/tamrick-cli" ] || { echo "no bash completion"; exit 1; }
for page in tamrick tamrick-cli; do
    man -l "$prefix/share/man/man1/$page.1" >/dev/null
done
echo "install check passed"
