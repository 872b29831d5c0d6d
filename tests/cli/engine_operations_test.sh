#!/usr/bin/env bash
# tamrick-cli apply with the painting, selection and edit operations: results
# land in the file, a floating selection is saved as the application saves
# it, and bad words or options write nothing.
source "$(dirname "${BASH_SOURCE[0]}")/cli_test_lib.sh" "$1"

# A white 24-bit BMP of 20 x 10 with a black column at x = 10.
write_bmp in.bmp 20 10 '(0, 0, 0) if x == 10 else (255, 255, 255)'

expect_rc 0 "fill" "$CLI" apply in.bmp fill.bmp --foreground 00FF00 --tolerance 0 fill=0,0
[ "$(pixel fill.bmp 9 9)" = "20 10 0 255 0" ] || fail "fill left of the wall: $(pixel fill.bmp 9 9)"
[ "$(pixel fill.bmp 11 0)" = "20 10 255 255 255" ] || fail "fill stops at the wall: $(pixel fill.bmp 11 0)"

expect_rc 0 "pen and eraser" "$CLI" apply in.bmp pen.bmp --pen 1,2 --foreground FF0000 "pen=1,1;5,1" eraser=3,1
[ "$(pixel pen.bmp 2 1)" = "20 10 0 0 255" ] || fail "pen: $(pixel pen.bmp 2 1)"
[ "$(pixel pen.bmp 3 1)" = "20 10 255 255 255" ] || fail "eraser: $(pixel pen.bmp 3 1)"

ops=(gradient=0,0,19,9 line=0,0,19,9 rect=1,1,8,8,1 ellipse=2,2,17,7,2 "brush=3,1,1;18,8" "brush=12,1,8;18,1"
     "tablet=7,1,1;18,8" "tablet=10,18,1;1,8" select-all invert-selection select-rect=1,1,8,8
     select-ellipse=5,2,15,8,add wand=0,0,sub move-floating=2,1 put-floating clear fill-selection=black
     discard-floating undo redo select-rect=0,0,4,4 crop undo)
expect_rc 0 "every operation in one run" "$CLI" apply in.bmp all.bmp --seed 5 --gradient cone,hue-cw "${ops[@]}"
[ -s all.bmp ] || fail "all.bmp written"

expect_rc 0 "floating pixels are not saved" "$CLI" apply in.bmp float.bmp select-rect=0,0,4,4 fill-selection=black
[ "$(pixel float.bmp 0 0)" = "20 10 255 255 255" ] || fail "floating pixels saved: $(pixel float.bmp 0 0)"
expect_rc 0 "put down, they are" "$CLI" apply in.bmp put.bmp select-rect=0,0,4,4 fill-selection=black put-floating
[ "$(pixel put.bmp 0 0)" = "20 10 0 0 0" ] || fail "put floating: $(pixel put.bmp 0 0)"
expect_rc 0 "crop" "$CLI" apply in.bmp crop.bmp select-rect=2,3,8,7 crop
[ "$(pixel crop.bmp 0 0)" = "7 5 255 255 255" ] || fail "crop size: $(pixel crop.bmp 0 0)"
expect_rc 0 "wand selects the left area" "$CLI" apply in.bmp wand.bmp --background 000000 wand=0,0 clear put-floating
[ "$(pixel wand.bmp 0 0)" = "20 10 0 0 0" ] || fail "wand left area cleared: $(pixel wand.bmp 0 0)"
[ "$(pixel wand.bmp 19 0)" = "20 10 255 255 255" ] || fail "wand right area untouched: $(pixel wand.bmp 19 0)"

expect_rc 1 "crop without a selection" "$CLI" apply in.bmp none.bmp crop
expect_rc 1 "no redo after undoing a crop" "$CLI" apply in.bmp none.bmp select-rect=0,0,4,4 crop undo redo
[ ! -e none.bmp ] || fail "none.bmp written"
# Coordinates at the ends of the int range: kept in range (the sanitizer
# build checks the arithmetic), and a 200 million pixel ellipse takes no
# longer than a small one.
far=(--gradient radial,rgb gradient=-2147483648,0,2147483647,2147483647 ellipse=0,-100000000,50,100000000,1
     rect=-2147483648,-2147483648,2147483647,5 "pen=1,1;2147483647,2147483647" select-rect=1,1,5,5
     move-floating=2147483647,2147483647 move-floating=2147483647,1 put-floating)
expect_rc 0 "far coordinates" timeout 20 "$CLI" apply in.bmp far.bmp "${far[@]}"
[ "$(pixel far.bmp 19 0)" = "20 10 255 0 0" ] || fail "far rectangle: $(pixel far.bmp 19 0)"
for bad in "fill=1" "pen=1,2;3" "brush=1" "select-rect=1,2,3,4,both" "fill-selection=grey" "fill-selection=7" \
    "rect=0,0,5,5,3" "fill=0,2147483648"; do
    expect_rc 2 "bad word $bad" "$CLI" apply in.bmp bad.bmp "$bad"
done
expect_rc 2 "bad pen" "$CLI" apply in.bmp bad.bmp --pen 40,1 fill=0,0
expect_rc 2 "bad gradient" "$CLI" apply in.bmp bad.bmp --gradient spiral,rgb fill=0,0
expect_rc 2 "bad similarity" "$CLI" apply in.bmp bad.bmp --erase-similar 256 eraser=0,0
[ ! -e bad.bmp ] || fail "bad.bmp written"

[ "$failures" -eq 0 ] && echo "all engine operation checks passed"
exit "$failures"
