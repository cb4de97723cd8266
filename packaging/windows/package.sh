#!/usr/bin/env bash
# Packs a Windows build: packaging/windows/package.sh BUILD-FOLDER MACHINE OUTPUT-FOLDER     (MACHINE: x86_64 or i686)
# Makes kestro-cti-VERSION-MACHINE-setup.exe and kestro-cti-VERSION-MACHINE.zip.
set -euo pipefail

if (($# != 3)); then
  echo "usage: $0 BUILD-FOLDER MACHINE OUTPUT-FOLDER" >&2
  exit 2
fi
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
program=$(realpath "$1/program")
machine=$2
mkdir -p "$3"
output=$(realpath "$3")
version=$(sed -n 's/^project(kestro_cti VERSION \([0-9.]*\).*/\1/p' "$here/../../CMakeLists.txt")
name=kestro-cti-$version-$machine

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
# Only what belongs to the installed program, without what debuggers need.
folder=$scratch/$name
mkdir "$folder"
cp -r "$program/CTI.exe" "$program/DBTemplate.tpl" "$program/Icons" "$program/Help" "$folder/"
"$machine-w64-mingw32-strip" "$folder/CTI.exe"

options=("-DVERSION=$version" "-DPROGRAM_FOLDER=$folder" "-DOUTPUT=$output/$name-setup.exe" -V2)
if [[ $machine == x86_64 ]]; then
  options+=(-DX64)
fi
makensis "${options[@]}" "$here/installer.nsi"
rm -f "$output/$name.zip"
(cd "$scratch" && zip -q -r -X "$output/$name.zip" "$name")
ls -l "$output/$name-setup.exe" "$output/$name.zip"
