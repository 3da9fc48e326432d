# Sourced by tools/setup.sh: the private Wine prefix in which ./run and ./test run Windows programs, and their display.

# Wine with a prefix, a home and caches of its own. The last script that uses the prefix ends its server.
use_wine() {
  export WINEPREFIX=$PWD/build/wine-prefix WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES="mscoree=;mshtml="
  export XDG_CACHE_HOME=$PWD/build/home/.cache XDG_CONFIG_HOME=$PWD/build/home/.config
  export XDG_DATA_HOME=$PWD/build/home/.local/share
  mkdir -p build/home
  # A program and Wine's server answer each other all the time; each on a processor of its own they sleep and wake for every
  # call, which takes up to five times as long.
  local processors
  processors=$(taskset -cp $$ 2>/dev/null) && wine=(taskset -c "${processors##*[ ,-]}" wine) || wine=(wine)
  exec 8>build/wine.lock
  [ -d "$WINEPREFIX" ] && flock -n -x 8 && end_wine_server # one left over from a run that was cut off may hold a display that is gone
  flock -s 8
  if [ ! -e "$WINEPREFIX/.ready" ]; then
    with_progress "Preparing Wine (once)" build/wine-prefix.log env HOME="$PWD/build/home" timeout 300 wineboot -i ||
      return
    end_wine_server # it knows no display
    touch "$WINEPREFIX/.ready"
  fi
}

end_wine_server() {
  wineserver -k >/dev/null 2>&1 8>&-
  timeout 20 wineserver -w >/dev/null 2>&1 8>&-
  return 0
}

leave_wine() {
  [ -n "${WINEPREFIX:-}" ] && flock -n -x 8 && end_wine_server
  return 0
}

# A display for the windows: the user's own, or a virtual one that ends with the script.
use_display() {
  if [ -n "${DISPLAY:-}" ]; then
    local number=${DISPLAY#*:}
    case $DISPLAY in
    :*) [ -S "/tmp/.X11-unix/X${number%%.*}" ] && frames_by Y && return ;;
    *) frames_by Y && return ;;
    esac
  fi
  export TINTWERK_VIRTUAL_DISPLAY=1
  local ready=build/xvfb.display.$$ wait
  Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$ready" >build/xvfb.log 2>&1 8>&- &
  xvfb=$!
  for wait in $(seq 100); do
    [ -s "$ready" ] && break
    sleep 0.1
  done
  [ -s "$ready" ] || fail "The virtual display did not start; build/xvfb.log says why."
  DISPLAY=:$(tr -d '\n' <"$ready")
  rm -f "$ready"
  export DISPLAY
  frames_by N
}

# frames_by Y|N: whether the desktop's window manager draws the frames of windows, or Wine itself where there is none.
frames_by() {
  [ "$(cat build/wine-prefix/.frames 2>/dev/null)" = "$1" ] && return
  HOME=$PWD/build/home "${wine[@]}" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d "$1" /f >/dev/null 2>&1 8>&-
  printf '%s' "$1" >build/wine-prefix/.frames
}

leave_display() {
  [ -n "${xvfb:-}" ] && kill "$xvfb" 2>/dev/null
  return 0
}
