#!/usr/bin/env bash
# Installs, runs and removes the Windows program under Wine: tests/windows/installer.sh SETUP-PROGRAM
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

setup=$(realpath "$1")
# shellcheck source=tests/windows/wine_session.sh
source tests/windows/wine_session.sh
trap stop_wine EXIT
start_wine

failed=0
# check WHAT COMMAND...
check() {
  local what=$1
  shift
  if "$@" >/dev/null 2>&1; then
    echo "passed $what"
  else
    echo "FAILED $what"
    failed=$((failed + 1))
  fi
}
not() { ! "$@"; }
registered() { timeout 30 wine reg query "$@" </dev/null; }
gone() {
  local wait
  for ((wait = 0; wait < 50; ++wait)); do # the uninstaller goes on in a copy of itself
    if [[ ! -e $1 ]]; then return 0; fi
    sleep 0.2
  done
  return 1
}

user=("$WINEPREFIX"/drive_c/users/*/AppData)
installed="${user[0]}/Local/Programs/KESTRO CTI"
contacts="${user[0]}/Roaming/KESTRO/KESTROCTI/CTIDB.mdb"
run_key='HKCU\Software\Microsoft\Windows\CurrentVersion\Run'
rm -rf "$installed" "${contacts%/*}"
wine reg delete 'HKCU\Software\Kestro' /f </dev/null >/dev/null 2>&1 || true # there may be nothing to delete

install() { timeout 60 wine "$setup" /S "$@" </dev/null; }
uninstall() { timeout 60 wine "$installed/Uninstall.exe" /S "$@" </dev/null; }

check "installs silently" install
check "does not start with the session by itself" not registered "$run_key" /v "KESTRO CTI"
check "installs over itself, with both options" install /AUTOSTART /TEL
check "starts with the session" registered "$run_key" /v "KESTRO CTI"
check "opens tel: addresses" registered 'HKCU\Software\Classes\KestroCti.tel\shell\open\command'
check "comes up and ends" timeout 60 wine "$installed/CTI.exe" /end-after-start
check "has made the contacts" test -s "$contacts"
check "is removed" uninstall
check "leaves no file" gone "$installed"
check "leaves no start with the session" not registered "$run_key" /v "KESTRO CTI"
check "leaves no tel: addresses" not registered 'HKCU\Software\Classes\KestroCti.tel'
check "keeps the contacts" test -s "$contacts"
check "is installed once more" install
check "is removed with the contacts" uninstall /PURGE
check "leaves no file again" gone "$installed"
check "leaves no contacts" gone "$contacts"
check "leaves no settings" not registered 'HKCU\Software\Kestro\CTI'
echo "installer: $failed failed"
((failed == 0))
