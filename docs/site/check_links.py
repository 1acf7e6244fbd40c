"""check_links.py SITE [FILE...]: checks every link of every page. Fails if a link is dead, or if a page
loads a resource from another site. FILEs are Markdown files outside the site; each of their links must
point to an existing file or folder."""

import re
import sys
from html.parser import HTMLParser
from pathlib import Path
from urllib.parse import unquote, urlsplit

FETCHED = {("script", "src"), ("img", "src"), ("link", "href"), ("source", "src"), ("iframe", "src")}


class Page(HTMLParser):
    def __init__(self, path):
        super().__init__()
        self.anchors = set()
        self.links = []
        self.fetched = []
        self.feed(path.read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attributes):
        for name, value in attributes:
            if value is None:
                continue
            if name == "id" or (tag == "a" and name == "name"):
                self.anchors.add(value)
            elif tag == "a" and name == "href":
                self.links.append(value)
            elif (tag, name) in FETCHED:
                self.fetched.append(value)


def main(site, others):
    pages = {path.resolve(): Page(path) for path in sorted(site.rglob("*.html"))}
    faults = []
    links = 0
    for path, page in pages.items():
        for link in page.links + page.fetched:
            parts = urlsplit(link)
            if parts.scheme == "data":
                continue
            if parts.scheme or parts.netloc:
                if link in page.fetched:
                    faults.append(f"{path}: loads {link} from another site")
                continue
            links += 1
            target = (path.parent / unquote(parts.path)).resolve() if parts.path else path
            if not target.is_file():
                faults.append(f"{path}: dead link {link}: no such file")
            elif parts.fragment and target in pages and unquote(parts.fragment) not in pages[target].anchors:
                faults.append(f"{path}: dead link {link}: no such anchor in that page")
    for other in others:
        for link in re.findall(r"\]\(([^)#:]+)", other.read_text(encoding="utf-8")):
            links += 1
            if not (other.parent / link).exists():
                faults.append(f"{other}: dead link {link}: no such file")
    for fault in faults:
        print(fault, file=sys.stderr)
    if not pages:
        sys.exit(f"{site} has no pages")
    if faults:
        sys.exit(f"{len(faults)} faulty links")
    print(f"{len(pages)} pages, {links} links")


main(Path(sys.argv[1]), [Path(name) for name in sys.argv[2:]])
