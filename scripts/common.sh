# shellcheck shell=bash disable=SC2034 # used by the scripts that source this
# Shared by the scripts beside this file: where things are, packages, building. To be sourced by bash.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

# What any build needs.
packages=(
  g++ cmake ninja-build pkg-config ccache git python3
  qt6-base-dev qt6-5compat-dev qt6-serialport-dev qt6-tools-dev qt6-l10n-tools libqrencode-dev libzint-dev
  libmicrohttpd-dev libgnutls28-dev nlohmann-json3-dev libqt6sql6-sqlite fonts-dejavu-core libgtest-dev libgmock-dev
)
# What the tests need besides.
test_packages=(python3-jsonschema zbar-tools tshark chromium chromium-driver python3-selenium curl nodejs postgresql libqt6sql6-psql)
# What only the suites of scripts/test --all need.
large_packages=(valgrind)

say() { printf '==> %s\n' "$*" >&2; }

die() {
  printf '%s: %s\n' "$(basename "$0")" "$*" >&2
  exit 1
}

as_root() {
  if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

missing_packages() {
  local package
  for package in "$@"; do
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || echo "$package"
  done
}

# install_packages NAME...: installs what is missing; does not ask the network when nothing is.
install_packages() {
  local missing
  mapfile -t missing < <(missing_packages "$@")
  if [ "${#missing[@]}" -eq 0 ]; then
    say "all packages are installed"
    return
  fi
  command -v apt-get >/dev/null || die "needs these packages, and there is no apt-get here: ${missing[*]}"
  say "installing packages: ${missing[*]}"
  as_root env DEBIAN_FRONTEND=noninteractive apt-get update -qq
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# build PRESET [TARGET...]: configures and builds; sets build_dir.
build() {
  local preset=$1
  shift
  build_dir=$root/build/$preset
  say "building ($preset) in build/$preset"
  mkdir -p "$build_dir"
  (cd "$root" && cmake --preset "$preset" -Wno-dev >"$build_dir/configure.log" 2>&1) || {
    cat "$build_dir/configure.log" >&2
    die "CMake could not configure the build"
  }
  cmake --build "$build_dir" ${1:+--target "$@"} >&2 || die "the build failed"
}
