# Shared set-up of the tamrick-cli end-to-end scripts. Source it with the path
# of tamrick-cli as its argument: it makes a scratch folder, enters it, and
# defines the checks below. Each script ends with `finish NAME`.
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

# write_bmp FILE WIDTH HEIGHT EXPR: a 24-bit BMP at 72 dpi whose pixel (x, y)
# has the blue, green, red bytes of the Python expression EXPR.
write_bmp() {
    python3 - "$@" <<'PY'
import struct, sys
path, w, h, expr = sys.argv[1], int(sys.argv[2]), int(sys.argv[3]), sys.argv[4]
rows = bytearray()
for y in range(h):
    row = bytearray()
    for x in range(w):
        row += bytes(eval(expr))
    row += bytes((-len(row)) % 4)
    rows += row
header = struct.pack('<2sIHHI', b'BM', 54 + len(rows), 0, 0, 54)
info = struct.pack('<IiiHHIIiiII', 40, w, h, 1, 24, 0, len(rows), 2834, 2834, 0, 0)
open(path, 'wb').write(header + info + rows)
PY
}

# pixel FILE X Y: prints the width, the height and the blue, green, red bytes
# of pixel (X, Y) of a 24-bit BMP.
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

finish() {
    [ "$failures" -eq 0 ] && echo "all $1 checks passed"
    exit "$failures"
}
