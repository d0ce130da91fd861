# SPDX-FileCopyrightText: The memorykeymodel developers
# SPDX-License-Identifier: Apache-2.0

"""scripts/check-licences on small projects in a temporary folder."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SCRIPT = Path(__file__).resolve().parents[2] / "scripts" / "check-licences"
LICENSE = """The licences:

    folder                 licence
    apps/window/           GPL-3.0-or-later
    every other folder     Apache-2.0
"""


def head(comment, licence):
    return f"{comment} SPDX-FileCopyrightText: The memorykeymodel developers\n{comment} SPDX-License-Identifier: {licence}\n"


class CheckLicences(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.project = Path(folder.name)
        self.write("LICENSE", LICENSE)
        self.write("core/key.h", head("//", "Apache-2.0") + "class Key;\n")
        self.write("apps/window/main.cpp", head("//", "GPL-3.0-or-later") + "#include <qcustomplot.h>\n")

    def write(self, name, text):
        path = self.project / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")

    def check(self):
        result = subprocess.run([sys.executable, str(SCRIPT), str(self.project)], capture_output=True, text=True)
        return result.returncode, result.stdout, result.stderr

    def assert_fault(self, text):
        status, output, errors = self.check()
        self.assertEqual((status, errors), (1, ""))
        self.assertIn(text, output)
        self.assertEqual(len(output.splitlines()), 1, output)

    def test_a_project_with_all_its_lines_passes(self):
        self.assertEqual(self.check(), (0, "The licences of 2 files are named.\n", ""))

    def test_a_file_without_its_lines_is_a_fault_whatever_its_language(self):
        for name in ("core/key.cpp", "core/View.qml", "core/key.py", "core/CMakeLists.txt", "cmake/find.cmake"):
            with self.subTest(name):
                self.write(name, "\n")
                status, output, _ = self.check()
                self.assertEqual(status, 1)
                self.assertEqual(output.count(f"{name}: the line "), 2, output)
                (self.project / name).unlink()

    def test_a_script_is_a_file_that_begins_with_its_interpreter(self):
        self.write("scripts/demo", "#!/bin/sh\n")
        status, output, _ = self.check()
        self.assertEqual(status, 1)
        self.assertIn("scripts/demo: the line ", output)

    def test_pages_and_pictures_have_the_licence_of_their_folder_and_need_no_line(self):
        self.write("docs/page.md", "# Page\n")
        (self.project / "docs/picture.png").write_bytes(b"\x89PNG\xff")
        self.assertEqual(self.check()[0], 0)

    def test_the_licence_is_that_of_the_folder(self):
        self.write("apps/window/view.h", head("//", "Apache-2.0"))
        self.assert_fault("apps/window/view.h: the licence is Apache-2.0; LICENSE gives its folder GPL-3.0-or-later")

    def test_lines_below_the_fifth_do_not_count(self):
        self.write("core/late.h", "\n" * 5 + head("//", "Apache-2.0"))
        self.assertEqual(self.check()[0], 1)

    def test_the_plot_library_stays_in_the_folder_with_its_licence(self):
        self.write("core/plot.cpp", head("//", "Apache-2.0") + "#include <qcustomplot.h>\n")
        self.assert_fault("core/plot.cpp: it includes QCustomPlot")

    def test_an_appstream_file_states_the_licence_of_its_folder(self):
        self.write("apps/window/window.metainfo.xml", "<component><project_license>MIT</project_license></component>\n")
        self.assert_fault("project_license is MIT; it must be GPL-3.0-or-later")

    def test_a_folder_of_the_table_exists(self):
        self.write("LICENSE", LICENSE.replace("apps/window/ ", "apps/gone/   "))
        status, output, _ = self.check()
        self.assertEqual(status, 1)
        self.assertIn("LICENSE: there is no folder apps/gone/", output)

    def test_without_the_table_nothing_can_be_checked(self):
        self.write("LICENSE", "Free.\n")
        status, output, errors = self.check()
        self.assertEqual((status, output), (2, ""))
        self.assertIn("the table of folders and licences is missing", errors)


if __name__ == "__main__":
    unittest.main()
