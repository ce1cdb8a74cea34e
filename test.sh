#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test through CTest.
set -euo pipefail
source "$(dirname "$0")/scripts/common.sh"

install_packages
build_project
step "Test: ctest with $(nproc) jobs"
cd "$VC_BUILD"
QT_QPA_PLATFORM=offscreen ctest --output-on-failure --parallel "$(nproc)" "$@"
