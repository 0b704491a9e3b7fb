#!/usr/bin/env bash
# Fails when a source file differs from .clang-format's style (CI runs it; `cmake --build build
# --target format` fixes it).
set -euo pipefail
cd "$(dirname "$0")/.."
git ls-files -- 'src/*.cpp' 'src/*.h' 'tests/*.cpp' 'tests/*.h' 'bench/*.cpp' |
  xargs clang-format --dry-run --Werror
