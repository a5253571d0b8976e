#!/usr/bin/env bash
# Sources stand as clang-format lays them; remedy: scripts/format.
set -euo pipefail
cd "$(dirname "$0")/.."
git ls-files -co --exclude-standard '*.h' '*.cpp' | xargs -r clang-format --dry-run -Werror
