#!/usr/bin/env bash
# Kills a program again and again while it imports contacts, and checks what it leaves behind:
#   tests/kill_while_importing.sh PROGRAM [KILLS] [LINES]     (PROGRAM: import-contacts)
# After each kill the database must be sound and hold at least as many contacts as the window had counted.
# At the end the import runs into a full disk: it must say so, go on living and lose nothing it had counted.
# The closing line counts the kills and the full disk.
set -euo pipefail

program=$1
kills=${2:-100}
lines=${3:-50000}
RANDOM=${KESTRO_TEST_SEED:-$$}

scratch=$(mktemp -d)
importer=
cleanup() {
  if [[ -n $importer ]]; then
    kill -KILL "$importer" 2>/dev/null || true
  fi
  rm -rf "$scratch"
}
trap cleanup EXIT

file=$scratch/contacts.csv
for ((line = 1; line <= lines; ++line)); do
  printf 'Contact %d;"Company; %d";Owner;602 %06d;;;;Work;Work;Work;Work;Long street %d;Brno\n' \
    "$line" "$((line % 991))" "$line" "$((line % 89))"
done >"$file"
"$program" new "$scratch/empty.mdb"

now_ms() { echo $((${EPOCHREALTIME/[.,]/} / 1000)); }

# How long an import takes that nobody kills.
cp "$scratch/empty.mdb" "$scratch/whole.mdb"
start=$(now_ms)
"$program" import "$scratch/whole.mdb" "$file" >"$scratch/reported"
duration=$(($(now_ms) - start))
if [[ $("$program" check "$scratch/whole.mdb") != "$lines" ]]; then
  echo "the whole import did not store $lines contacts"
  exit 1
fi

passed=0
failed=0
in_the_middle=0
left_a_journal=0
for ((kill = 1; kill <= kills; ++kill)); do
  database=$scratch/killed.mdb
  rm -f "$database"*
  cp "$scratch/empty.mdb" "$database"
  : >"$scratch/reported" # a kill may come before the program has begun its own
  "$program" import "$database" "$file" >"$scratch/reported" 2>"$scratch/errors" &
  importer=$!
  moment=$((RANDOM % duration))
  sleep "$((moment / 1000)).$(printf '%03d' $((moment % 1000)))"
  kill -KILL "$importer" 2>/dev/null || true
  wait "$importer" 2>/dev/null || true
  importer=

  shown=$(grep -E '^[0-9]+$' "$scratch/reported" | tail -n 1 || true)
  shown=${shown:-0}
  journal=0
  if [[ -e $database.journal ]]; then
    journal=1
  fi
  problem=
  if ! stored=$("$program" check "$database" 2>"$scratch/errors"); then
    problem=$(<"$scratch/errors")
  elif ((stored < shown)); then
    problem="$shown contacts were counted, $stored are there"
  fi
  if [[ -z $problem ]]; then
    passed=$((passed + 1))
    in_the_middle=$((in_the_middle + (shown > 0 && stored < lines)))
    left_a_journal=$((left_a_journal + journal))
  else
    failed=$((failed + 1))
    echo "kill $kill after $moment ms: $problem"
  fi
done
echo "$in_the_middle of $kills kills hit an import of $duration ms between its first and its last contact;" \
  "$left_a_journal left a journal"

# A disk that is full at half of what the contacts take.
database=$scratch/full.mdb
cp "$scratch/empty.mdb" "$database"
limit=$(($(stat -c %s "$scratch/whole.mdb") / 1024 / 2))
status=0
(
  trap '' XFSZ
  ulimit -f "$limit"
  exec "$program" import "$database" "$file"
) 2>"$scratch/errors" | cat >"$scratch/reported" || status=$?
shown=$(grep -E '^[0-9]+$' "$scratch/reported" | tail -n 1 || true)
stored=$("$program" check "$database") || stored=damaged
if ((status != 1)) || [[ -z $shown || $stored != "$shown" ]] ||
  ! grep -q 'of imported file was not imported' "$scratch/reported" ||
  ! grep -q "interrupted.  $shown contacts" "$scratch/reported"; then
  failed=$((failed + 1))
  echo "full disk: exit status $status, counted ${shown:-nothing}, stored $stored: $(<"$scratch/errors")"
  tail -n 5 "$scratch/reported"
else
  passed=$((passed + 1))
  echo "full disk: $shown contacts counted and stored; $(grep -c 'was not imported' "$scratch/reported") questions"
fi

echo "$passed passed, $failed failed"
((failed == 0))
