"""Sphinx configuration of the documentation site. The site is built from the repository's Markdown files.

scripts/docs.sh runs Sphinx after Doxygen has read the public headers.
"""

import re
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent))

root = Path(__file__).parents[2]

project = "ZOL Framework"
version = release = re.search(r"VERSION ([0-9.]+)\n", (root / "CMakeLists.txt").read_text()).group(1)
copyright = "the developers of ZOL Framework"
html_show_copyright = False
html_show_sphinx = False

extensions = ["myst_parser", "breathe", "sphinx_copybutton", "repository"]
root_doc = "index"
exclude_patterns = ["site/static"]
nitpicky = True
# The standard library, the platform, GoogleTest, namespaces, and classes that the headers only declare.
nitpick_ignore_regex = [
    ("cpp:identifier", r"std(::.*)?|HKEY"),
    ("cpp:identifier", r"ZOL|ZOL::Framework|Management|ZOL::Framework::(GenericLogger|Management)"),
    ("cpp:identifier", r"(ZOL::Framework::GenericLogger::)?detail"),
    ("cpp:identifier", r"ZOL::RegistryAccess"),
    ("cpp:identifier", r"ZOL::Testing|Framework(::GenericLogger)?|testing(::.*)?"),
    ("cpp:identifier", r".*(Impl|Reaper|HeapString|HandleHolder|Record)"),
]

myst_heading_anchors = 4
breathe_projects = {"zol": str(root / "build/docs/xml")}
breathe_default_project = "zol"
breathe_default_members = ("members", "undoc-members")
cpp_id_attributes = ["ZOL_FRAMEWORK_API"]
primary_domain = "cpp"
highlight_language = "cpp"

html_theme = "furo"
html_title = "ZOL Framework " + release
html_static_path = ["static"]
html_css_files = ["site.css"]
html_copy_source = False
html_show_sourcelink = False
copybutton_exclude = ".linenos, .gp, .go"
