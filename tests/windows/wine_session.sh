# Sourced: a Windows of its own under Wine, below build/wine, on a screen of its own.
#   start_wine    makes the prefix when it is not there yet and starts everything
#   stop_wine     ends everything that was started; safe to call at any time
# Nothing of the user's is touched: home, settings and screen are private.
# shellcheck shell=bash

wine_folder=${wine_folder:-$PWD/build/wine}
export WINEPREFIX=$wine_folder/prefix WINEARCH=win64 WINEDEBUG=-all HOME=$wine_folder/home LC_ALL=C.UTF-8
# No installer of further runtimes asks, a crash ends the process at once, the stand-in may replace the library.
export WINEDLLOVERRIDES="mscoree,mshtml=;winedbg.exe=d"
unset WAYLAND_DISPLAY DBUS_SESSION_BUS_ADDRESS
kDesktopSize=1024x700

screen_process=

start_screen() {
  local number
  exec {number}<> <(:)
  Xvfb -displayfd "$number" -screen 0 1280x800x24 -nolisten tcp >/dev/null 2>&1 &
  screen_process=$!
  read -r -t 20 -u "$number" DISPLAY
  exec {number}<&-
  export DISPLAY=:$DISPLAY
}

make_prefix() {
  rm -rf "$WINEPREFIX"
  timeout 180 wineboot -i >/dev/null 2>&1
  cp /usr/share/wine/fonts/{marlett,tahoma,tahomabd,symbol,wingding}.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
  # One desktop with a task bar and a notification area, so that no window manager is needed.
  wine reg add 'HKCU\Software\Wine\Explorer' /v Desktop /d Default /f >/dev/null 2>&1
  wine reg add 'HKCU\Software\Wine\Explorer\Desktops' /v Default /d "$kDesktopSize" /f >/dev/null 2>&1
  wine reg add 'HKCU\Software\Wine\AppDefaults\CTI.exe\DllOverrides' /v tapi32 /d native,builtin /f >/dev/null 2>&1
  wineserver -k || true
  wineserver -w
  touch "$WINEPREFIX/complete"
}

start_wine() {
  mkdir -p "$HOME"
  start_screen
  if [[ ! -e $WINEPREFIX/complete ]]; then
    make_prefix
  fi
  # The first program of a session starts the services, which then hold its outputs open.
  timeout 60 wine cmd /c exit >/dev/null 2>&1 </dev/null
}

stop_wine() {
  wineserver -k >/dev/null 2>&1 || true
  timeout 20 wineserver -w >/dev/null 2>&1 || true
  if [[ -n $screen_process ]]; then
    kill "$screen_process" 2>/dev/null || true
    wait "$screen_process" 2>/dev/null || true
    screen_process=
  fi
}
