# Shared by ./run, ./test, .ci/run and bench/measure: installs what is missing, configures and builds. Sourced by bash.
# shellcheck shell=bash disable=SC2034

readonly BUILD_PACKAGES=(
  g++ cmake ninja-build ccache pkg-config librsvg2-bin
  qt6-base-dev qt6-multimedia-dev qt6-qpa-plugins qt6-wayland
  libxcb1-dev libxcb-xfixes0-dev libxcb-xtest0-dev libxcb-xkb-dev libxkbcommon-dev libxkbcommon-x11-dev
  libwayland-dev libwayland-bin
  libgtest-dev python3
)
# Desktops without a screen, of X11 and of Wayland, and what drives them.
readonly DESKTOP_PACKAGES=(
  xvfb openbox tint2 xclip xdotool dbus dbus-x11 at-spi2-core
  python3-xlib python3-gi
  sway xwayland foot wtype
  x11-utils x11-xkb-utils x11-xserver-utils imagemagick fonts-dejavu-core
  wl-clipboard kwin-wayland
)

say() { printf '== %s\n' "$*"; }
fail() {
  printf '%s: %s\n' "${0##*/}" "$*" >&2
  exit 1
}

as_root() {
  if [ "$(id -u)" -eq 0 ]; then
    "$@"
  elif command -v sudo >/dev/null; then
    sudo "$@"
  else
    fail "neither root nor sudo: install these packages first: ${missing[*]}"
  fi
}

# need_packages PACKAGE...: installs those that aren't there. Without apt-get it goes on with what there is.
need_packages() {
  command -v dpkg-query >/dev/null && command -v apt-get >/dev/null || return 0
  local installed package
  installed=$(dpkg-query -W -f '${db:Status-Status} ${Package}\n' "$@" 2>/dev/null)
  missing=()
  for package in "$@"; do
    grep -qxF "installed $package" <<<"$installed" || missing+=("$package")
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  say "installing: ${missing[*]}"
  # Old package lists may name versions that are gone; they are renewed once, when they are needed.
  if ! install_packages "${missing[@]}"; then
    as_root apt-get update -q || fail "apt-get update failed"
    install_packages "${missing[@]}" || fail "cannot install: ${missing[*]}"
  fi
}

# What the package tools say matters only when they fail.
install_packages() {
  local said
  said=$(as_root env DEBIAN_FRONTEND=noninteractive apt-get install -qq -y --no-install-recommends "$@" 2>&1) || {
    printf '%s\n' "$said" >&2
    return 1
  }
}

# build FOLDER PRESET TARGETS [CMAKE OPTION...]: configures and builds in FOLDER; TARGETS are words in one argument.
build() {
  local folder=$1 preset=$2 targets=$3
  shift 3
  say "building in ${folder#"$root"/}"
  # shellcheck disable=SC2086
  cmake --preset "$preset" -S "$root" -B "$folder" "$@" >"$folder.log" 2>&1 &&
    cmake --build "$folder" --target $targets >>"$folder.log" 2>&1 || {
    tail -n 60 "$folder.log" >&2
    fail "the build failed; all of it stands in $folder.log"
  }
}
