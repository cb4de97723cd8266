#!/usr/bin/env bash
# Kills a program again and again while it saves settings, and checks what it leaves behind:
#   tests/kill_while_saving.sh PROGRAM [KILLS]     (PROGRAM: save-settings-forever)
# After each kill the file must be whole, hold all settings, and hold at least what the program had
# reported as saved. The closing line counts the kills.
set -euo pipefail

program=$1
kills=${2:-200}
RANDOM=${KESTRO_TEST_SEED:-$$}

scratch=$(mktemp -d)
saver=
cleanup() {
  if [[ -n $saver ]]; then
    kill -KILL "$saver" 2>/dev/null || true
  fi
  rm -rf "$scratch"
}
trap cleanup EXIT
file=$scratch/kestro-cti/settings.conf

leftovers() { find "$scratch/kestro-cti" -name '.settings.conf.new-*' | wc -l; }

passed=0
failed=0
seen=0 # generation that the file must hold at least
during_a_save=0
for ((kill = 1; kill <= kills; ++kill)); do
  : >"$scratch/reported"
  "$program" save "$file" >"$scratch/reported" 2>"$scratch/errors" &
  saver=$!
  # From the first complete save on; a kill during the start would prove little.
  for ((wait = 0; wait < 1000; ++wait)); do
    if [[ -s $scratch/reported ]] || ! kill -0 "$saver" 2>/dev/null; then
      break
    fi
    sleep 0.002
  done
  sleep "0.0$(printf '%02d' $((RANDOM % 25)))"
  kill -KILL "$saver" 2>/dev/null || true
  wait "$saver" 2>/dev/null || true
  saver=

  reported=$(tail -n 1 "$scratch/reported")
  if ((${reported:-0} > seen)); then
    seen=$reported
  fi
  count=$(leftovers)
  during_a_save=$((during_a_save + (count > 0)))
  problem=
  if [[ -z $reported ]]; then
    problem="nothing was saved: $(<"$scratch/errors")"
  elif ((count > 1)); then
    problem="$count unfinished files"
  elif ! complete=$("$program" check "$file" 2>"$scratch/errors"); then
    problem=$(<"$scratch/errors")
  elif ((complete < seen)); then
    problem="generation $seen was saved, $complete is there"
  elif (($(leftovers) > 0)); then
    problem="the unfinished file was not removed by the next start"
  fi
  if [[ -z $problem ]]; then
    passed=$((passed + 1))
    seen=$complete
  else
    failed=$((failed + 1))
    echo "kill $kill: $problem"
    rm -rf "$scratch/kestro-cti"
    seen=0
  fi
done

echo "$during_a_save of $kills kills left an unfinished file; $seen generations saved"
echo "$passed passed, $failed failed"
((failed == 0))
