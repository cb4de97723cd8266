#!/usr/bin/env bash
# Starts the programs as a user does, without a screen: tests/real_programs.sh PROGRAM-FOLDER
# Run it through tests/isolated.sh. Prints what went wrong; exit status 0 when nothing did.
set -euo pipefail

# As after an installation: the first start writes beside the programs where it may.
programs=$HOME/program
cp -r "$1" "$programs"
failures=0

# check DESCRIPTION WANTED-STATUS WANTED-PART COMMAND...: runs it; its output must contain the part.
check() {
  local description=$1 wanted=$2 part=$3 status=0 output
  shift 3
  output=$(timeout 20 "$@" 2>&1 </dev/null) || status=$?
  if ((status != wanted)) || [[ $output != *"$part"* ]]; then
    printf '%s: status %s instead of %s, "%s" wanted in:\n%s\n' "$description" "$status" "$wanted" "$part" "$output"
    failures=1
  fi
}
exchange=$programs/cti-exchange

check "unknown option" 2 "unknown option --nonsense" "$programs/kestro-cti" --nonsense
check "version" 0 "KESTRO CTI" "$programs/kestro-cti" --version
check "no program to talk to" 3 "not running" "$exchange" ring 602111222
check "no command" 2 "Usage" "$exchange"
check "unknown command" 2 "Usage" "$exchange" dance

check "template" 0 "" "$programs/cti-template" "$HOME/made.tpl"
check "what the template is" 0 "Contact	0" "$programs/cti-mdb" tables "$HOME/made.tpl"
check "the template is sound" 0 "0 findings" "$programs/cti-mdb" check "$HOME/made.tpl"
check "rows of a table" 0 '1,"Work",1' "$programs/cti-mdb" dump "$HOME/made.tpl" PhoneType
check "no such table" 2 'no table "Nix"' "$programs/cti-mdb" dump "$HOME/made.tpl" Nix
check "a file that is no database" 2 "not that of a database" "$programs/cti-mdb" check "$0"
head -c 81920 "$HOME/made.tpl" >"$HOME/cut.tpl"
check "half of a database" 1 "" "$programs/cti-mdb" check "$HOME/cut.tpl"
check "no such command" 2 "usage" "$programs/cti-mdb" mend "$HOME/made.tpl"
check "template without a name" 2 "usage" "$programs/cti-template"

# A user's first start leaves the settings and the contacts behind.
check "first start" 0 "" "$programs/kestro-cti" --end-after-start
check "what it stored" 0 "CTIDB.mdb" find "$HOME" -name CTIDB.mdb
check "the next start" 0 "" "$programs/kestro-cti" --end-after-start

# Without a notification area the demonstration waits for the user's word before it opens its line. It can be
# talked to all the same, and ends in order when the session asks.
"$programs/kestro-cti" --demo >"$HOME/demo.log" 2>&1 </dev/null &
program=$!
for ((i = 0; i < 100; ++i)); do
  if "$exchange" list >/dev/null 2>&1; then
    break
  fi
  sleep 0.1
done
check "the calls" 0 "ok" "$exchange" list
check "no line yet" 1 "no line open" "$exchange" ring 21 --internal --name "Jan Novák"
kill -TERM "$program"
status=0
wait "$program" || status=$?
if ((status != 0)); then
  echo "the demonstration ended with status $status:"
  cat "$HOME/demo.log"
  failures=1
fi
check "the socket is gone" 3 "not running" "$exchange" list
exit "$failures"
