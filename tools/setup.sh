# Sourced by ./run and ./test: packages and builds; Wine and a display are in tools/wine.sh. Nothing is written outside the
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

. tools/wine.sh
