#!/usr/bin/env bash
# tessuma-cli solve: output format, both input forms, bad lines.
# Called as: bash solve.sh <tessuma-cli> <source dir>
set -u
CLI="$1"
WORK="$(mktemp -d)"
trap 'rm -rf "$WORK"' EXIT

passed=0
failed=0
check() {  # check NAME EXPECTED ACTUAL
    if [ "$2" == "$3" ]; then
        passed=$((passed + 1))
    else
        failed=$((failed + 1))
        printf 'FAIL %s\n  expected: %s\n  actual:   %s\n' "$1" "$2" "$3"
    fi
}

EMPTY=$(printf '0%.0s' $(seq 81))
EMPTY_SOLVED="943516278175832694286974531321748956467295813598361742612457389734689125859123467"
ONE_SOLVED="192635748345278961678914523231756894456891372987342615513467289724589136869123457"
FIVES="55${EMPTY:2}"

# --- Good input: one output line per puzzle, in order -----------------------
{
    echo "$EMPTY"
    echo "1${EMPTY:1}" | tr 0 .
    echo "$FIVES"
} >"$WORK/good.txt"
"$CLI" solve <"$WORK/good.txt" >"$WORK/out" 2>"$WORK/err"
check "good input exit status" 0 $?
check "good input line 1" "$EMPTY_SOLVED true 43" "$(sed -n 1p "$WORK/out")"
check "good input line 2" "$ONE_SOLVED true 42" "$(sed -n 2p "$WORK/out")"
check "good input line 3 (no completion)" \
    "551000000976000000432000000000000000000000000000000000000000000000000000000000000 false 8801" \
    "$(sed -n 3p "$WORK/out")"
check "good input line count" 3 "$(wc -l <"$WORK/out")"
check "good input no errors" "" "$(cat "$WORK/err")"

# --- CR LF line ends, "|" separators, last line without newline ---------------
printf '%s|%s|%s\r\n%s' "${EMPTY:0:27}" "${EMPTY:27:27}" "${EMPTY:54}" "$EMPTY" >"$WORK/crlf.txt"
"$CLI" solve <"$WORK/crlf.txt" >"$WORK/out" 2>"$WORK/err"
check "crlf exit status" 0 $?
check "crlf output" "$EMPTY_SOLVED true 43
$EMPTY_SOLVED true 43" "$(cat "$WORK/out")"

# --- Bad lines: named on stderr, others still solved, status 1 ----------------
{
    echo "$EMPTY"
    echo "${EMPTY:1}"        # 80 cells
    echo "1${EMPTY:1}"
    echo "x${EMPTY:1}"       # strange character
    echo "$EMPTY"
} >"$WORK/bad.txt"
"$CLI" solve <"$WORK/bad.txt" >"$WORK/out" 2>"$WORK/err"
check "bad input exit status" 1 $?
check "bad input solves the good lines" "$EMPTY_SOLVED true 43
$ONE_SOLVED true 42
$EMPTY_SOLVED true 43" "$(cat "$WORK/out")"
check "bad input reports two lines" 2 "$(wc -l <"$WORK/err")"
check "bad input names line 2" 1 "$(grep -c 'line 2: .*80 cells' "$WORK/err")"
check "bad input names line 4" 1 "$(grep -c "line 4: .*'x'" "$WORK/err")"

# --- --givens: the board code, 'A'..'I' given, anything else empty ------------
# A bank-style entry: given 1 in cell 0, every other cell its solution digit,
# a hinted letter and an entered letter that must not count as givens.
CODE="A${EMPTY_SOLVED:1}"
CODE="${CODE:0:10}J${CODE:11:30}S${CODE:42}"
printf '%s|%s|%s\n' "${CODE:0:27}" "${CODE:27:27}" "${CODE:54}" >"$WORK/givens.txt"
"$CLI" solve --givens <"$WORK/givens.txt" >"$WORK/out" 2>"$WORK/err"
check "givens exit status" 0 $?
check "givens output" "$ONE_SOLVED true 42" "$(cat "$WORK/out")"
# Digits are empty cells in this form, so a plain digit line is an empty board.
echo "$ONE_SOLVED" | "$CLI" solve --givens >"$WORK/out" 2>&1
check "givens reads digits as empty" "$EMPTY_SOLVED true 43" "$(cat "$WORK/out")"

# --- Unknown option ------------------------------------------------------------
echo "$EMPTY" | "$CLI" solve --fast >"$WORK/out" 2>"$WORK/err"
check "unknown option exit status" 2 $?
check "unknown option names it" 1 "$(grep -c -- '--fast' "$WORK/err")"

echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
