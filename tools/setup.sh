# Sourced by ./run and ./test: packages, builds, a private Wine prefix and a display. Nothing is written outside the
# checkout. The sourcing script has changed to the root of the checkout.

say() { printf '%s\n' "$*"; }
fail() { printf '%s\n' "$*" >&2; exit 1; }

# need_packages PACKAGE...: installs what is missing, or names the one command that does.
need_packages() {
  local package missing=() privilege=()
  command -v dpkg-query >/dev/null || { say "This is no Debian: taking it that the tools are there ($*)."; return; }
  for package in "$@"; do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return
  say "Missing Debian packages: ${missing[*]}"
  if [ "$(id -u)" -ne 0 ]; then
    if command -v sudo >/dev/null && { [ -t 0 ] || sudo -n true 2>/dev/null; }; then
      privilege=(sudo)
    else
      fail "Installing them needs root. Type this once, then start again:
  su -c 'apt-get update && apt-get install -y --no-install-recommends ${missing[*]}'"
    fi
  fi
  mkdir -p build
  with_progress "Installing them" build/packages.log install_packages "${privilege[@]}" -- "${missing[@]}" ||
    fail "The installation failed; everything it said is in build/packages.log."
}

install_packages() {
  local privilege=()
  while [ "$1" != -- ]; do privilege+=("$1"); shift; done
  shift
  "${privilege[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update &&
    "${privilege[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "$@"
}

# with_progress WHAT LOG COMMAND...: runs the command into the log, says every few seconds how far it is, and shows
# the end of the log when it fails.
with_progress() {
  local what=$1 log=$2 start=$SECONDS status=0 last='' line
  shift 2
  "$@" >"$log" 2>&1 </dev/null 8>&- &
  local child=$!
  while kill -0 "$child" 2>/dev/null; do
    sleep 0.2
    if [ $((SECONDS - start)) -ge 2 ] && [ $(((SECONDS - start) % 4)) -eq 2 ]; then
      line=$(tail -n 1 "$log" 2>/dev/null | tr -d '\r' | cut -c 1-90)
      [ "$line" = "$last" ] || say "  $what (${line})"
      last=$line
    fi
  done
  wait "$child" || status=$?
  if [ "$status" -ne 0 ]; then
    say "$what failed:"
    grep -E 'error|FAILED|undefined|Unable|E:' "$log" | head -n 20
    tail -n 20 "$log"
  elif [ $((SECONDS - start)) -ge 2 ]; then
    say "$what: done in $((SECONDS - start)) s"
  fi
  return "$status"
}

# build PRESET [TARGET...]: configures once, then builds.
build() {
  local preset=$1 targets=()
  shift
  [ $# -gt 0 ] && targets=(--target "$@")
  mkdir -p build
  [ -f "build/$preset/build.ninja" ] ||
    with_progress "Configuring $preset" "build/$preset.configure.log" cmake --preset "$preset" || return
  with_progress "Building $preset" "build/$preset.log" cmake --build "build/$preset" "${targets[@]}"
}

# Wine with a prefix, a home and caches of its own. The last script that uses the prefix ends its server.
use_wine() {
  export WINEPREFIX=$PWD/build/wine-prefix WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES="mscoree=;mshtml="
  export XDG_CACHE_HOME=$PWD/build/home/.cache XDG_CONFIG_HOME=$PWD/build/home/.config
  export XDG_DATA_HOME=$PWD/build/home/.local/share
  mkdir -p build/home
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
  HOME=$PWD/build/home wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d "$1" /f >/dev/null 2>&1 8>&-
  printf '%s' "$1" >build/wine-prefix/.frames
}

leave_display() {
  [ -n "${xvfb:-}" ] && kill "$xvfb" 2>/dev/null
  return 0
}
