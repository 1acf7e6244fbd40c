#!/usr/bin/env bash
# docs.sh [FOLDER]: sets up the machine and builds the documentation site in FOLDER (default:
# build/docs/site). Every warning is an error, including dead links. Prints the path of the first page.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

say() { echo "docs: $*"; }
die() { echo "docs: $*" >&2; exit 1; }

[ $# -le 1 ] || die "usage: scripts/docs.sh [FOLDER]"
site=$(realpath -m "${1-build/docs/site}")
work=build/docs

# The folder is deleted first, so it must be empty or contain an earlier site.
[ ! -e "$site" ] || [ -e "$site/.buildinfo" ] || [ -z "$(ls -A "$site")" ] ||
    die "$site exists and does not contain a site"

scripts/setup.sh all
mkdir -p "$work"
rm -rf "$site" "$work/xml"

say "reading the public headers"
doxygen docs/site/Doxyfile || die "Doxygen reported errors"

say "building the pages"
# Debian installs these modules for its own Python. PYTHONWARNINGS hides deprecation warnings of Breathe and
# other packages.
PYTHONWARNINGS=ignore PYTHONDONTWRITEBYTECODE=1 \
    /usr/bin/python3 -m sphinx -q -b html -W --keep-going -n -c docs/site -d "$work/doctrees" \
    -E docs "$site" || die "Sphinx reported errors"

say "checking the links"
/usr/bin/python3 docs/site/check_links.py "$site" README.md CHANGELOG.md CONTRIBUTING.md ||
    die "dead links found"
say "file://$site/index.html"
