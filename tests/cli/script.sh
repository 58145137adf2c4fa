#!/usr/bin/env bash
# tessuma-cli script: exit statuses, the FAIL line of a failed expectation
# and the one error line of a malformed scenario.
# Called as: bash script.sh <tessuma-cli> <source dir>
set -u
CLI=$1
TMP=$(mktemp -d)
trap 'rm -rf "$TMP"' EXIT
failures=0

fail() {
    echo "FAILED: $*"
    failures=$((failures + 1))
}

# run NAME EXPECTED_STATUS EXPECTED_OUTPUT SCENARIO_TEXT: runs the text from
# a file and compares the status and the whole standard output.
run() {
    local name=$1 want_status=$2 want_out=$3 text=$4
    printf '%s' "$text" > "$TMP/$name.scn"
    local out status
    out=$("$CLI" script "$TMP/$name.scn" 2>"$TMP/$name.err")
    status=$?
    [ "$status" = "$want_status" ] || fail "$name: status $status, expected $want_status (output: $out)"
    [ "$out" = "$want_out" ] || fail "$name: output
--- got
$out
--- expected
$want_out"
}

# Every expectation holds: status 0 and only what print prints.
run all-hold 0 '1024x768' 'expect Running False
setting Skin "0"
expect Setting(Skin) "0"
print DisplayMode
'

# Failed expectations: status 1, one FAIL line each, the run goes on.
run some-fail 1 'FAIL line 2: Setting(Skin) is "0", expected "1"
FAIL line 4: File(a.txt) is "x\r\ny\\", expected "x"
True
after' 'setting Skin "0"
expect Setting(Skin) "1"
file a.txt "x\r\ny\\"
expect File(a.txt) "x"
print "Exists(a.txt)"
expect Exists(a.txt) True
file b.txt "after"
print File(b.txt)
'

# The scenario from standard input.
out=$(printf 'setting Skin "0"\nexpect Setting(Skin) "1"\nprint Exists(a.txt)\n' | "$CLI" script -)
status=$?
[ "$status" = 1 ] || fail "stdin: status $status, expected 1"
[ "$out" = 'FAIL line 2: Setting(Skin) is "0", expected "1"
False' ] || fail "stdin: output $out"

# Malformed scenarios: status 2, exactly one error line, nothing runs (the
# print of line 1 never shows).
malformed() {
    local name=$1 line=$2 reason=$3 text=$4
    printf 'print DisplayMode\n%s' "$text" > "$TMP/$name.scn"
    local out status
    out=$("$CLI" script "$TMP/$name.scn" 2>/dev/null)
    status=$?
    [ "$status" = 2 ] || fail "$name: status $status, expected 2"
    [ "$(printf '%s\n' "$out" | wc -l)" = 1 ] || fail "$name: more than one line: $out"
    case "$out" in
        "error line $line: "*"$reason"*) ;;
        *) fail "$name: got \"$out\", expected \"error line $line: ...$reason...\"" ;;
    esac
}

malformed unknown-command 3 'unknown command "bogus"' 'start
bogus 1
'
malformed unknown-path 3 'unknown path "lblNothing.Caption"' 'start
print lblNothing.Caption
'
malformed bad-index 3 'txtCell has indices 0 to 80, not 81' 'start
expect txtCell(81).Text ""
'
malformed bad-option-index 3 'lblOption has indices 1 to 10, not 0' 'start
print lblOption(0).Caption
'
malformed call-too-few 3 'txtCell_KeyDown takes 3 arguments' 'start
call txtCell_KeyDown 80 39
'
malformed call-bad-kind 3 'not a Boolean' 'start
call SolveOrCheck 1
'
malformed call-bad-index 3 'out of range 0 to 3' 'start
call mnuDifficulty_Click 4
'
malformed before-start 2 'after start' 'call tmrClock_Timer
start
'
malformed open-quote 5 'not closed' 'start
# fine so far

print "LastMessage
'
malformed set-observation 2 "can't be set" 'set Messages "3"
'

# The command line itself.
"$CLI" script >/dev/null 2>&1
[ $? = 2 ] || fail "no file: status should be 2"
"$CLI" script "$TMP/does-not-exist.scn" >/dev/null 2>"$TMP/err"
[ $? = 2 ] || fail "missing file: status should be 2"
grep -q 'cannot read' "$TMP/err" || fail "missing file: no message on standard error"
out=$(printf '' | "$CLI" script -)
[ $? = 0 ] && [ -z "$out" ] || fail "empty scenario: status 0 and no output expected"

if [ "$failures" -ne 0 ]; then
    echo "$failures check(s) failed"
    exit 1
fi
echo "all checks passed"
