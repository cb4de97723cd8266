#!/usr/bin/env bash
# Takes the pictures of the help pages from the program itself: tools/make_help_pictures.sh PLAYER [NAME...]
# Each docs/help/pictures/NAME.scenario names its window in its first line, "# window: ContactDetail", and
# the last picture of that window becomes NAME.png and, at twice the size, NAME@2x.png. Without names all
# of them are taken. PLAYER is cti-scenario with the Qt front end. Exit status 1 when one could not be
# taken; the others are.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
pictures="$here/docs/help/pictures"

if (($# < 1)) || [[ ! -x $1 ]]; then
  echo "usage: $0 PLAYER [NAME...]" >&2
  exit 1
fi
player=$(realpath "$1")
shift

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# Without this the screen is so small that windows of twice the size get scroll bars.
cat >"$scratch/screen.json" <<'JSON'
{"synchronousWindowSystemEvents": false, "windowFrameMargins": true,
 "screens": [{"name": "wide", "x": 0, "y": 0, "width": 3840, "height": 2880,
              "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]}
JSON

# take SCENARIO WINDOW SCALE TARGET
take() {
  local shots="$scratch/$3" last
  rm -rf "$shots"
  if ! "$here/tests/isolated.sh" env QT_SCALE_FACTOR="$3" \
    QT_QPA_PLATFORM="offscreen:configfile=$scratch/screen.json" \
    "$player" --front-end qt --screenshots "$shots" "$1" >"$scratch/transcript" 2>"$scratch/errors"; then
    sed 's/^/  /' "$scratch/errors" >&2
    return 1
  fi
  last=$(find "$shots" -name "*-$2.png" | LC_ALL=C sort | tail -n 1)
  if [[ -z $last ]]; then
    echo "  the window $2 was not seen" >&2
    return 1
  fi
  cp "$last" "$4"
}

if (($# == 0)); then
  while IFS= read -r scenario; do
    set -- "$@" "$(basename "$scenario" .scenario)"
  done < <(find "$pictures" -name '*.scenario' | LC_ALL=C sort)
fi

failed=0
for name in "$@"; do
  scenario="$pictures/$name.scenario"
  window=$(sed -n '1s/^# window: //p' "$scenario")
  if [[ -z $window ]]; then
    echo "$name: the first line names no window" >&2
    failed=1
  elif take "$scenario" "$window" 1 "$pictures/$name.png" && take "$scenario" "$window" 2 "$pictures/$name@2x.png"; then
    echo "$name: taken"
  else
    echo "$name: not taken" >&2
    failed=1
  fi
done
exit "$failed"
