#!/usr/bin/env bash
# Kills a program again and again while it imports contacts, and checks what it leaves behind:
#   tests/kill_while_importing.sh PROGRAM [KILLS] [LINES]     (PROGRAM: import-contacts)
# After each kill the database must be sound and hold at least as many contacts as the window had counted.
# At the end the import runs into a full disk: it must say so, go on living and lose nothing it had counted.
# The closing line counts the kills and the full disk.
# shellcheck source=tests/kill_support.sh
source "$(dirname "${BASH_SOURCE[0]}")/kill_support.sh"

program=$1
kills=${2:-100}
lines=${3:-50000}

file=$scratch/contacts.csv
for ((line = 1; line <= lines; ++line)); do
  printf 'Contact %d;"Company; %d";Owner;602 %06d;;;;Work;Work;Work;Work;Long street %d;Brno\n' \
    "$line" "$((line % 991))" "$line" "$((line % 89))"
done >"$file"
"$program" new "$scratch/empty.mdb"

now_ms() { echo $((${EPOCHREALTIME/[.,]/} / 1000)); }
# The count that the window showed last; nothing when it showed none.
last_count() { grep -E '^[0-9]+$' "$scratch/reported" | tail -n 1 || true; }

# How long an import takes that nobody kills.
cp "$scratch/empty.mdb" "$scratch/whole.mdb"
begin=$(now_ms)
"$program" import "$scratch/whole.mdb" "$file" >"$scratch/reported"
duration=$(($(now_ms) - begin))
if [[ $("$program" check "$scratch/whole.mdb") != "$lines" ]]; then
  echo "the whole import did not store $lines contacts"
  exit 1
fi

in_the_middle=0
left_a_journal=0
database=$scratch/killed.mdb
for ((kill = 1; kill <= kills; ++kill)); do
  rm -f "$database"*
  cp "$scratch/empty.mdb" "$database"
  start "$program" import "$database" "$file"
  moment=$((RANDOM % duration))
  sleep_ms "$moment"
  kill_victim

  shown=$(last_count)
  if [[ -e $database.journal ]]; then
    left_a_journal=$((left_a_journal + 1))
  fi
  problem=
  if ! stored=$("$program" check "$database" 2>"$scratch/errors"); then
    problem=$(<"$scratch/errors")
  elif ((stored < ${shown:-0})); then
    problem="$shown contacts were counted, $stored are there"
  elif ((${shown:-0} > 0 && stored < lines)); then
    in_the_middle=$((in_the_middle + 1))
  fi
  count_result "kill $kill after $moment ms" "$problem"
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
shown=$(last_count)
stored=$("$program" check "$database") || stored=damaged
questions=$(grep -c 'of imported file was not imported' "$scratch/reported" || true)
problem=
if ((status != 1 || questions == 0)) || [[ -z $shown || $stored != "$shown" ]] ||
  ! grep -q "interrupted.  $shown contacts" "$scratch/reported"; then
  problem="exit status $status, counted ${shown:-nothing}, stored $stored, $questions questions:
$(tail -n 5 "$scratch/reported" "$scratch/errors")"
else
  echo "full disk: $shown contacts counted and stored; $questions questions"
fi
count_result "full disk" "$problem"
finish
