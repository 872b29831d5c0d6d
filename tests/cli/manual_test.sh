#!/usr/bin/env bash
# The manual pages and the bash completion that the build installs: the pages
# format without macro errors and name every operation the program accepts,
# the help text is the same manual, and the completion offers commands,
# options, operations and file names where each belongs.
source "$(dirname "$0")/cli_test_lib.sh" "$1"
APP="$2"

"$CLI" --man >tamrick-cli.1 || fail "tamrick-cli --man exits non-zero (an option lacks its description?)"
"$APP" --man >tamrick.1 || fail "tamrick --man exits non-zero"
for page in tamrick-cli.1 tamrick.1; do
    warnings=$(groff -man -wmac -Wbreak -z "$page" 2>&1)
    [ -z "$warnings" ] || fail "$page: $warnings"
    for section in NAME SYNOPSIS DESCRIPTION OPTIONS "EXIT STATUS" EXAMPLES "SEE ALSO"; do
        grep -q "^\.SH $section\$" "$page" || fail "$page has no $section section"
    done
done
grep -q '^Usage: tamrick' <("$APP" --help) || fail "tamrick --help prints no usage"
[ "$("$APP" --version)" = "$("$CLI" --version | sed 's/-cli//')" ] || fail "the two programs disagree on the version"

# Every operation in the manual is one that apply accepts, and the help text
# lists the same operations as the manual.
write_bmp in.bmp 8 8 '(x * 30, y * 30, 128)'
operations=$(sed -n '/^\.SH IMAGE OPERATIONS/,/^\.SH EXIT/p' tamrick-cli.1 |
    awk '/^\.TP/ { getline; print }' | sed 's/\\fB//; s/\\fR//; s/\\-/-/g; s/\\://g; s/[=[].*//')
[ "$(echo "$operations" | wc -l)" -gt 50 ] || fail "the manual lists too few operations"
"$CLI" --help >help.txt
for op in $operations; do
    grep -q "^  $op\b" help.txt || fail "--help does not list $op"
    "$CLI" apply in.bmp out.bmp "$op" >/dev/null 2>err.txt
    ! grep -q "unknown operation" err.txt || fail "the manual lists $op, which apply does not know"
done
# Every option the manual describes is one its commands read.
for option in --foreground=00FF00 --background=000000 --quality=50 --max-size=100,100 --seed=3 \
    --pen=4,2 --tolerance=10 --continuous=0 --gradient=radial,hue-cw; do
    name=${option%%=*}
    grep -qF "\fB${name//-/\\-} " tamrick-cli.1 || fail "the manual does not describe $name"
    expect_rc 0 "apply ${option%%=*}" "$CLI" apply in.bmp out.bmp "${option%%=*}" "${option#*=}" invert
done

# Completion, as bash runs it: COMP_LINE up to the cursor.
"$CLI" --bash-completion >completion.bash
complete_line() {
    bash -c 'source ./completion.bash; COMP_LINE="$1"; COMP_POINT=${#1}; _tamrick_cli; printf "%s\n" "${COMPREPLY[@]}"' _ "$1"
}
[ "$(complete_line 'tamrick-cli ap')" = apply ] || fail "no completion of the command apply"
[ "$(complete_line 'tamrick-cli convert in.bmp out.gif --q')" = --quality ] || fail "no completion of --quality"
complete_line 'tamrick-cli info i' | grep -x in.bmp >/dev/null || fail "no file name completion for FILE"
complete_line 'tamrick-cli apply in.bmp o' | grep -x out.bmp >/dev/null || fail "no file name completion for OUT"
[ "$(complete_line 'tamrick-cli apply in.bmp out.bmp --pen 4,2 rotate=30 gr' | sort | tr '\n' ' ')" = \
    "gradient gray " ] || fail "operation completion after IN, OUT, an option and an operation"
[ -z "$(complete_line 'tamrick-cli apply in.bmp out.bmp --tolerance ')" ] || fail "an option value was completed"
[ -z "$(complete_line 'tamrick-cli info in.bmp --max-size 10,10 ')" ] || fail "info offered operations"

finish manual_and_completion
