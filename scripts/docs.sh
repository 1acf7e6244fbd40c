#!/usr/bin/env bash
# docs.sh [FOLDER]: sets up the machine and makes the documentation's site, in build/docs/site if no
# folder is given. Any warning, a link that leads nowhere for one, is an error. Ends with the path of
# the first page.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

say() { echo "docs: $*"; }
die() { echo "docs: $*" >&2; exit 1; }

[ $# -le 1 ] || die "usage: scripts/docs.sh [FOLDER]"
site=$(realpath -m "${1-build/docs/site}")
work=build/docs

# Whatever lies in the folder goes, so it must be a site or nothing.
[ ! -e "$site" ] || [ -e "$site/.buildinfo" ] || [ -z "$(ls -A "$site")" ] ||
    die "$site is there already, and is not a site"

scripts/setup.sh
mkdir -p "$work"
rm -rf "$site" "$work/xml"

say "reading the public headers"
doxygen docs/site/Doxyfile || die "Doxygen has complaints"

say "making the pages"
# Debian's modules are those of Debian's own Python. What hints at older interfaces of Breathe and its
# like is not ours to mend.
PYTHONWARNINGS=ignore PYTHONDONTWRITEBYTECODE=1 \
    /usr/bin/python3 -m sphinx -q -b html -W --keep-going -n -c docs/site -d "$work/doctrees" \
    -E docs "$site" || die "Sphinx has complaints"

say "following the links"
/usr/bin/python3 docs/site/check_links.py "$site" README.md CHANGELOG.md || die "there are dead links"
say "file://$site/index.html"
