#!/usr/bin/env bash
# Start-up time and memory of CTI.exe next to a minimal program with a window and an icon, under the same Wine:
#   bench/windows_startup.sh WINDOWS-BUILD
# Both come up and end; the figures are medians, and their ratios.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

kRuns=9
build=$(realpath "$1")
# shellcheck source=tests/windows/wine_session.sh
source tests/windows/wine_session.sh
trap stop_wine EXIT
start_wine

app=$wine_folder/bench
rm -rf "$app"
cp -r "$build/program" "$app"
cp "$build/stand-in/tapi32.dll" "$build/bench/minimal_windows_tray.exe" "$app/"
wine reg add 'HKCU\Software\Kestro\CTI' /v PhoneLine /d 'EXT 101' /f >/dev/null 2>&1
export KESTRO_TAPI_PORT=48199

median() { sort -n | sed -n "$(((kRuns + 1) / 2))p"; }

# Milliseconds from the start of the process to its end.
milliseconds() {
  local start end
  start=$(date +%s%N)
  timeout 60 wine "$@" >/dev/null 2>&1 </dev/null
  end=$(date +%s%N)
  echo $(((end - start) / 1000000))
}

# Resident memory in KiB of the program of that name, two seconds after it was started.
kibibytes() {
  local program=$1 process
  wine "$app/$program" >/dev/null 2>&1 </dev/null &
  process=$!
  sleep 2
  sed -n 's/^VmRSS:[[:space:]]*\([0-9]*\) kB/\1/p' "/proc/$process/status"
  kill "$process" 2>/dev/null || true
  wait "$process" 2>/dev/null || true
}

programs=(minimal_windows_tray.exe CTI.exe)
for program in "${programs[@]}"; do
  milliseconds "$app/$program" /end-after-start >/dev/null # files come into the cache, the database is made
done
# In turns: what else the machine does meets both.
declare -A times memories time_of memory_of
for ((run = 0; run < kRuns; ++run)); do
  for program in "${programs[@]}"; do
    times[$program]+="$(milliseconds "$app/$program" /end-after-start)"$'\n'
    memories[$program]+="$(kibibytes "$program")"$'\n'
  done
done
for program in "${programs[@]}"; do
  time_of[$program]=$(printf '%s' "${times[$program]}" | median)
  memory_of[$program]=$(printf '%s' "${memories[$program]}" | median)
  printf '%-26s %5d ms   %6d KiB\n' "$program" "${time_of[$program]}" "${memory_of[$program]}"
done
ratio() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.2f", a / b }'; }
echo "CTI.exe : minimal   time $(ratio "${time_of[CTI.exe]}" "${time_of[minimal_windows_tray.exe]}")," \
  "memory $(ratio "${memory_of[CTI.exe]}" "${memory_of[minimal_windows_tray.exe]}")"
