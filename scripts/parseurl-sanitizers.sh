#!/usr/bin/env bash
# The page-analysis library under AddressSanitizer, UndefinedBehaviorSanitizer
# and LeakSanitizer, with clang: first its tests, then a fuzz run of each of
# its readers (HTML pages, JSON, playlists) with libFuzzer. Not part of the
# test suite; needs clang and libclang-rt-dev.
#
#   scripts/parseurl-sanitizers.sh [SECONDS_PER_READER]   (default 60)
#
# Builds in build-sanitize/ and build-fuzz/; inputs that crash are left in
# build-fuzz/crashes-<reader>/.
set -euo pipefail

VC_ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
SECONDS_PER_READER="${1:-60}"
SANITIZE_BUILD="$VC_ROOT/build-sanitize"
FUZZ_BUILD="$VC_ROOT/build-fuzz"
SANITIZERS="address,undefined"
JOBS="${VC_JOBS:-2}"

step() { printf '==> %s\n' "$*"; }

if ! command -v clang++ >/dev/null || ! compgen -G "/usr/lib/llvm-*/lib/clang/*/lib/linux/libclang_rt.fuzzer-x86_64.a" >/dev/null; then
  echo "This needs clang with its sanitizer and fuzzer runtimes: apt-get install clang libclang-rt-dev" >&2
  exit 2
fi

step "Tests of the library under the sanitizers"
mkdir -p "$SANITIZE_BUILD"
LOG="$SANITIZE_BUILD/build.log"
cmake -S "$VC_ROOT" -B "$SANITIZE_BUILD" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ \
  -DCMAKE_C_FLAGS="-fsanitize=$SANITIZERS -fno-omit-frame-pointer" \
  -DCMAKE_CXX_FLAGS="-fsanitize=$SANITIZERS -fno-omit-frame-pointer" \
  -DCMAKE_EXE_LINKER_FLAGS="-fsanitize=$SANITIZERS" >"$LOG" 2>&1 ||
  { cat "$LOG"; exit 1; }
cmake --build "$SANITIZE_BUILD" --target parseurl-tests --parallel "$JOBS" >>"$LOG" 2>&1 ||
  { tail -50 "$LOG"; exit 1; }
ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1 \
  "$SANITIZE_BUILD/bin/parseurl-tests" --gtest_brief=1

step "Fuzzing the readers for ${SECONDS_PER_READER}s each"
mkdir -p "$FUZZ_BUILD/objects"
read -r -a GUMBO_CFLAGS <<<"$(pkg-config --cflags gumbo)"
read -r -a GUMBO_LIBS <<<"$(pkg-config --libs gumbo)"
COMPILE=(clang++ -std=c++20 -g -O1 -fno-omit-frame-pointer -fsanitize=fuzzer-no-link,$SANITIZERS
  -fno-sanitize-recover=undefined -I"$VC_ROOT/src/parseurl" -I"$VC_ROOT/src/parseurl/include" "${GUMBO_CFLAGS[@]}")
objects=()
for source in "$VC_ROOT"/src/parseurl/*.cpp; do
  object="$FUZZ_BUILD/objects/$(basename "${source%.cpp}").o"
  if [ ! -f "$object" ] || [ "$source" -nt "$object" ]; then "${COMPILE[@]}" -c "$source" -o "$object"; fi
  objects+=("$object")
done

status=0
for reader in 1:html 2:json 3:playlist; do
  number="${reader%%:*}"
  name="${reader#*:}"
  program="$FUZZ_BUILD/fuzz-$name"
  "${COMPILE[@]}" -fsanitize=fuzzer -DPARSEURL_FUZZ_READER="$number" "$VC_ROOT/bench/fuzz/ParseUrlFuzz.cpp" \
    "${objects[@]}" -lcurl "${GUMBO_LIBS[@]}" -o "$program"
  mkdir -p "$FUZZ_BUILD/corpus-$name" "$FUZZ_BUILD/crashes-$name"
  step "Reader $name"
  if ! "$program" -max_total_time="$SECONDS_PER_READER" -timeout=10 -rss_limit_mb=2048 -max_len=65536 \
    -print_final_stats=1 -artifact_prefix="$FUZZ_BUILD/crashes-$name/" \
    "$FUZZ_BUILD/corpus-$name" "$VC_ROOT/bench/fuzz/seeds/$name" 2>"$FUZZ_BUILD/fuzz-$name.log"; then
    status=1
    tail -40 "$FUZZ_BUILD/fuzz-$name.log"
  fi
  grep -E '^stat::(number_of_executed_units|peak_rss_mb)|^#[0-9]+ +DONE' "$FUZZ_BUILD/fuzz-$name.log" || true
done
exit "$status"
