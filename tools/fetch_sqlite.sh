#!/usr/bin/env bash
# Puts sqlite3.c and sqlite3.h into a folder, for builds that cannot use the system's own library:
#   tools/fetch_sqlite.sh FOLDER
# They come from Debian's source package, the release that the Linux program runs on. The machine's own package
# sources are read, not changed: a copy of them that asks for sources too lives in a temporary folder. Where
# Debian's sources cannot be reached, the amalgamation inside the npm package better-sqlite3 takes their place.
# Needs dpkg-dev, gcc, make and tcl (or npm). A folder that has both files already is left as it is.
set -euo pipefail

kNpmPackage=better-sqlite3@11.10.0

if (($# != 1)); then
  echo "usage: $0 FOLDER" >&2
  exit 2
fi
target=$1
if [[ -s $target/sqlite3.c && -s $target/sqlite3.h ]]; then
  exit 0
fi

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# The machine's entries for Debian's own archive, each asking for sources: copy_source_entries TARGET-FOLDER
copy_source_entries() {
  local file count=0
  for file in /etc/apt/sources.list.d/*.sources; do
    if [[ -f $file ]] && grep -q '^Suites:.*bookworm' "$file" && grep -q '^Components:.*main' "$file"; then
      sed -E 's/^Types:.*/Types: deb-src/' "$file" >"$1/${file##*/}"
      count=$((count + 1))
    fi
  done
  for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
    if [[ -f $file ]] && grep -qE '^deb .*bookworm.* main' "$file"; then
      sed -nE 's/^deb (.*bookworm.* main)/deb-src \1/p' "$file" >"$1/entries-$count.list"
      count=$((count + 1))
    fi
  done
  ((count > 0))
}

from_debian() {
  local apt_options=() folder
  mkdir -p "$scratch/entries" "$scratch/lists/partial" "$scratch/cache/archives/partial" "$scratch/source"
  copy_source_entries "$scratch/entries" || return 1
  apt_options=(-q
    -o "Dir::Etc::sourcelist=/dev/null" -o "Dir::Etc::sourceparts=$scratch/entries"
    -o "Dir::State::lists=$scratch/lists" -o "Dir::Cache=$scratch/cache" -o "APT::Sandbox::User=root")
  apt-get "${apt_options[@]}" update || return 1
  (cd "$scratch" && apt-get "${apt_options[@]}" source --download-only sqlite3) || return 1
  dpkg-source --no-check -x "$scratch"/sqlite3_*.dsc "$scratch/unpacked" || return 1
  folder=$scratch/made
  mkdir "$folder"
  (cd "$folder" && "$scratch/unpacked/configure" --disable-tcl --disable-readline && make sqlite3.c) || return 1
  cp "$folder/sqlite3.c" "$folder/sqlite3.h" "$scratch/source/"
}

from_npm() {
  command -v npm >/dev/null || return 1
  (cd "$scratch" && npm pack --silent "$kNpmPackage" && tar xzf better-sqlite3-*.tgz) || return 1
  mkdir -p "$scratch/source"
  cp "$scratch/package/deps/sqlite3/sqlite3.c" "$scratch/package/deps/sqlite3/sqlite3.h" "$scratch/source/" ||
    return 1
}

log=$scratch/log
if ! from_debian >"$log" 2>&1 && ! { echo "--- npm" && from_npm; } >>"$log" 2>&1; then
  cat "$log" >&2
  echo "SQLite's sources could be had neither from Debian nor from npm" >&2
  exit 1
fi
mkdir -p "$target"
cp "$scratch/source/sqlite3.h" "$target/"
cp "$scratch/source/sqlite3.c" "$target/sqlite3.c.new"
mv "$target/sqlite3.c.new" "$target/sqlite3.c"
sed -n 's/^#define SQLITE_VERSION  *"\(.*\)"$/SQLite \1/p' "$target/sqlite3.h"
