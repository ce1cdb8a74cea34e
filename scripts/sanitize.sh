#!/usr/bin/env bash
# Builds every test with AddressSanitizer and UndefinedBehaviorSanitizer in a
# build folder of its own and runs the whole CTest suite under them. Any
# undefined behaviour or memory error fails its test; leaks fail it too,
# except those inside the third-party libraries listed in scripts/lsan.supp.
set -euo pipefail
source "$(dirname "$0")/common.sh"

VC_SANITIZE_BUILD="${VC_SANITIZE_BUILD:-$VC_ROOT/build-asan-ubsan}"
SANITIZE_FLAGS="-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer"
# -O1 and line tables only keep the build and the run quick while the reports still name file and line.
COMPILE_FLAGS="-O1 -g1 $SANITIZE_FLAGS"

# The build runs the test programs too, to list their tests.
export ASAN_OPTIONS="detect_leaks=1:check_initialization_order=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
export LSAN_OPTIONS="suppressions=$VC_ROOT/scripts/lsan.supp:print_suppressions=0"

install_packages
configure_and_build "$VC_SANITIZE_BUILD" -DCMAKE_BUILD_TYPE=Sanitize -DVC_BUILD_BENCH=OFF \
  -DCMAKE_C_FLAGS_SANITIZE="$COMPILE_FLAGS" -DCMAKE_CXX_FLAGS_SANITIZE="$COMPILE_FLAGS" \
  -DCMAKE_EXE_LINKER_FLAGS_SANITIZE="$SANITIZE_FLAGS" -DCMAKE_SHARED_LINKER_FLAGS_SANITIZE="$SANITIZE_FLAGS"
step "Test under the sanitizers: ctest with $(nproc) jobs"
cd "$VC_SANITIZE_BUILD"
QT_QPA_PLATFORM=offscreen ctest --output-on-failure --parallel "$(nproc)" "$@"
