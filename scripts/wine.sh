#!/usr/bin/env bash
# wine.sh PROGRAM [ARGUMENT...]: runs a Windows program under Wine, in a prefix of this tree's own.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

export WINEPREFIX=${ZOL_WINEPREFIX:-$root/build/wine}
export WINEDEBUG=${WINEDEBUG:--all}

# Two programs at once must not both make the prefix.
if [ ! -e "$WINEPREFIX/.ready" ]; then
    mkdir -p "$WINEPREFIX"
    (
        flock 9
        if [ ! -e "$WINEPREFIX/.ready" ]; then
            DISPLAY='' wine wineboot -i >"$WINEPREFIX.log" 2>&1 ||
                { echo "wine.sh: cannot make the Wine prefix $WINEPREFIX, see $WINEPREFIX.log" >&2; exit 1; }
            touch "$WINEPREFIX/.ready"
        fi
    ) 9>"$WINEPREFIX.lock"
fi

exec wine "$@"
