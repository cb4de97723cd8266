#!/usr/bin/env bash
# Kills a program again and again while it saves settings, and checks what it leaves behind:
#   tests/kill_while_saving.sh PROGRAM [KILLS]     (PROGRAM: save-settings-forever)
# After each kill the file must be whole, hold all settings, and hold at least what the program had
# reported as saved. The closing line counts the kills.
# shellcheck source=tests/kill_support.sh
source "$(dirname "${BASH_SOURCE[0]}")/kill_support.sh"

program=$1
kills=${2:-200}
file=$scratch/kestro-cti/settings.conf

leftovers() { find "$scratch/kestro-cti" -name '.settings.conf.new-*' | wc -l; }

seen=0 # generation that the file must hold at least
during_a_save=0
for ((kill = 1; kill <= kills; ++kill)); do
  start "$program" save "$file"
  # From the first complete save on; a kill during the start would prove little.
  for ((wait = 0; wait < 1000; ++wait)); do
    if [[ -s $scratch/reported ]] || ! kill -0 "$victim" 2>/dev/null; then
      break
    fi
    sleep_ms 2
  done
  sleep_ms $((RANDOM % 25))
  kill_victim

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
  count_result "kill $kill" "$problem"
  seen=${complete:-0}
  if [[ -n $problem ]]; then
    rm -rf "$scratch/kestro-cti"
    seen=0
  fi
done

echo "$during_a_save of $kills kills left an unfinished file; $seen generations saved"
finish
