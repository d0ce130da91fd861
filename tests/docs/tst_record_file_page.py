# SPDX-FileCopyrightText: The memorykeymodel developers
# SPDX-License-Identifier: Apache-2.0

"""The example of docs/record-file.md, read by the program that the page shows."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

PAGE = Path(__file__).resolve().parents[2] / "docs" / "record-file.md"


def block(language):
    """The first code block of the page in this language."""
    return PAGE.read_text(encoding="utf-8").split(f"```{language}\n")[1].split("```")[0]


class RecordFilePage(unittest.TestCase):
    def test_the_program_on_the_page_reads_the_example(self):
        with tempfile.TemporaryDirectory() as folder:
            Path(folder, "record.csv").write_text(block("text"), encoding="utf-8", newline="")

            result = subprocess.run([sys.executable, "-c", block("python")], cwd=folder, capture_output=True, text=True)

        self.assertEqual(result.stderr, "")
        rows = [str(row) for row in (
            {"Time": "0", "Arm/Elbow/Position": "0.25", "Status": "ready"},
            {"Time": "0.2", "Arm/Elbow/Position": "0.5", "Status": ""},
            {"Time": "0.4", "Arm/Elbow/Position": "", "Status": 'say "hello"'},
        )]
        self.assertEqual(result.stdout.splitlines(), rows)


if __name__ == "__main__":
    unittest.main()
