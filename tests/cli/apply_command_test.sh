#!/usr/bin/env bash
# tamrick-cli apply, end to end: every operation runs, results land in the
# file, undo and redo steps count, and bad command lines write nothing.
source "$(dirname "${BASH_SOURCE[0]}")/cli_test_lib.sh" "$1"

# A 24-bit BMP of 20 x 10 with a colour per pixel.
write_bmp in.bmp 20 10 '(x * 12, y * 25, 200)'

# Width, height and the blue, green, red bytes of the top-left pixel.
describe() { pixel "$1" 0 0; }

ops=(invert gray blur-small blur-more blur-large sharpen-small sharpen-more sharpen-large diffuse despeckle
     average emboss=3,4 mosaic=5 find-edge=0,0,20 trace-contour=1,1,0,0 cool-green cool-blue cool-cyan warm-red
     warm-magenta warm-yellow level-red level-green level-blue level-cyan level-magenta level-yellow level-fore
     level-back brightness-contrast=10,20 brightness-contrast=1,2,3,4,5,6 hue-saturation=90,-20 gamma=14
     gamma=8,10,12 flip-h flip-v rotate-left rotate-right rotate=30,ccw rescale=7,9,300 undo redo)
expect_rc 0 "all operations in one run" "$CLI" apply in.bmp all.bmp --seed 3 "${ops[@]}"
[ -s all.bmp ] || fail "all.bmp written"

expect_rc 0 "invert" "$CLI" apply in.bmp inv.bmp invert
[ "$(describe inv.bmp)" = "20 10 255 30 55" ] || fail "invert top-left: $(describe inv.bmp)"
expect_rc 0 "invert then undo" "$CLI" apply in.bmp undone.bmp invert undo
[ "$(describe undone.bmp)" = "20 10 0 225 200" ] || fail "undo: $(describe undone.bmp)"
# The history: three changes taken back one by one give the input again;
# redo walks forward, a new change cuts what was undone, and undo stops at the start.
expect_rc 0 "three strokes undone" "$CLI" apply in.bmp back.bmp 'pen=1,1;18,1' invert 'pen=1,8;18,8' undo undo undo
cmp -s <(tail -c 600 in.bmp) <(tail -c 600 back.bmp) || fail "three undos: the input's pixels"
expect_rc 0 "undo, redo, undo again" "$CLI" apply in.bmp walk.bmp 'pen=0,0;5,0' invert undo undo redo redo undo
expect_rc 0 "the pen alone" "$CLI" apply in.bmp penned.bmp 'pen=0,0;5,0'
cmp -s <(tail -c 600 walk.bmp) <(tail -c 600 penned.bmp) || fail "undo redo walk ends after the pen"
expect_rc 1 "a new change cuts the redo steps" "$CLI" apply in.bmp bad.bmp invert undo gray redo
expect_rc 1 "nothing more to undo" "$CLI" apply in.bmp bad.bmp invert undo undo
expect_rc 0 "rotate and rescale sizes" "$CLI" apply in.bmp turned.bmp rotate-left rescale=5,40
[ "$(describe turned.bmp | cut -d' ' -f1-2)" = "5 40" ] || fail "sizes: $(describe turned.bmp)"
expect_rc 0 "level to the foreground" "$CLI" apply in.bmp fore.bmp --foreground 102030 gray level-fore
expect_rc 0 "seeded diffuse repeats" "$CLI" apply in.bmp d1.bmp --seed 9 diffuse
expect_rc 0 "seeded diffuse again" "$CLI" apply in.bmp d2.bmp --seed 9 diffuse
cmp -s d1.bmp d2.bmp || fail "same seed, same diffusion"

expect_rc 2 "unknown operation" "$CLI" apply in.bmp bad.bmp sharpen-huge
expect_rc 2 "no operation" "$CLI" apply in.bmp bad.bmp
expect_rc 2 "bad value" "$CLI" apply in.bmp bad.bmp mosaic=x
expect_rc 2 "out of range" "$CLI" apply in.bmp bad.bmp rotate=360
grep -q "The degree is out of the range (0..359)." err.txt || fail "rotate range message"
expect_rc 2 "beyond the largest picture side" "$CLI" apply in.bmp bad.bmp rescale=30001,10
grep -q "The width is out of the range (1..30000 pixels)." err.txt || fail "rescale range message"
expect_rc 2 "bad colour" "$CLI" apply in.bmp bad.bmp --background FFF invert
expect_rc 2 "bad quality" "$CLI" apply in.bmp bad.jpg --quality 0 invert
grep -q "The quality value is out of range (1..100)." err.txt || fail "quality message"
[ ! -e bad.bmp ] && [ ! -e bad.jpg ] || fail "a usage error wrote a file"
expect_rc 1 "missing input" "$CLI" apply missing.bmp bad.bmp invert
expect_rc 1 "nothing to redo" "$CLI" apply in.bmp bad.bmp invert redo
[ ! -e bad.bmp ] || fail "a failed run wrote a file"

[ "$failures" -eq 0 ] && echo "all apply checks passed"
exit "$failures"
