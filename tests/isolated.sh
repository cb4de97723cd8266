#!/usr/bin/env bash
# Runs a command as a user who has no settings and no screen: tests/isolated.sh COMMAND [ARGUMENT...]
# Everything it writes to the home or run-time folder goes to a temporary folder, removed afterwards.
set -euo pipefail

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
mkdir -m 700 "$scratch/home" "$scratch/runtime"

unset DISPLAY WAYLAND_DISPLAY DBUS_SESSION_BUS_ADDRESS
export QT_QPA_PLATFORM=offscreen
export HOME="$scratch/home" XDG_RUNTIME_DIR="$scratch/runtime"
export XDG_CONFIG_HOME="$HOME/.config" XDG_DATA_HOME="$HOME/.local/share"
export XDG_CACHE_HOME="$HOME/.cache" XDG_STATE_HOME="$HOME/.local/state"

"$@"
