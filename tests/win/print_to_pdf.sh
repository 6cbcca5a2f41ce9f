#!/bin/sh
# Prints a list with the library's print-list object under Wine to a CUPS
# PDF printer and checks the PDF with poppler's tools: as many pages as the
# object laid out, the header row on every page, the rows, the page numbers.
#
#   print_to_pdf.sh <winrun.sh> <qvw_print_list_object_test.exe>
#
# The printer ("QuorvelPDF", cups-pdf) is set up on the way when it is
# missing, and the CUPS scheduler started for the run when it is not running
# (as root, without systemd). Without CUPS, cups-pdf or poppler, or when the scheduler
# does not come up, the test is skipped (exit 77) with the reason; every CUPS
# command is time-limited, so nothing here waits long.
set -u
winrun=$1
exe=$2
queue=QuorvelPDF
PATH=$PATH:/usr/sbin:/usr/bin
export PATH

skip() { echo "SKIP: $*"; exit 77; }
fail() { echo "FAIL: $*"; exit 1; }
scheduler_up() { timeout 5 lpstat -r 2>/dev/null | grep -q "is running"; }

for tool in cupsd lpadmin lpstat pdfinfo pdftotext; do
  command -v "$tool" >/dev/null 2>&1 || skip "$tool is not installed (cups, printer-driver-cups-pdf, poppler-utils)"
done
[ -x /usr/lib/cups/backend/cups-pdf ] || skip "the cups-pdf backend is not installed"

# A scheduler started here is stopped again at the end.
cupsd_pid=
stop_cupsd() { if [ -n "$cupsd_pid" ]; then kill "$cupsd_pid" 2>/dev/null; fi; }
if ! scheduler_up; then
  [ "$(id -u)" = 0 ] || skip "the CUPS scheduler is not running and only root may start it here"
  mkdir -p /run/cups
  # In the foreground under our control, so it can be stopped by its id.
  cupsd -f >/dev/null 2>&1 &
  cupsd_pid=$!
  trap stop_cupsd EXIT
  for _ in $(seq 1 50); do scheduler_up && break; sleep 0.2; done
  scheduler_up || skip "cupsd does not start or does not answer"
fi

if ! timeout 5 lpstat -p "$queue" >/dev/null 2>&1; then
  ppd=/usr/share/ppd/cups-pdf/CUPS-PDF_opt.ppd
  [ -f "$ppd" ] || skip "no cups-pdf PPD at $ppd"
  timeout 30 lpadmin -p "$queue" -E -v cups-pdf:/ -P "$ppd" >/dev/null 2>&1 || skip "lpadmin cannot add $queue"
  timeout 5 lpstat -p "$queue" >/dev/null 2>&1 || skip "$queue was added but is not listed"
fi

# Where cups-pdf writes: its Out directive, ${HOME} being the home of the
# user the job runs as (this one: Wine submits as the user who runs it).
home=$(getent passwd "$(id -un)" | cut -d: -f6)
out=$(sed -n 's/^Out[[:space:]]\+//p' /etc/cups/cups-pdf.conf 2>/dev/null | tail -n 1)
out=${out:-'${HOME}/PDF'}
outdir=$(printf '%s' "$out" | sed "s|\${HOME}|$home|g; s|\${USER}|$(id -un)|g")

doc="QuorvelPrintTest$$"
rm -f "$outdir/$doc"*.pdf
log=$(mktemp)
trap 'rm -f "$log"; stop_cupsd' EXIT
QV_PRINT_QUEUE=$queue QV_PRINT_DOC=$doc "$winrun" "$exe" --gtest_filter='*PrintsToARealQueue' >"$log" 2>&1
status=$?
cat "$log"
if grep -q "\[  SKIPPED \]" "$log"; then skip "the Wine test skipped (see above)"; fi
[ $status -eq 0 ] || fail "the Wine test failed"
pages=$(sed -n 's/^QV_PRINTED_PAGES=\([0-9]\+\).*/\1/p' "$log" | tr -d '\r' | head -n 1)
[ -n "$pages" ] || fail "the Wine test did not say how many pages it printed"

# cups-pdf converts in the background: wait for a whole PDF.
pdf=
for _ in $(seq 1 120); do
  for f in "$outdir/$doc"*.pdf; do
    [ -f "$f" ] && pdfinfo "$f" >/dev/null 2>&1 && pdf=$f
  done
  [ -n "$pdf" ] && break
  sleep 0.5
done
[ -n "$pdf" ] || fail "no PDF from $queue in $outdir after 60 s"
trap 'rm -f "$log" "$pdf"; stop_cupsd' EXIT

got=$(pdfinfo "$pdf" | sed -n 's/^Pages:[[:space:]]*//p')
echo "PDF: $pdf, $got pages, $pages laid out"
[ "$got" = "$pages" ] || fail "the PDF has $got pages, the object laid out $pages"
title=$(pdfinfo "$pdf" | sed -n 's/^Title:[[:space:]]*//p')
[ "$title" = "$doc" ] || echo "note: PDF title is '$title'"
text=$(pdftotext -layout "$pdf" -)
for want in "Item 1 " "Item 150" "$doc" "Page 1 of $pages" "Page $pages of $pages"; do
  printf '%s\n' "$text" | grep -q -- "$want" || fail "'$want' is not in the PDF's text"
done
p=1
while [ $p -le "$pages" ]; do
  page=$(pdftotext -f $p -l $p -layout "$pdf" -)
  for want in Name Qty Note "Page $p of $pages"; do
    printf '%s\n' "$page" | grep -q -- "$want" || fail "page $p lacks '$want'"
  done
  p=$((p + 1))
done
echo "OK: $pages pages printed through $queue"
exit 0
