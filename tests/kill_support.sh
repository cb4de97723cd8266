# shellcheck shell=bash
# What the kill tests share; they source this. `scratch` is a folder that goes with the script.
set -euo pipefail
RANDOM=${KESTRO_TEST_SEED:-$$}

scratch=$(mktemp -d)
victim=
passed=0
failed=0

kill_victim() {
  if [[ -n $victim ]]; then
    kill -KILL "$victim" 2>/dev/null || true
    wait "$victim" 2>/dev/null || true
    victim=
  fi
}
trap 'kill_victim; rm -rf "$scratch"' EXIT

# start COMMAND...: runs it beside the script; what it says goes to $scratch/reported and $scratch/errors.
start() {
  : >"$scratch/reported" # a kill may come before the program has begun its own
  "$@" >"$scratch/reported" 2>"$scratch/errors" &
  victim=$!
}
sleep_ms() { sleep "$(($1 / 1000)).$(printf '%03d' $(($1 % 1000)))"; }

# count_result WHAT PROBLEM: no problem is a pass.
count_result() {
  if [[ -z $2 ]]; then
    passed=$((passed + 1))
  else
    failed=$((failed + 1))
    echo "$1: $2"
  fi
}
# The closing line, and the script's exit status.
finish() {
  echo "$passed passed, $failed failed"
  ((failed == 0))
}
