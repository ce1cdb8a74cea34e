#!/usr/bin/env bash
# Installs what is missing, builds, and runs the program: the windows when a
# display exists, otherwise the command line with the arguments given.
set -euo pipefail
source "$(dirname "$0")/scripts/common.sh"

install_packages
build_project
BIN="$VC_BUILD/bin"

if [ $# -gt 0 ]; then
  step "Run: videoconverter $*"
  exec "$BIN/videoconverter" "$@"
fi
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  step "Run: the main window"
  exec "$BIN/videoconverter-gui"
fi
step "Run: no display, showing the start-up information"
exec "$BIN/videoconverter" info
