#!/usr/bin/env bash
# Checks the shape of the sources: tools/check_layers.sh [SOURCE-FOLDER]   (default: src beside tools)
#   - an #include of another folder goes to a layer below, as listed here
#   - no circle of includes between files
#   - toolkit, database and operating-system headers only in adapters/ and programs/
#   - no file longer than 800 lines
# Prints a line a finding and a closing line; exit status 1 when something was found.
set -euo pipefail

kMaxLines=800

if (($# > 0)); then
  cd "$1"
else
  cd "$(dirname "${BASH_SOURCE[0]}")/../src"
fi

# The layers from the bottom up. A file may include its own layer and those below; folders of one line are
# neighbours and may include each other, as long as no circle between files comes of it.
layers() {
  cat <<'LAYERS'
base jet
ports
forms
core telephony contacts
reception management import
app exchange scenario
adapters
programs
LAYERS
}

# Exceptions to the order: these know no more of the house than this says. The engine for database files
# stands beside base. The scenario player drives the application, the exchange is only a telephone exchange.
restricted() {
  cat <<'RESTRICTED'
base: base
jet: base
app: base ports forms core telephony contacts reception management import
exchange: base ports
scenario: base ports forms core telephony contacts reception management import app exchange
RESTRICTED
}

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

find . -type f \( -name '*.h' -o -name '*.cpp' \) -printf '%P\n' | LC_ALL=C sort >"$scratch/files"
count=$(wc -l <"$scratch/files")
if ((count == 0)); then
  echo "layers: no source file below $PWD" >&2
  exit 1
fi

# All files in one pass. "edges" receives the include graph between files, findings go to the output.
layers >"$scratch/layers"
restricted >"$scratch/restricted"
mapfile -t files <"$scratch/files"
awk -v max_lines="$kMaxLines" -v edges="$scratch/edges" '
  function finding(text) { print file ":" FNR ": " text }

  # The folder that decides: of a/b/c.h it is a.
  function top(path) { return index(path, "/") ? substr(path, 1, index(path, "/") - 1) : "" }

  # The folder a/b of a/b/c.h, for programs and adapters that must not know each other.
  function second(path) { sub(/^[^\/]*\//, "", path); return top(path) }

  function may_include(from, to) {
    if (from == to) return 1
    return from in limited ? (from, to) in allowed : level[to] <= level[from]
  }

  function end_of_file() {
    if (lines > max_lines) print file ": " lines " lines, more than " max_lines
  }

  BEGIN { printf "" > edges }

  FILENAME ~ /\/layers$/ {
    for (i = 1; i <= NF; ++i) level[$i] = FNR
    next
  }
  FILENAME ~ /\/restricted$/ {
    folder = $1
    sub(/:$/, "", folder)
    limited[folder] = 1
    for (i = 2; i <= NF; ++i) allowed[folder, $i] = 1
    next
  }
  FILENAME ~ /\/files$/ { exists[$0] = 1; next }

  FNR == 1 {
    if (file != "") end_of_file()
    file = FILENAME
    lines = 0
    own = top(file)
    outside = own == "adapters" || own == "programs"
    if (!(own in level)) finding("the folder \"" own "\" is not a known layer")
  }
  { ++lines }

  /^[ \t]*#[ \t]*include[ \t]*"/ {
    target = $0
    sub(/^[^"]*"/, "", target)
    sub(/".*/, "", target)
    if (target ~ /^generated\// || target ~ /\.moc$/) next
    other = top(target)
    if (other == "" || target ~ /(^|\/)\.\.?\//) {
      finding("\"" target "\" is not written as folder/file.h from the source folder")
      next
    }
    if (!(other in level)) {
      finding("\"" target "\" is in no known layer")
      next
    }
    if (!may_include(own, other)) finding(own " must not include " other ": \"" target "\"")
    else if (own == "programs" && other == "programs" && second(file) != second(target))
      finding("a program must not include another program: \"" target "\"")
    else if (own == "adapters" && other == "adapters" && second(file) != second(target))
      finding("an adapter must not include another adapter: \"" target "\"")
    if (!(target in exists)) finding("\"" target "\" does not exist")
    print target, file > edges
    next
  }

  !outside && /^[ \t]*#[ \t]*include[ \t]*</ {
    target = $0
    sub(/^[^<]*</, "", target)
    sub(/>.*/, "", target)
    if (target ~ /^Q/) finding("toolkit header <" target "> outside adapters and programs")
    else if (tolower(target) == "windows.h" || target == "sqlite3.h" || target ~ /^(sys|arpa|net|netinet|linux)\// ||
             target ~ /^(unistd|fcntl|dlfcn|pthread|poll|pwd|dirent|termios|iconv|langinfo|syslog|spawn|strings)\.h$/)
      finding("system header <" target "> outside adapters and programs")
    else if (target ~ /^(gtest|gmock|benchmark)\//) finding("test header <" target "> in the product")
    else if (target ~ /\.h$/) finding("<" target "> is no header of the C++ standard library")
  }

  !outside && /^[ \t]*#[ \t]*(if|ifdef|ifndef|elif)/ && /_WIN32|_WIN64|__linux__|__unix__|__MINGW|QT_VERSION/ {
    finding("a system is told apart outside adapters and programs")
  }

  END { if (file != "") end_of_file() }
' "$scratch/layers" "$scratch/restricted" "$scratch/files" "${files[@]}" >"$scratch/findings"

# tsort names the members of each circle on its error output.
if ! tsort <"$scratch/edges" >/dev/null 2>"$scratch/circles"; then
  sed -n -e 's/^tsort: -: input contains a loop:$/a circle of includes:/p' -e 's/^tsort: \([^-].*\)/  \1/p' \
    "$scratch/circles" >>"$scratch/findings"
fi

if [[ -s $scratch/findings ]]; then
  cat "$scratch/findings"
  echo "layers: $count files, $(grep -vc '^  ' "$scratch/findings") findings"
  exit 1
fi
echo "layers: $count files, no findings"
