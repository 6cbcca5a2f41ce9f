#!/usr/bin/env bash
# One entry point for newcomers and CI.
#   ./build.sh demo   install what is missing, build, run the gallery in
#                     screenshot mode (PNGs in out/gallery/)
#   ./build.sh test   install, build and run every test: native (with ASan/UBSan),
#                     fuzz smoke runs, and the Windows tests under Wine
#   ./build.sh bench  native benchmarks (numbers for the README)
#   ./build.sh deps   install the Debian packages only
set -euo pipefail
cd "$(dirname "$0")"
root=$(pwd)

packages=(cmake ninja-build g++ googletest libgtest-dev libbenchmark-dev clang libclang-rt-14-dev
          g++-mingw-w64-x86-64-posix mingw-w64-x86-64-dev wine wine64 xvfb xauth imagemagick python3
          cups printer-driver-cups-pdf poppler-utils)

need_packages() {
  local missing=()
  for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
  done
  if [ ${#missing[@]} -gt 0 ]; then
    echo "== installing: ${missing[*]}"
    local sudo=
    [ "$(id -u)" -ne 0 ] && sudo=sudo
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
  fi
}

jobs=$(nproc 2>/dev/null || echo 2)

build_windows() {
  cmake --preset mingw >/dev/null
  cmake --build --preset mingw -j "$jobs"
}

# A private X server and a persistent wineserver for a whole run: every Wine
# process start then costs a fraction of a second instead of seconds.
start_display() {
  if [ -z "${DISPLAY:-}" ]; then
    local n
    for n in $(seq 91 140); do
      [ -e "/tmp/.X11-unix/X$n" ] || [ -e "/tmp/.X$n-lock" ] && continue
      Xvfb ":$n" -screen 0 "${1:-1280x1024}x24" -nolisten tcp >/dev/null 2>&1 &
      xvfb_pid=$!
      for _ in $(seq 1 100); do [ -e "/tmp/.X11-unix/X$n" ] && break; sleep 0.05; done
      export DISPLAY=":$n"
      break
    done
  fi
  export WINEPREFIX="$root/build/mingw/wineprefix" WINEDEBUG=-all
  # The launcher creates the prefix on first use; do it once here.
  build/mingw/winrun.sh cmd /c exit >/dev/null 2>&1 || true
  wineserver -p >/dev/null 2>&1 || true
}

stop_display() {
  wineserver -k >/dev/null 2>&1 || true
  [ -n "${xvfb_pid:-}" ] && kill "$xvfb_pid" 2>/dev/null || true
}

case "${1:-}" in
  deps)
    need_packages
    ;;
  demo)
    need_packages
    build_windows
    mkdir -p out/gallery
    rm -f out/gallery/*.png
    rm -rf out/gallery/144dpi
    mkdir -p out/gallery/144dpi
    # A screen large enough for the gallery at 150 %.
    start_display 2048x1536
    trap stop_display EXIT
    build/mingw/winrun.sh build/mingw/bin/gallery.exe --screenshot 'Z:'"$(echo "$root/out/gallery" | tr / '\\')"
    # The same pages at 144 DPI (150 %), in a prefix of their own.
    QV_WINEPREFIX="$root/build/mingw/wineprefix-dpi144" QV_DPI=144 \
      build/mingw/winrun.sh build/mingw/bin/gallery.exe --screenshot 'Z:'"$(echo "$root/out/gallery/144dpi" | tr / '\\')"
    echo "Gallery screenshots: $root/out/gallery (and at 144 DPI in out/gallery/144dpi)"
    ls out/gallery out/gallery/144dpi
    ;;
  test)
    need_packages
    python3 tools/make_bitmaps.py --check
    echo "== native model tests (ASan/UBSan)"
    cmake --preset native-asan >/dev/null
    cmake --build --preset native-asan -j "$jobs"
    ctest --preset native-asan -j "$jobs" --progress
    echo "== fuzz smoke runs"
    cmake --preset fuzz >/dev/null
    cmake --build --preset fuzz -j "$jobs"
    ctest --preset fuzz
    echo "== Windows tests under Wine"
    build_windows
    start_display
    trap stop_display EXIT
    ctest --preset mingw
    ;;
  bench)
    need_packages
    cmake --preset bench >/dev/null
    cmake --build --preset bench -j "$jobs"
    for b in build/bench/qv_*bench; do [ -x "$b" ] && "$b"; done
    build_windows
    start_display
    trap stop_display EXIT
    for b in build/mingw/bin/qvw_*_bench.exe; do build/mingw/winrun.sh "$b"; done
    ;;
  *)
    echo "usage: ./build.sh demo|test|bench|deps" >&2
    exit 2
    ;;
esac
