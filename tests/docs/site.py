#!/usr/bin/python3
"""Checks the links of a site: each leads to a file of it and to a place there, and no page needs the
network to be shown.

usage: site.py FOLDER
"""

from __future__ import annotations

import sys
import urllib.parse
from collections.abc import Iterator
from html.parser import HTMLParser
from pathlib import Path

SHOWN = {"script", "link", "img", "iframe", "source"}  # a link shows nothing by itself


class Page(HTMLParser):
    def __init__(self, path: Path) -> None:
        super().__init__()
        self.places: set[str] = set()
        self.links: list[tuple[str, str]] = []  # element and where it leads
        self.feed(path.read_text(encoding="utf-8"))

    def handle_starttag(self, tag: str, attrs: list[tuple[str, str | None]]) -> None:
        for name, value in attrs:
            if name in ("id", "name") and value:
                self.places.add(value)
            elif name in ("href", "src") and value:
                self.links.append((tag, value))


def faults(pages: dict[Path, Page]) -> Iterator[str]:
    for path, page in pages.items():
        for tag, link in page.links:
            url = urllib.parse.urlparse(link)
            if url.scheme or url.netloc:
                if tag in SHOWN:
                    yield f"{path}: {tag} from the network: {link}"
                continue
            target = (path.parent / urllib.parse.unquote(url.path)).resolve() if url.path else path
            if not target.is_file():
                yield f"{path}: there is no {link}"
            elif url.fragment and target in pages and url.fragment not in pages[target].places:
                yield f"{path}: there is no place {link}"


def main() -> int:
    folder = Path(sys.argv[1]).resolve()
    pages = {path: Page(path) for path in sorted(folder.glob("*.html"))}
    links = sum(len(page.links) for page in pages.values())
    found = list(faults(pages))
    print("\n".join([*found, f"{len(pages)} pages, {links} links, {len(found)} faults"]))
    return 0 if pages and links and not found else 1


if __name__ == "__main__":
    sys.exit(main())
