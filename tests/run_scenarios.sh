#!/usr/bin/env bash
# Plays scenarios on each front end and compares the transcripts:
#   tests/run_scenarios.sh [--front-ends "headless qt"] [--flat] [--show] PLAYER FOLDER-OR-FILE...
# --flat takes only the files directly in a folder, not those in folders below it; --show prints a line
# for every scenario, not only for those that fail. Exit status: 0 when every scenario ended with status
# 0 on every front end with equal transcripts, otherwise 1; no scenario at all is a failure too.
set -euo pipefail

kTimeoutSeconds=120
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

# Where the report of a scenario goes: empty when all went well, missing when it was not played to its end.
report_of() { printf '%s/%s.report' "$1" "$(printf '%s' "$2" | sha256sum | cut -c1-16)"; }

# play_one PLAYER FRONT-ENDS RESULTS SCENARIO: one scenario on all front ends.
play_one() {
  local player=$1 front_ends=$2 report first="" front_end status out
  report=$(report_of "$3" "$4")
  for front_end in $front_ends; do
    out="$report.$front_end"
    status=0
    timeout --kill-after=5 "$kTimeoutSeconds" "$here/isolated.sh" \
      "$player" --front-end "$front_end" "$4" >"$out" 2>"$out.errors" </dev/null || status=$?
    if ((status == 124 || status == 137)); then
      echo "  $front_end: no end after $kTimeoutSeconds s"
    elif ((status != 0)); then
      echo "  $front_end: exit status $status"
    fi
    if ((status != 0)); then
      sed 's/^/    /' "$out.errors"
    fi
    if [[ -z $first ]]; then
      first=$front_end
    elif ! diff -u --label "$first" --label "$front_end" "$report.$first" "$out" >"$out.diff"; then
      echo "  the transcripts of $first and $front_end differ:"
      sed 's/^/    /' "$out.diff"
    fi
  done >"$report.unfinished" 2>&1
  mv "$report.unfinished" "$report"
}

if [[ ${1:-} == --play-one ]]; then
  shift
  play_one "$@"
  exit 0
fi

front_ends="headless qt"
flat=()
show=0
while [[ ${1:-} == --* ]]; do
  case $1 in
    --front-ends)
      front_ends=${2//;/ }
      shift
      ;;
    --flat) flat=(-maxdepth 1) ;;
    --show) show=1 ;;
    *) break ;;
  esac
  shift
done
if (($# < 2)); then
  echo "usage: $0 [--front-ends \"headless qt\"] [--flat] [--show] PLAYER FOLDER-OR-FILE..." >&2
  exit 1
fi
player=$1
shift
if [[ ! -x $player ]]; then
  echo "$player is not a program" >&2
  exit 1
fi
player=$(realpath "$player")

mapfile -d '' -t scenarios < <(find "$@" "${flat[@]}" -type f -name '*.scenario' -print0 | LC_ALL=C sort -z)
if ((${#scenarios[@]} == 0)); then
  echo "no scenario in: $*" >&2
  echo "0 passed, 0 failed"
  exit 1
fi

results=$(mktemp -d)
trap 'rm -rf "$results"' EXIT
printf '%s\0' "${scenarios[@]}" |
  xargs -0 -n 1 -P "$(nproc)" "${BASH_SOURCE[0]}" --play-one "$player" "$front_ends" "$results" || true

passed=0
failed=0
for scenario in "${scenarios[@]}"; do
  report=$(report_of "$results" "$scenario")
  if [[ -e $report && ! -s $report ]]; then
    passed=$((passed + 1))
    if ((show)); then
      echo "passed $scenario"
    fi
  else
    failed=$((failed + 1))
    echo "FAILED $scenario"
    cat "$report" 2>/dev/null || echo "  it was not played to its end"
  fi
done
echo "$passed passed, $failed failed"
((failed == 0))
