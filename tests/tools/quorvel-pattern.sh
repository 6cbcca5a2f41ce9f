#!/bin/sh
# Runs the Windows build of quorvel-pattern (under Wine) the way a
# configuration author does: UTF-8 arguments and pipes, exit codes, LF lines.
# Usage: quorvel-pattern.sh RUNNER EXE
set -u
run="$1"; exe="$2"; fail=0

expect() {  # expect NAME EXPECTED-OUTPUT EXPECTED-CODE ACTUAL-OUTPUT ACTUAL-CODE
    if [ "$4" != "$2" ] || [ "$5" != "$3" ]; then
        printf 'FAIL %s: got code %s\n%s\nexpected code %s\n%s\n' "$1" "$5" "$4" "$3" "$2"; fail=1
    else
        printf 'ok   %s\n' "$1"
    fi
}

out=$("$run" "$exe" check '(+|-)#?' -12 +5 '+-1'); code=$?
expect check "$(printf 'accepted\naccepted\nrefused')" 1 "$out" $code

out=$("$run" "$exe" check '[été|hiver]?' 'étéhi'); code=$?
expect utf8-args accepted 0 "$out" $code

out=$(printf '[été|hiver]\tét\r\n#?\t1x\nno tab\n#5?(.|,)(#2?)\t12,5' | "$run" "$exe" --batch); code=$?
expect batch "$(printf '1\n0\nerror: line 3 has no tab between pattern and text\n1')" 1 "$out" $code

out=$("$run" "$exe" explain '#?' '1ü'); code=$?
expect explain-utf8 "$(printf 'prefix: "1" (1 of 2 characters)\nrefused '"'ü'"' at position 2: the pattern ends before the text')" 1 "$out" $code

"$run" "$exe" lint >/dev/null 2>&1; code=$?
expect usage "" 2 "" $code
exit $fail
