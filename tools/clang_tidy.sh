#!/usr/bin/env bash
# clang-tidy over the sources of the project, each with the settings of the first build that compiles it:
#   tools/clang_tidy.sh BUILD-FOLDER...
# The builds' generated files must be there. Findings are printed; with any of them it ends with 1.
set -u

# What clang must be told to read the headers of the MinGW compiler in place of its own system's; those of the
# compiler's own instructions it has itself.
foreign_arguments() {
  local compiler=x86_64-w64-mingw32-g++-posix
  grep -q "x86_64-w64-mingw32" "$1/compile_commands.json" || return 0
  printf -- '--extra-arg=--target=x86_64-w64-mingw32\n'
  "$compiler" -E -x c++ -v /dev/null 2>&1 |
    sed -n '/search starts here/,/^End of search/s/^ \(.*\)/--extra-arg=-isystem\1/p' |
    grep -Ev '/gcc/[^ ]*/include(-fixed)?$'
}

sources_of() {
  grep -o '"file": "[^"]*"' "$1/compile_commands.json" | cut -d '"' -f 4 |
    grep -E "^$PWD/(src|tests|bench)/" | LC_ALL=C sort -u
}

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
: >"$work/done"
status=0
for build in "$@"; do
  mapfile -t foreign < <(foreign_arguments "$build")
  sources_of "$build" | LC_ALL=C comm -23 - "$work/done" >"$work/now"
  # In a shell of its own: when clang-tidy itself crashes, xargs would leave out all files that follow. GCC knows
  # warning options that clang does not.
  # shellcheck disable=SC2016
  xargs -r -d '\n' -n 1 -P "$(nproc)" bash -c '
    clang-tidy "$@"
    code=$?
    ((code < 2)) || echo "${@: -1}: clang-tidy ended with $code"
    exit "$((code != 0))"' clang-tidy -p "$build" --quiet --extra-arg=-Wno-unknown-warning-option "${foreign[@]}" \
    <"$work/now" 2> >(grep -vE '^[0-9]+ warnings? (generated|treated as error)|^Suppressed |^Use -header-filter' >&2) ||
    status=1
  LC_ALL=C sort -u -o "$work/done" "$work/done" "$work/now"
done
printf 'clang-tidy: %d files, %s\n' "$(wc -l <"$work/done")" "$( ((status == 0)) && echo 'no findings' || echo 'FINDINGS above')"
exit "$status"
