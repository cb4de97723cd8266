#!/usr/bin/env bash
# Tests the Windows program under Wine: tests/windows/run.sh WINDOWS-BUILD LINUX-PLAYER [TEST-FILTER]
#   - every scenario on its own windows, each transcript equal to the one of the headless player on Linux
#   - the shipped program against the system's interfaces (windows-tests.exe)
# The closing line counts both. Nothing that was started here is left behind.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

if (($# < 2)); then
  echo "usage: $0 WINDOWS-BUILD LINUX-PLAYER [TEST-FILTER]" >&2
  exit 2
fi
build=$(realpath "$1")
player=$(realpath "$2")
filter=${3:-*}

kScenarioSeconds=240 # for one folder of scenarios
kTestsSeconds=400

# shellcheck source=tests/windows/wine_session.sh
source tests/windows/wine_session.sh
trap stop_wine EXIT
start_wine

app=$wine_folder/app
results=$wine_folder/results
rm -rf "$app" "$results"
mkdir -p "$results"
cp -r "$build/program" "$app"
cp "$build/stand-in/tapi32.dll" "$build/windows-tests/windows-tests.exe" "$build/windows-tests/dial_com.dll" "$app/"

passed=0
failed=0

# One folder of scenarios, all in one process.
play_folder() {
  local folder=$1 name=${1//\//.} file scenario status=0
  "$player" --transcripts "$results/expected/$name" "$folder"/*.scenario >/dev/null 2>"$results/$name.expected-errors" ||
    { cat "$results/$name.expected-errors"; }
  timeout --kill-after=5 "$kScenarioSeconds" wine "$app/CTI.exe" /scenario --transcripts "$results/got/$name" \
    "$folder"/*.scenario >/dev/null 2>"$results/$name.errors" </dev/null || status=$?
  if ((status != 0)); then
    echo "$folder: exit status $status"
    cat "$results/$name.errors"
  fi
  for scenario in "$folder"/*.scenario; do
    file=$(basename "$scenario" .scenario).transcript
    if diff -u --label linux --label windows "$results/expected/$name/$file" "$results/got/$name/$file"; then
      passed=$((passed + 1))
    else
      failed=$((failed + 1))
      echo "FAILED $scenario"
    fi
  done
  if ((status != 0)); then
    failed=$((failed + 1))
  fi
}

if [[ $filter == '*' ]]; then
  while IFS= read -r folder; do
    play_folder "$folder"
  done < <(find tests/scenarios demo -name '*.scenario' -printf '%h\n' | LC_ALL=C sort -u)
  echo "scenarios: $passed passed, $failed failed"
fi

tests_status=0
KESTRO_TEST_USER=1 timeout --kill-after=5 "$kTestsSeconds" wine "$app/windows-tests.exe" "--gtest_filter=$filter" \
  >"$results/tests" 2>&1 </dev/null || tests_status=$?
if ((tests_status != 0)) || [[ $filter != '*' ]]; then
  cat "$results/tests"
fi
tests_passed=$(sed -n 's/^\[  PASSED  \] \([0-9]*\) tests\{0,1\}.*/\1/p' "$results/tests")
tests_failed=$(sed -n 's/^\[  FAILED  \] \([0-9]*\) tests\{0,1\}.*/\1/p' "$results/tests")
echo "$passed scenarios and ${tests_passed:-0} tests passed, $failed scenarios and ${tests_failed:-0} tests failed"
((failed == 0 && tests_status == 0 && ${tests_passed:-0} > 0))
