# Shared by run.sh and test.sh: package installation and the build.

VC_ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
VC_BUILD="${VC_BUILD:-$VC_ROOT/build}"

# The Debian packages the build, the tests and the program need.
VC_PACKAGES=(
  cmake ninja-build g++ pkg-config
  libavformat-dev libavcodec-dev libavfilter-dev libavutil-dev libswscale-dev libswresample-dev
  libfontconfig1-dev libfreetype-dev
  libtag1-dev libcurl4-openssl-dev zlib1g-dev libssl-dev libplist-dev libgumbo-dev nlohmann-json3-dev
  qt6-base-dev qt6-svg-dev qt6-multimedia-dev libgtest-dev libcpp-httplib-dev ffmpeg python3-mutagen musepack-tools
)

step() { printf '==> %s\n' "$*"; }

install_packages() {
  local missing=()
  local package
  for package in "${VC_PACKAGES[@]}"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing+=("$package")
  done
  if [ ${#missing[@]} -eq 0 ]; then
    step "Packages: all ${#VC_PACKAGES[@]} present"
    return
  fi
  step "Packages: installing ${missing[*]}"
  local sudo=()
  [ "$(id -u)" -eq 0 ] || sudo=(sudo)
  export DEBIAN_FRONTEND=noninteractive
  "${sudo[@]}" apt-get update -qq
  "${sudo[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# Configures a build folder once with the given CMake settings and builds it
# with every core; the compiler's output goes to build.log in that folder and
# is shown only when the build fails.
configure_and_build() {
  local dir="$1"
  shift
  local settings=()
  command -v ninja >/dev/null && settings=(-G Ninja)
  command -v ccache >/dev/null && settings+=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
  mkdir -p "$dir"
  local log="$dir/build.log"
  if [ ! -f "$dir/CMakeCache.txt" ]; then
    step "Configure: $dir"
    if ! cmake -S "$VC_ROOT" -B "$dir" "${settings[@]}" "$@" >"$log" 2>&1; then
      tail -n 40 "$log"
      return 1
    fi
  fi
  step "Build: $(nproc) jobs (log: $log)"
  if ! cmake --build "$dir" --parallel "$(nproc)" >"$log" 2>&1; then
    grep -E 'error|FAILED' "$log" | head -n 40
    step "Build failed; the whole log is in $log"
    return 1
  fi
}

build_project() { configure_and_build "$VC_BUILD" -DCMAKE_BUILD_TYPE=Release; }
