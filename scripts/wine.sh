#!/usr/bin/env bash
# wine.sh PROGRAM [ARGUMENT...]: runs a Windows program under Wine, in a prefix of this tree's own.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

export WINEPREFIX=${ZOL_WINEPREFIX:-$root/build/wine}
export WINEDEBUG=${WINEDEBUG:--all}

# Wine's own 64-bit loader, which lies beside its server; `wine` is a script that looks for it.
find_loader() {
    local folder
    folder=$(dirname "$(readlink -f "$(command -v wineserver)")")
    for loader in "$folder/wine64" "$folder/wine"; do
        if [ "$(head -c 4 "$loader" 2>/dev/null)" = $'\177ELF' ]; then
            echo "$loader"
            return
        fi
    done
    command -v wine
}

# Two programs at once must not both make the prefix. The file .ready names the loader.
if [ ! -e "$WINEPREFIX/.ready" ]; then
    mkdir -p "$WINEPREFIX"
    (
        flock 9
        if [ ! -e "$WINEPREFIX/.ready" ]; then
            DISPLAY='' wine wineboot -i >"$WINEPREFIX.log" 2>&1 ||
                { echo "wine.sh: cannot make the Wine prefix $WINEPREFIX, see $WINEPREFIX.log" >&2; exit 1; }
            # Its server ends soon after it. A program that connected to it now could lose it.
            timeout 60 wineserver -w || true
            find_loader >"$WINEPREFIX/.ready"
        fi
    ) 9>"$WINEPREFIX.lock"
fi
read -r loader <"$WINEPREFIX/.ready" || true
if [ ! -x "$loader" ]; then
    loader=$(find_loader)
fi

# A server that stays for five minutes without a program: Debian's ends with the last one, and each
# start of it and its services takes a second. The command fails at once if there is a server. None of
# them inherits this script's output, which a caller may read to its end.
export WINELOADER=$loader
(
    flock 9
    if wineserver -p300 9>&-; then
        "$loader" wineboot 9>&- || true
    fi
) 9>"$WINEPREFIX.lock" </dev/null >/dev/null 2>&1

exec "$loader" "$@"
