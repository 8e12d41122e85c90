"""Checks the links of every document (*.md) of the repository.

Usage: check_links.py <repository>. Fails, and names the place, where a link leads to a file
that is not there or to a heading that the other document does not have, and where a picture
has no alternative text. Addresses on other machines are not asked for.
"""

import pathlib
import re
import sys
import urllib.parse

LINK = re.compile(r"(!?)\[((?:[^\[\]]|\[[^\[\]]*\](?:\([^()]*\))?)*)\]\(([^()\s]*)\)")
FENCED = re.compile(r"^[ \t]*(```+|~~~+).*?^[ \t]*\1[ \t]*$", re.MULTILINE | re.DOTALL)
INLINE = re.compile(r"`[^`\n]*`")
HEADING = re.compile(r"^#{1,6}\s+(.*?)\s*#*$", re.MULTILINE)


def without(pattern, text):
    """The text with blanks in the pattern's place, so that every line stays where it was."""
    return pattern.sub(lambda match: re.sub(r"[^\n]", " ", match.group()), text)


def text_of(document):
    return without(FENCED, document.read_text(encoding="utf-8"))


def anchors(document):
    """The names by which a document's headings can be linked to."""
    names = []
    for title in HEADING.findall(text_of(document)):
        name = re.sub(r"[^\w\- ]", "", LINK.sub(r"\2", title).lower()).replace(" ", "-")
        names.append(name)
    # Of the same names, the second one ends in -1.
    return [f"{name}-{same}" if (same := names[:i].count(name)) else name
            for i, name in enumerate(names)]


def links(text, line=1):
    """Every link and picture with its line, pictures inside of links included."""
    for link in LINK.finditer(text):
        here = line + text.count("\n", 0, link.start())
        yield here, *link.groups()
        yield from links(link.group(2), here)


def problem(document, mark, text, target):
    """What is wrong with a link; None where nothing is."""
    if mark and not text.strip():
        return f"the picture {target} has no alternative text"
    address = urllib.parse.urlsplit(target)
    if address.scheme:
        return None
    path = document.parent / urllib.parse.unquote(address.path) if address.path else document
    if not path.exists():
        return f"there is no {target}"
    if address.fragment and (path.suffix != ".md" or address.fragment not in anchors(path)):
        return f"there is no heading {target}"
    return None


def main():
    repository = pathlib.Path(sys.argv[1])
    count = 0
    found = []
    for document in sorted(repository.rglob("*.md")):
        place = document.relative_to(repository)
        if any(part == "build" or part.startswith((".", "obj-")) for part in place.parts):
            continue
        for line, *link in links(without(INLINE, text_of(document))):
            count += 1
            if wrong := problem(document, *link):
                found.append(f"{place}:{line}: {wrong}")
    print("\n".join(found) or f"{count} links are good.")
    return 1 if found or count == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
