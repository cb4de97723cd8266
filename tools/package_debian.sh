#!/usr/bin/env bash
# Builds the Debian package from a clean copy of the sources: tools/package_debian.sh [FOLDER]
# Leaves kestro-cti_VERSION_ARCHITECTURE.deb in FOLDER (build/package by default) and prints its path as the last
# line. The same sources, with the same tools and SOURCE_DATE_EPOCH, give the same bytes in whatever folder;
# without that variable the time of the last commit counts.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

kRevision=1 # of the packaging, for the same version of the program

folder=${1:-build/package}
version=$(sed -n 's/^project(.* VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
[[ -n $version ]] || {
  echo "CMakeLists.txt tells no version" >&2
  exit 1
}
in_git() { [[ $(git rev-parse --show-toplevel 2>/dev/null) == "$PWD" ]]; }

if [[ -z ${SOURCE_DATE_EPOCH:-} ]]; then
  if in_git; then
    SOURCE_DATE_EPOCH=$(git log -1 --format=%ct)
  else
    SOURCE_DATE_EPOCH=$(stat -c %Y CHANGELOG.md)
  fi
fi
export SOURCE_DATE_EPOCH

# The sources without what builds and editors left; new files that are not committed yet belong to them.
source_files() {
  if in_git; then
    local file
    while IFS= read -r -d '' file; do
      if [[ -e $file ]]; then printf '%s\0' "$file"; fi
    done < <(git ls-files -z --cached --others --exclude-standard)
  else
    find . -mindepth 1 \( -path ./build -o -path ./.cache -o -path ./.git \) -prune -o -type f -print0
  fi
}

mkdir -p "$folder"
folder=$(cd "$folder" && pwd)
copy=$folder/kestro-cti-$version
rm -rf "$copy" "$folder"/kestro-cti_*
mkdir "$copy"
source_files | LC_ALL=C sort -z |
  tar --create --no-recursion --mtime="@$SOURCE_DATE_EPOCH" --mode=go=rX,u+rw,a-s --null --files-from=- |
  tar --extract --directory="$copy"
cp -r "$copy/packaging/debian" "$copy/debian"
cat >"$copy/debian/changelog" <<CHANGELOG
kestro-cti ($version-$kRevision) unstable; urgency=medium

  * Version $version; its changes are listed in changelog.gz.

 -- $(sed -n 's/^Maintainer: //p' packaging/debian/control)  $(LC_ALL=C date -u -R -d "@$SOURCE_DATE_EPOCH")
CHANGELOG

if command -v ccache >/dev/null; then
  # The build gets a home folder of its own.
  CCACHE_DIR=$(ccache --get-config cache_dir)
  export CCACHE_DIR CCACHE_NOHASHDIR=1 CCACHE_BASEDIR=$copy
fi
(
  cd "$copy"
  umask 022
  DEB_BUILD_OPTIONS="noautodbgsym parallel=$(nproc)" dpkg-buildpackage --build=binary --no-sign
)
rm -rf "$copy"
ls "$folder"/kestro-cti_*.deb
