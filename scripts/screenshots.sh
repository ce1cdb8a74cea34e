#!/usr/bin/env bash
# Makes the README's screenshots in docs/screenshots: the main window empty,
# with items and converting, the trim and editor windows over a playing
# picture, and the download window with a line in every state. Each window
# runs under Xvfb on a 1280x800 screen in a home of its own, driven with
# xdotool as a user would drive it (clicks at the places the default layout
# puts the controls, and the menus' keys).
set -euo pipefail
source "$(dirname "$0")/common.sh"

VC_PACKAGES+=(xvfb xauth xdotool imagemagick)
install_packages
build_project

BIN="$VC_BUILD/bin"
SHOTS="$VC_ROOT/docs/screenshots"
WORK="$(mktemp -d)"
trap 'rm -rf "$WORK"' EXIT
mkdir -p "$SHOTS" "$WORK/media"

step "Media: three clips and a song in $WORK/media"
clip() {  # name seconds pattern
  ffmpeg -v error -y -f lavfi -i "$3=size=640x360:rate=25" -f lavfi -i sine=frequency=440 -t "$2" \
    -c:v libx264 -pix_fmt yuv420p -c:a aac "$WORK/media/$1"
}
clip holiday.mp4 20 testsrc
clip interview.mp4 6 testsrc2
clip timelapse.mp4 8 smptebars
ffmpeg -v error -y -f lavfi -i sine=frequency=330 -t 4 "$WORK/media/song.mp3"

# Runs the main window on the files given, then the actions after "--":
#   click:X,Y  key:KEYS  type:TEXT  wait:SECONDS  screen:FILE  window:TITLE:FILE
session() {
  local files=()
  while [ $# -gt 0 ] && [ "$1" != "--" ]; do files+=("$1"); shift; done
  shift
  HOME="$WORK/home" xvfb-run -a -s "-screen 0 1280x800x24" bash -c '
    "$0" "${@:1:'"${#files[@]}"'}" >/dev/null 2>&1 &
    app=$!
    sleep 6
    for action in "${@:'"$((${#files[@]} + 1))"'}"; do
      case "$action" in
        click:*) xy="${action#click:}"; xdotool mousemove "${xy%,*}" "${xy#*,}" click 1; sleep 1 ;;
        key:*) xdotool key --clearmodifiers "${action#key:}"; sleep 2 ;;
        type:*) xdotool type "${action#type:}"; sleep 1 ;;
        wait:*) sleep "${action#wait:}" ;;
        screen:*) import -window root -crop 1180x700+0+0 +repage "${action#screen:}" ;;
        window:*) target="${action#window:}"
          import -window "$(xdotool search --name "^${target%%:*}\$" | head -n 1)" "${target#*:}" ;;
      esac
    done
    kill "$app" 2>/dev/null || true
  ' "$BIN/videoconverter-gui" "${files[@]}" "$@"
}

M="$WORK/media"
step "Screenshots: the main window"
session -- "screen:$SHOTS/main-empty.png"
session "$M/holiday.mp4" "$M/interview.mp4" "$M/timelapse.mp4" "$M/song.mp3" -- \
  "click:300,60" "key:space" "wait:2" "screen:$SHOTS/main-window.png" \
  "key:ctrl+Return" "wait:1.5" "screen:$SHOTS/converting.png"
step "Screenshots: trim and edit"
session "$M/holiday.mp4" "$M/interview.mp4" "$M/timelapse.mp4" -- \
  "click:300,60" "key:ctrl+t" "key:o" "click:439,554" "key:i" "wait:1" "key:o" "click:439,554" "wait:1" "key:i" \
  "window:Trim:$SHOTS/trim.png"
session "$M/holiday.mp4" "$M/interview.mp4" "$M/timelapse.mp4" -- \
  "click:300,60" "key:ctrl+e" "click:399,405" "key:ctrl+a" "type:40" "key:Return" \
  "click:401,437" "key:ctrl+a" "type:60" "key:Return" "wait:1" "window:Edit:$SHOTS/editor.png"
step "Screenshots: downloads"
HOME="$WORK/home" xvfb-run -a -s "-screen 0 1280x800x24" bash -c '
  "$0" 15 >/dev/null 2>&1 &
  sleep 8
  import -window "$(xdotool search --name "^Download Videos\$" | head -n 1)" "$1"
  wait
' "$BIN/download-window-preview" "$SHOTS/downloads.png"
step "Done: $(ls "$SHOTS" | tr '\n' ' ')"
