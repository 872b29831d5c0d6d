#!/usr/bin/env bash
# Builds the libFuzzer targets of the file readers with clang and runs each for
# FUZZ_SECONDS (default 20) from a small seed corpus of valid pictures. A crash
# stops the run with the input saved under build/fuzz/crashes/; turn such
# inputs into byte arrays in tests/formats/ so they stay fixed. A single input
# may run for up to two minutes: under the sanitizers a run-length file of a
# few tens of kilobytes that declares the largest picture the load budget
# allows takes seconds to make that picture (a fraction of a second without
# them).
set -euo pipefail
cd "$(dirname "$0")/.."
SECONDS_EACH="${FUZZ_SECONDS:-20}"
JOBS="${JOBS:-2}"
BUILD=build/fuzz
cmake -S . -B "$BUILD" -G Ninja -Wno-dev -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++ \
  -DTAMRICK_FUZZ=ON -DTAMRICK_BUILD_BENCH=OFF >/dev/null
cmake --build "$BUILD" --target fuzz_BmpReader fuzz_LoadPicture -j "$JOBS"

SEEDS="$BUILD/seeds"
mkdir -p "$SEEDS" "$BUILD/crashes"
if command -v convert >/dev/null; then
  convert -size 7x5 gradient:red-blue -type TrueColor "BMP3:$SEEDS/true.bmp"
  convert -size 9x3 gradient:red-blue -colors 16 -type Palette "BMP3:$SEEDS/pal.bmp"
  convert -size 9x3 gradient:red-blue -colors 16 -type Palette -compress RLE "BMP3:$SEEDS/rle.bmp"
  convert -size 9x3 gradient:red-blue -alpha set "BMP:$SEEDS/v5.bmp"
  convert -size 9x3 gradient:red-blue -define bmp:subtype=RGB565 "BMP:$SEEDS/565.bmp"
  convert -size 8x8 gradient:red-blue -colorspace CMYK "$SEEDS/cmyk.jpg"
  convert -size 8x8 gradient:red-blue "$SEEDS/a.jpg"
  convert -size 8x8 gradient:red-blue "$SEEDS/a.gif"
  convert -size 8x8 gradient:red-blue "$SEEDS/a.png"
fi
status=0
for target in BmpReader LoadPicture; do
  mkdir -p "$BUILD/corpus/$target"
  echo "fuzzing $target for ${SECONDS_EACH}s"
  log="$BUILD/$target.log"
  "$BUILD/tests/fuzz_$target" "$BUILD/corpus/$target" "$SEEDS" -max_total_time="$SECONDS_EACH" \
    -max_len=4096 -rss_limit_mb=2048 -timeout=120 -artifact_prefix="$BUILD/crashes/$target-" -print_final_stats=1 \
    >"$log" 2>&1 || status=1
  grep -E '^(stat::number_of_executed_units|==[0-9]+==ERROR|SUMMARY)' "$log" || true
done
if [ "$status" -ne 0 ]; then
  echo "a fuzzer found a failing input; see $BUILD/crashes/ and the logs in $BUILD/"
fi
exit "$status"
