#!/usr/bin/env bash
# accept.sh: stores the present instruction counts of the hot paths in tests/perf, for the g++ of this
# machine. Read what it changed before you commit it.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

cmake --preset linux >/dev/null
cmake --build --preset linux --target zol_accept_instructions
git --no-pager diff --stat -- tests/perf
