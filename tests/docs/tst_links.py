# SPDX-FileCopyrightText: The memorykeymodel developers
# SPDX-License-Identifier: Apache-2.0

"""The links of the pages lead to files of the project, and to headings that are there."""

import re
import unittest
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
LINK = re.compile(r"\]\(([^)\s]+)\)")


def pages():
    return sorted([*PROJECT.glob("*.md"), *PROJECT.glob("docs/*.md")])


def text_without_code(page):
    return re.sub(r"```.*?```", "", page.read_text(encoding="utf-8"), flags=re.DOTALL)


def anchors(page):
    """The anchors of a page's headings: lower case, without punctuation, blanks as hyphens."""
    headings = re.findall(r"^#+ (.*)$", text_without_code(page), re.MULTILINE)
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings}


class Links(unittest.TestCase):
    def test_each_link_leads_somewhere(self):
        checked = 0
        for page in pages():
            for link in LINK.findall(text_without_code(page)):
                if link.startswith(("http:", "https:")):
                    continue
                target, _, anchor = link.partition("#")
                path = (page.parent / target).resolve() if target else page
                with self.subTest(page=page.name, link=link):
                    self.assertTrue(path.exists(), f"{page.name}: {link} does not exist")
                    if anchor:
                        self.assertIn(anchor, anchors(path))
                checked += 1
        self.assertGreater(checked, 10)


if __name__ == "__main__":
    unittest.main()
