#!/usr/bin/env bash
# tamrick-cli apply with the painting, selection and edit operations: results
# land in the file, a floating selection is saved as the application saves
# it, and bad words or options write nothing.
set -uo pipefail
CLI="$1"
WORK="$(mktemp -d)"
trap 'rm -rf "$WORK"' EXIT
cd "$WORK"
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }
expect_rc() { # expected-code description command...
    local want="$1" what="$2"
    shift 2
    "$@" >out.txt 2>err.txt
    local rc=$?
    [ "$rc" -eq "$want" ] || fail "$what: exit $rc, wanted $want ($(cat err.txt))"
}

# A white 24-bit BMP of 20 x 10 with a black column at x = 10.
python3 - <<'PY'
import struct
w, h = 20, 10
rows = bytearray()
for y in range(h):
    row = bytearray()
    for x in range(w):
        row += bytes([0, 0, 0]) if x == 10 else bytes([255, 255, 255])
    row += bytes((-len(row)) % 4)
    rows += row
header = struct.pack('<2sIHHI', b'BM', 54 + len(rows), 0, 0, 54)
info = struct.pack('<IiiHHIIiiII', 40, w, h, 1, 24, 0, len(rows), 2834, 2834, 0, 0)
open('in.bmp', 'wb').write(header + info + rows)
PY

# Width, height and the blue, green, red bytes of pixel (X, Y).
pixel() {
    python3 - "$1" "$2" "$3" <<'PY'
import struct, sys
data = open(sys.argv[1], 'rb').read()
x, y = int(sys.argv[2]), int(sys.argv[3])
w, h = struct.unpack('<ii', data[18:26])
offset = struct.unpack('<I', data[10:14])[0]
row = (w * 3 + 3) // 4 * 4
at = offset + (h - 1 - y) * row + 3 * x
print(w, h, data[at], data[at + 1], data[at + 2])
PY
}

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
for bad in "fill=1" "pen=1,2;3" "brush=1" "select-rect=1,2,3,4,both" "fill-selection=grey"; do
    expect_rc 2 "bad word $bad" "$CLI" apply in.bmp bad.bmp "$bad"
done
expect_rc 2 "bad pen" "$CLI" apply in.bmp bad.bmp --pen 40,1 fill=0,0
expect_rc 2 "bad gradient" "$CLI" apply in.bmp bad.bmp --gradient spiral,rgb fill=0,0
[ ! -e bad.bmp ] || fail "bad.bmp written"

[ "$failures" -eq 0 ] && echo "all engine operation checks passed"
exit "$failures"
