"""Shows that check_links.py finds what it is there to find."""

import pathlib
import tempfile
import unittest

from check_links import problems


class CheckLinks(unittest.TestCase):
    def found(self, text):
        """The problems of a document with this text, in a folder with two neighbours."""
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            (root / "here.png").touch()
            (root / "other.md").write_text("# A heading, *twice*\n## A `heading`, twice\n"
                                           "```\n# no heading\n```\n", encoding="utf-8")
            (root / "document.md").write_text(text, encoding="utf-8")
            return [line.split(": ", 1)[1] for line in problems(root)]

    def test_good_links_are_good(self):
        for text in ("[a](other.md)", "[a](other.md#a-heading-twice)", "![a](here.png)",
                     "[a](other.md#a-heading-twice-1)", "# Here\n[a](#here)",
                     "[![a](here.png)](other.md)", "[a](https://example.org/none)",
                     "`[a](none)`", "```\n[a](none)\n```"):
            self.assertEqual(self.found(text), [], text)

    def test_missing_files_are_found(self):
        self.assertEqual(self.found("[a](none.md)"), ["there is no none.md"])
        self.assertEqual(self.found("![a](none.png)"), ["there is no none.png"])
        self.assertEqual(self.found("[![a](none.png)](other.md)"), ["there is no none.png"])
        self.assertEqual(self.found("| [a](other.md) | [b](none.md) |"), ["there is no none.md"])
        self.assertEqual(self.found("[over\nlines](none.md)"), ["there is no none.md"])

    def test_missing_headings_are_found(self):
        for target in ("#none", "other.md#none", "other.md#no-heading", "here.png#a"):
            self.assertEqual(self.found(f"[a]({target})"), [f"there is no heading {target}"])

    def test_pictures_without_a_text_are_found(self):
        for text in ("![](here.png)", "![ ](here.png)", "[![](here.png)](other.md)"):
            self.assertEqual(self.found(text), ["the picture here.png has no alternative text"])


if __name__ == "__main__":
    unittest.main()
