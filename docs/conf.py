"""The pages as a site: make docs. They are to be read as they are, too."""

from __future__ import annotations

import re
from pathlib import Path

HERE = Path(__file__).parent

project = "Telvo"
copyright = "the authors of Telvo"
version = release = re.search(
    r"project\(Telvo VERSION (\S+)", (HERE.parent / "CMakeLists.txt").read_text(encoding="utf-8")
)[1]

extensions = ["myst_parser"]
root_doc = "README"
exclude_patterns = ["conf.py"]
myst_heading_anchors = 3  # links to headings, as other viewers have them

html_theme = "alabaster"
html_theme_options = {"description": "Control of high-speed GigE Vision cameras"}
html_copy_source = False
html_show_sphinx = False


def add_contents(app, page, source):
    """The list of the first page is the site's order as well."""
    if page == root_doc:
        pages = re.findall(r"^\| \[.*?\]\((\S+)\.md\)", source[0], re.M)
        source[0] += "\n```{toctree}\n:hidden:\n\n" + "\n".join(pages) + "\n```\n"


def setup(app):
    app.connect("source-read", add_contents)
