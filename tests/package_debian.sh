#!/usr/bin/env bash
# Tests the Debian package: tests/package_debian.sh [--reproducible] [--keep] [DEB]
# Builds it (or takes DEB), lets lintian look at it, and in a fresh Debian 12 installs it with apt, lets an ordinary
# user run it, upgrades it and purges it. The fresh system needs root and debootstrap and comes from the mirror that
# apt is configured with here. --reproducible builds twice and compares the bytes; --keep leaves the fresh system.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root_of_sources=$here/..

kSuite=bookworm
kUser=clerk
kTools=(xvfb xauth trayer xdotool)
reproducible=0
keep=0
deb=
for argument in "$@"; do
  case $argument in
    --reproducible) reproducible=1 ;;
    --keep) keep=1 ;;
    *) deb=$(realpath "$argument") ;;
  esac
done

scratch=$(mktemp -d "${TMPDIR:-/var/tmp}/kestro-package.XXXXXX")
debian=$scratch/debian
clean_up() {
  if ((keep)); then
    echo "left: $scratch"
  else
    rm -rf --one-file-system "$scratch"
  fi
}
trap clean_up EXIT

fail() {
  echo "FAILED: $*" >&2
  exit 1
}
step() { echo "== $*"; }

# --- the package itself ---------------------------------------------------------------------------

build() { # build FOLDER: prints the package's path
  mkdir -p "$1"
  if ! "$root_of_sources/tools/package_debian.sh" "$1" >"$scratch/build.log" 2>&1; then
    tail -n 40 "$scratch/build.log" >&2
    fail "the package cannot be built"
  fi
  tail -n 1 "$scratch/build.log"
}

if [[ -z $deb ]]; then
  step "build"
  deb=$(build "$scratch/first")
fi
if ((reproducible)); then
  step "build again, elsewhere and without a compiler cache"
  again=$(CCACHE_DISABLE=1 build "$scratch/some/where else")
  cmp "$deb" "$again" || fail "two builds of the same sources differ"
  echo "equal: $(sha256sum <"$deb" | cut -c1-64)"
fi
version=$(dpkg-deb --field "$deb" Version)

step "lintian"
lintian_as=()
if ((EUID == 0)); then lintian_as=(--allow-root); fi
lintian "${lintian_as[@]}" --pedantic --display-info --fail-on error,warning "$deb" || fail "lintian has findings"

step "desktop files"
mkdir "$scratch/content"
dpkg-deb --extract "$deb" "$scratch/content"
desktop-file-validate "$scratch"/content/usr/share/applications/*.desktop
appstreamcli validate --no-net "$scratch"/content/usr/share/metainfo/*.xml

# --- a fresh system -------------------------------------------------------------------------------

if ((EUID != 0)) || ! command -v debootstrap >/dev/null || ! command -v unshare >/dev/null; then
  echo "SKIPPED: installing in a fresh Debian 12 needs root and debootstrap"
  exit 0
fi

# ORIGIN|CODENAME|URI|RELEASE|COMPONENT of the configured archives of Debian 12.
archives() {
  # shellcheck disable=SC2016 # apt-get's own fields
  apt-get indextargets --format '$(ORIGIN)|$(CODENAME)|$(REPO_URI)|$(RELEASE)|$(COMPONENT)' 'Created-By: Packages' |
    grep "^Debian|$kSuite" | LC_ALL=C sort -u
}
mirror=$(archives | grep "^Debian|$kSuite|" | head -n 1 | cut -d'|' -f3)
if [[ -z $mirror ]]; then
  echo "SKIPPED: apt is not configured with an archive of Debian 12 here"
  exit 0
fi

step "fresh Debian 12"
debootstrap --variant=minbase "$kSuite" "$debian" "$mirror" >"$scratch/debootstrap.log" 2>&1 || {
  tail -n 20 "$scratch/debootstrap.log" >&2
  fail "debootstrap"
}
archives | while IFS='|' read -r _ _ uri release component; do
  echo "deb $uri $release $component"
done >"$debian/etc/apt/sources.list"
if [[ -e /etc/resolv.conf ]]; then cp -L /etc/resolv.conf "$debian/etc/resolv.conf"; fi
printf '#!/bin/sh\nexit 101\n' >"$debian/usr/sbin/policy-rc.d"
chmod +x "$debian/usr/sbin/policy-rc.d"

# Mounts and processes end with the command.
in_debian() {
  unshare --mount --pid --fork --kill-child --mount-proc="$debian/proc" \
    chroot "$debian" /usr/bin/env DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 "$@"
}
# A script, as an ordinary user without a screen.
as_user() {
  in_debian su - "$kUser" -c "export LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen QT_LOGGING_RULES='*=false'; set -eu; $1"
}
apt_install() {
  in_debian apt-get install -q -y "$1" >"$scratch/apt.log" 2>&1 || {
    tail -n 30 "$scratch/apt.log" >&2
    fail "apt-get install $1"
  }
}
# Everything but what apt and dpkg keep for themselves, caches, and the user's home.
all_files() {
  (cd "$debian" && find . -xdev \( -path ./proc -o -path ./home -o -path ./var/lib/dpkg -o -path ./var/lib/apt \
    -o -path ./var/cache -o -path ./var/log -o -path ./tmp \) -prune -o -print) | LC_ALL=C sort
}

in_debian apt-get update -q >"$scratch/apt.log" 2>&1 || fail "apt-get update"
# What the test itself needs is there before, so that only the package makes a difference.
in_debian apt-get install -q -y --no-install-recommends "${kTools[@]}" >"$scratch/apt.log" 2>&1 || fail "apt-get install"
in_debian useradd --create-home --shell /bin/bash "$kUser"

step "install $version"
cp "$deb" "$debian/kestro-cti.deb"
apt_install /kestro-cti.deb
rm "$debian/kestro-cti.deb"
in_debian dpkg-query --listfiles kestro-cti | sed 's/^/./' | LC_ALL=C sort >"$scratch/own"
all_files | LC_ALL=C comm -23 - "$scratch/own" >"$scratch/before"

step "run as an ordinary user"
# shellcheck disable=SC2016 # expanded by the user's shell
as_user '
  [ "$(kestro-cti --version)" = "KESTRO CTI '"${version%-*}"'" ]
  demonstration=/usr/share/doc/kestro-cti/examples/demonstration.scenario
  cti-scenario --front-end headless $demonstration >headless.txt
  timeout 120 cti-scenario --front-end qt --screenshots pictures $demonstration >qt.txt
  cmp headless.txt qt.txt
  ls pictures/*.png >/dev/null
  rm -r headless.txt qt.txt pictures' || fail "the demonstration"
as_user 'umask 000; timeout 60 kestro-cti --end-after-start' || fail "the first start"

step "links, on a display with a notification area"
cat >"$debian/tmp/links" <<'LINKS'
set -eu
export QT_LOGGING_RULES='*=false' NO_AT_BRIDGE=1
trayer --edge bottom --height 28 >/dev/null 2>&1 &
question() { xdotool search --onlyvisible --name '^KESTRO CTI$'; }
await() { for attempt in $(seq 100); do if "$@" >/dev/null 2>&1; then return 0; fi; sleep 0.1; done; echo "never: $*" >&2; exit 1; }
number_of_calls() { cti-exchange list | grep -c '^0x' || true; }
press() { xdotool windowfocus --sync "$(question)" key "$1"; sleep 1; }
end() { kill -TERM "$program"; wait "$program"; }

kestro-cti --demo >/dev/null &
program=$!
await cti-exchange ring 777888999
await cti-exchange hang-up
calls=$(number_of_calls)
# As a browser does it. Nothing is dialled before the answer, and Enter does not mean yes.
xdg-open tel:+420-602-111-222
await question
[ "$(number_of_calls)" = "$calls" ]
press Return
[ "$(number_of_calls)" = "$calls" ]
kestro-cti callto:603222333
await question
kestro-cti tel:604333444 # while the question is open: dropped
press alt+y
cti-exchange list | grep 'dialling outgoing "603222333"' >/dev/null
[ "$(number_of_calls)" = "$((calls + 1))" ]
if question >/dev/null; then exit 1; fi
end

# Without a running program it starts and then asks; whom the user calls is not in the list of processes.
kestro-cti --demo tel:605444555 >/dev/null &
program=$!
await question
if grep -a 605444555 "/proc/$program/cmdline"; then exit 1; fi
press alt+y
cti-exchange list | grep 'dialling outgoing "605444555"' >/dev/null
end
LINKS
timeout 180 unshare --mount --pid --fork --kill-child --mount-proc="$debian/proc" chroot "$debian" \
  su - "$kUser" -c 'export LC_ALL=C.UTF-8; xvfb-run -a sh /tmp/links' >"$scratch/links.log" 2>&1 || {
  cat "$scratch/links.log" >&2
  fail "links"
}
rm "$debian/tmp/links"

step "files for the user alone"
open_files=$(cd "$debian/home/$kUser" && find .config .local \( -path '*kestro*' -o -path '*KESTRO*' \) -perm /077)
[[ -z $open_files ]] || fail "others may look at $open_files"
data() { (cd "$debian/home/$kUser" && find .config .local -type f -print0 | LC_ALL=C sort -z | xargs -0 sha256sum); }
data >"$scratch/data"
grep -q 'CTIDB.mdb$' "$scratch/data" || fail "the first start made no database"
grep -q 'settings.conf$' "$scratch/data" || fail "the first start stored no settings"

step "upgrade"
dpkg-deb --raw-extract "$deb" "$scratch/newer"
sed -i "s/^Version: .*/Version: $version+upgrade/" "$scratch/newer/DEBIAN/control"
rm "$scratch/newer/usr/share/doc/kestro-cti/examples/demonstration.scenario"
dpkg-deb --root-owner-group --build "$scratch/newer" "$debian/newer.deb" >/dev/null
apt_install /newer.deb
rm "$debian/newer.deb"
# shellcheck disable=SC2016 # dpkg-query's own field
[[ $(in_debian dpkg-query -W -f='${Version}' kestro-cti) == "$version+upgrade" ]] || fail "not upgraded"
[[ ! -e $debian/usr/share/doc/kestro-cti/examples/demonstration.scenario ]] || fail "an old file was left"
data | cmp - "$scratch/data" || fail "the upgrade changed the user's data"
as_user 'timeout 60 kestro-cti --end-after-start' || fail "the start after the upgrade"
data | cmp - "$scratch/data" || fail "the start after the upgrade changed the user's data"

step "purge"
in_debian apt-get purge -q -y kestro-cti >"$scratch/apt.log" 2>&1 || fail "apt-get purge"
if in_debian dpkg-query -W kestro-cti >/dev/null 2>&1; then fail "dpkg still knows the package"; fi
# Folders that other packages have as well stay.
cat "$debian"/var/lib/dpkg/info/*.list | sed 's/^/./' | LC_ALL=C sort -u >"$scratch/others"
all_files | LC_ALL=C comm -13 "$scratch/before" - | LC_ALL=C comm -23 - "$scratch/others" >"$scratch/left"
if [[ -s $scratch/left ]]; then
  cat "$scratch/left" >&2
  fail "the purge left files"
fi
data | cmp - "$scratch/data" || fail "the purge touched the user's data"

echo "package $version: all passed"
