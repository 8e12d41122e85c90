"""Checks the links of every document (*.md) of the repository.

Usage: check_links.py <repository>. Fails, and names the place, where a link leads to a file
that is not there or to a heading that the other document does not have, and where a picture
has no alternative text. Addresses on other machines are not asked for.
"""

import pathlib
import re
import subprocess
import sys
import urllib.parse

LINK = re.compile(r"(?P<picture>!?)\[(?P<text>(?:[^\[\]]|\[[^\[\]]*\])*)\]\((?P<target>[^()\s]*)\)")
INSIDE_PICTURE = re.compile(r"!\[(?P<text>[^\[\]]*)\]\((?P<target>[^()\s]*)\)")
HEADING = re.compile(r"#{1,6}\s+(?P<title>.*?)\s*#*$")


def tracked(repository):
    """The documents that git tracks or would track; None where there is no git."""
    command = ["git", "-C", repository, "ls-files", "-z", "--cached", "--others",
               "--exclude-standard", "--", "*.md"]
    try:
        listing = subprocess.run(command, capture_output=True, check=True).stdout
    except (FileNotFoundError, subprocess.CalledProcessError):
        return None
    return [repository / name for name in listing.decode().split("\0") if name]


def documents(repository):
    """The documents of the repository, or of its sources alone, outside of build folders."""
    found = tracked(repository) or repository.rglob("*.md")
    return sorted(path for path in found
                  if path.is_file() and "build" not in path.relative_to(repository).parts)


def text_of(document):
    """The document with its code taken out and its lines where they were."""
    fence = None
    lines = []
    for line in document.read_text(encoding="utf-8").splitlines():
        mark = re.match(r"\s*(```+|~~~+)", line)
        if mark and (fence is None or line.strip().startswith(fence)):
            fence = mark.group(1) if fence is None else None
            line = ""
        lines.append("" if fence else line)
    return "\n".join(lines)


def anchors(document):
    """The names by which a document's headings can be linked to."""
    names = set()
    for line in text_of(document).splitlines():
        heading = HEADING.match(line)
        if not heading:
            continue
        title = LINK.sub(r"\g<text>", heading.group("title")).lower()
        name = re.sub(r"[^\w\- ]", "", title).replace(" ", "-")
        count = 0
        while (unique := f"{name}-{count}" if count else name) in names:
            count += 1
        names.add(unique)
    return names


def links(document):
    """Every link and picture with its line, pictures inside of links included."""
    text = re.sub(r"`[^`\n]*`", "`code`", text_of(document))
    for link in LINK.finditer(text):
        number = text.count("\n", 0, link.start()) + 1
        yield number, bool(link.group("picture")), link.group("text"), link.group("target")
        for picture in INSIDE_PICTURE.finditer(link.group("text")):
            yield number, True, picture.group("text"), picture.group("target")


def problem(document, is_picture, text, target):
    """What is wrong with a link; None where nothing is."""
    if is_picture and not text.strip():
        return f"the picture {target} has no alternative text"
    address = urllib.parse.urlsplit(target)
    if address.scheme:
        return None
    path = document
    if address.path:
        path = document.parent / urllib.parse.unquote(address.path)
        if not path.exists():
            return f"there is no {target}"
    if address.fragment and (path.suffix != ".md" or address.fragment not in anchors(path)):
        return f"there is no heading {target}"
    return None


def problems(repository):
    for document in documents(repository):
        for number, *link in links(document):
            if found := problem(document, *link):
                yield f"{document.relative_to(repository)}:{number}: {found}"


def main():
    repository = pathlib.Path(sys.argv[1])
    count = sum(1 for document in documents(repository) for _ in links(document))
    found = list(problems(repository))
    print("\n".join(found) or f"{count} links are good.")
    if count == 0:
        print("No links were found at all.")
    return 1 if found or count == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
