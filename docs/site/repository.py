"""Adapts the repository's Markdown for the site, so that the files themselves stay plain Markdown.

- Adds the tables of contents, which exist only in the site.
- Rewrites links to files outside docs/. A link to a public header points to its reference page. A link
  to any other file or folder points to a generated page that shows it.
- Shows above a code block why the tests do not run it.
- Inlines images, so that they use the colours of the page and their text can be selected.
"""

import html
import os
import re
import subprocess
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
DOCS = ROOT / "docs"
HEADERS = "include/ZOL"
REFERENCE = "site/reference/"

CONTENTS = {
    "index": {
        "Start": ["concepts", "tutorial"],
        "Using it": ["services", "statements", "testing", "diagnostics", "questions", "coming-from", "porting", "packages", "windows"],
        "Back ends": ["back-ends", "patterns", "collectors", "writing-a-back-end"],
        "In depth": ["performance", "binary-contract", "registry", REFERENCE + "index"],
    },
    "services": {
        "": [
            "services/" + page
            for page in (
                "loggers", "string-holder", "exceptions", "heap", "named-objects", "counters",
                "properties", "random-numbers", "crisis-log",
            )
        ],
    },
}

NOT_RUN = re.compile(r"( *)<!-- not run: (.*) -->")

LINK = re.compile(r"(!?)\[([^\]]*)\]\(([^)\s#:]+)(#[^)\s]*)?\)")

PAGE = """<!doctype html>
<html lang="en"><meta charset="utf-8"><meta name="viewport" content="width=device-width">
<title>{title}</title>
<style>:root {{ color-scheme: light dark }} body {{ font-family: sans-serif; margin: 2em }}
pre {{ overflow: auto }}</style>
<p><a href="{home}">Documentation</a></p>
<h1>{title}</h1>
{body}
</html>
"""


class Repository:
    """Generates the pages of files and folders that the documents link to."""

    def __init__(self, folder):
        self.folder = folder

    def page(self, path):
        """Writes the page of a file or folder and returns its path in the site."""
        place = path + ("/index.html" if (ROOT / path).is_dir() else ".html")
        target = self.folder / "repository" / place
        if not target.exists():
            target.parent.mkdir(parents=True, exist_ok=True)
            body = self.listing(path) if (ROOT / path).is_dir() else self.text(path)
            home = "../" * ("repository/" + place).count("/") + "index.html"
            target.write_text(PAGE.format(title=html.escape(path), body=body, home=home),
                              encoding="utf-8")
        return "repository/" + place

    def listing(self, path):
        names = subprocess.run(
            ["git", "ls-files", "-co", "--exclude-standard", "--", path],
            cwd=ROOT, check=True, capture_output=True, text=True).stdout.split()
        rows = []
        for name in sorted(names):
            self.page(name)
            within = name[len(path) + 1:]
            rows.append(f'<li><a href="{within}.html">{html.escape(within)}</a></li>')
        return "<ul>\n" + "\n".join(rows) + "\n</ul>"

    def text(self, path):
        return "<pre>" + html.escape((ROOT / path).read_text(encoding="utf-8")) + "</pre>"


def toctrees(docname):
    parts = []
    for caption, pages in CONTENTS.get(docname, {}).items():
        there = [page for page in pages if list(DOCS.glob(page + ".*"))]
        options = [":hidden:"] + ([f":caption: {caption}"] if caption else [])
        parts.append("\n".join(["\n```{toctree}"] + options + [""] + ["/" + p for p in there] + ["```"]))
    return "\n".join(parts) + "\n"


def inlined(picture, text):
    svg = picture.read_text(encoding="utf-8")
    svg = svg[svg.index("<svg"):]
    return f'\n```{{raw}} html\n<div class="picture" role="img" aria-label="{html.escape(text)}">\n{svg}\n</div>\n```\n'


def reference_pages():
    """Maps each public header to its reference page."""
    pages = {HEADERS: "index"}
    for page in (DOCS / "site/reference").glob("*.rst"):
        for header in re.findall(r"^``(ZOL/.*\.h)``$", page.read_text(encoding="utf-8"), re.MULTILINE):
            pages["include/" + header] = page.stem
    return pages


def rewrite(app, docname, source):
    path = Path(app.env.doc2path(docname))
    if path.suffix != ".md":
        return
    up = "../" * docname.count("/")

    def replaced(match):
        is_picture, text, target, anchor = match.groups()
        there = Path(os.path.normpath(path.parent / target))
        if not there.exists():
            return match.group(0)  # MyST reports the dead link
        if is_picture and there.suffix == ".svg":
            return inlined(there, text)
        if there.is_relative_to(DOCS):
            return match.group(0)
        within = there.relative_to(ROOT).as_posix()
        if within in app.reference_pages:
            return f"[{text}](/{REFERENCE}{app.reference_pages[within]})"
        label = re.sub("`([^`]*)`", r"<code>\1</code>", text)
        return f'<a href="{up}{app.repository.page(within)}">{label}</a>'

    text = NOT_RUN.sub(r'\1<p class="not-run">Not run by the tests: \2.</p>\n', source[0])
    source[0] = LINK.sub(replaced, text) + toctrees(docname)


def bundle_scripts(app, error):
    """Merges the two parts of the script of Debian's Furo theme. Browsers cannot run the part that imports
    the other one."""
    if error is not None:
        return
    scripts = Path(app.outdir) / "_static/scripts"
    whole = scripts / "furo.js"
    text = whole.read_text(encoding="utf-8")
    first, rest = text.split("\n", 1)
    if first.startswith("import Gumshoe "):
        gumshoe = (scripts / "gumshoe-patched.js").read_text(encoding="utf-8")
        whole.write_text(gumshoe + rest, encoding="utf-8")


def setup(app):
    app.repository = Repository(Path(app.outdir))
    app.reference_pages = reference_pages()
    app.connect("source-read", rewrite)
    app.connect("build-finished", bundle_scripts)
    return {"parallel_read_safe": False, "parallel_write_safe": True}
