#!/usr/bin/env bash
# Installs what is missing, builds, and runs the program: the command line
# with the arguments given; without arguments the windows when a display
# exists, otherwise the conversion of a generated sample clip.
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
SAMPLE_DIR="${TMPDIR:-/tmp}/videoconverter-sample"
step "Sample: a 5 s test clip in $SAMPLE_DIR"
mkdir -p "$SAMPLE_DIR"
ffmpeg -v error -y -f lavfi -i testsrc2=size=640x360:rate=30 -f lavfi -i sine=frequency=440 -t 5 \
  -c:v libx264 -pix_fmt yuv420p -c:a aac "$SAMPLE_DIR/sample.mp4"
step "Run: no display, converting the sample with the default profile"
exec "$BIN/videoconverter" convert --profile "MPEG-4 AVC" "$SAMPLE_DIR/sample.mp4"
