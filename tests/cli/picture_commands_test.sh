#!/usr/bin/env bash
# tamrick-cli info and convert, end to end: outputs, exit codes, messages, and
# that a failed run never leaves a partial or temporary output file.
source "$(dirname "${BASH_SOURCE[0]}")/cli_test_lib.sh" "$1"

# A 24-bit BMP of 40 x 30, built byte by byte.
write_bmp in.bmp 40 30 '(x * 6, y * 8, 100)'

expect_rc 0 "info bmp" "$CLI" info in.bmp
grep -qx 'type: bmp' out.txt || fail "info type"
grep -qx 'width: 40' out.txt || fail "info width"
grep -qx 'file-height: 30' out.txt || fail "info file height"
grep -qx 'dpi: 72 72' out.txt || fail "info dpi"
grep -qx 'reduced: 0' out.txt || fail "info reduced"
grep -Eqx 'load-limits: [0-9]+ [0-9]+' out.txt || fail "info shows the limits in force"
grep -qx 'alpha: 0' out.txt || fail "an opaque file has no alpha"
[ "$(wc -l <out.txt)" -eq 9 ] || fail "info prints nine lines"

# A PNG with one translucent pixel reports its transparency.
python3 - <<'PY'
import struct, zlib
rows = b"".join(b"\0" + b"".join(struct.pack("4B", 200, 10, 10, 128 if (x, y) == (1, 1) else 255) for x in range(3)) for y in range(3))
def chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data) & 0xFFFFFFFF)
png = b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", 3, 3, 8, 6, 0, 0, 0)) + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b"")
open("alpha.png", "wb").write(png)
PY
expect_rc 0 "info png" "$CLI" info alpha.png
grep -qx 'alpha: 1' out.txt || fail "a translucent pixel is reported as alpha"

expect_rc 0 "info reduced" "$CLI" info in.bmp --max-size 10,10
grep -qx 'width: 20' out.txt && grep -qx 'height: 15' out.txt && grep -qx 'reduced: 1' out.txt || fail "reduced load"
grep -qx 'load-limits: 10 10' out.txt || fail "info shows --max-size as the limits"

for ext in jpg JPEG gif png bmp; do
    expect_rc 0 "convert to $ext" "$CLI" convert in.bmp "out.$ext" --quality 90
    [ -s "out.$ext" ] || fail "out.$ext written"
    [ ! -e "out.$ext.xxx" ] || fail "out.$ext temporary left"
done
for pair in out.gif:gif out.JPEG:jpeg out.png:other; do
    expect_rc 0 "info ${pair%%:*}" "$CLI" info "${pair%%:*}"
    grep -qx "type: ${pair##*:}" out.txt || fail "type of ${pair%%:*}"
done

# Failures: the message on stderr, exit 1, the old output untouched.
printf 'old' >keep.jpg
printf 'BM garbage' >bad.bmp
expect_rc 1 "bad input" "$CLI" convert bad.bmp keep.jpg
grep -qx 'Unable to open this image file !' err.txt || fail "message for a bad file"
[ "$(cat keep.jpg)" = "old" ] || fail "old output kept"
expect_rc 1 "missing input" "$CLI" convert missing.bmp keep.jpg
expect_rc 1 "info of a folder" "$CLI" info .
mkdir taken.bmp
expect_rc 1 "output is a folder" "$CLI" convert in.bmp taken.bmp
[ -d taken.bmp ] && [ ! -e taken.bmp.xxx ] || fail "folder output"

# Unknown output types are refused before anything is read, listing the types.
for out in q.tif q.xyz noextension; do
    expect_rc 2 "unknown type $out" "$CLI" convert in.bmp "$out"
    grep -q '\.bmp, \.gif, \.jpg, \.jpeg, \.png' err.txt || fail "types listed for $out"
    [ ! -e "$out" ] || fail "$out written"
done
expect_rc 2 "apply to an unknown type" "$CLI" apply in.bmp q.tif gray
# The system's reason for a failed write.
ln -s /dev/null device.bmp
expect_rc 1 "write onto a device" "$CLI" convert in.bmp device.bmp
grep -q 'It is not a regular file' err.txt || fail "reason for a device"
[ -L device.bmp ] || fail "link to a device kept"

# Usage errors: exit 2 and nothing written.
expect_rc 2 "no arguments" "$CLI" convert
expect_rc 2 "one path" "$CLI" convert in.bmp
expect_rc 2 "bad quality" "$CLI" convert in.bmp q.jpg --quality 101
grep -q 'out of range' err.txt || fail "quality message"
expect_rc 2 "bad size" "$CLI" convert in.bmp q.jpg --max-size 10x10
expect_rc 2 "unknown option" "$CLI" convert in.bmp q.jpg --fast
expect_rc 2 "info without file" "$CLI" info
[ ! -e q.jpg ] || fail "usage error wrote output"

[ "$failures" -eq 0 ] && echo "all picture command checks passed"
exit "$failures"
