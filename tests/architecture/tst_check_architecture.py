# SPDX-FileCopyrightText: The memorykeymodel developers
# SPDX-License-Identifier: Apache-2.0

"""check_architecture.py on small trees in a temporary folder."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

CHECK = Path(__file__).resolve().parent / "check_architecture.py"

PAGE = """# Architecture

| folder | what it is |
|---|---|
| `contract/` | one |
| `memorykeymodel/`, `connections/bus/` | two |
| `apps/tool/` | three |

## Dependencies between folders

| folder | may use | of other projects |
|---|---|---|
| `contract/` | - | Qt Core |
| `memorykeymodel/` | `contract/` | Boost |
| `connections/bus/` | `contract/` | - |
| `apps/tool/` | `memorykeymodel/`, `contract/` | - |

Text.
"""

TREE = {
    "docs/architecture.md": PAGE,
    "docs/images/architecture.svg":
        '<svg><text class="name">contract/</text><text class="name" x="1">memorykeymodel/</text>'
        '<text class="name">bus/</text><text class="text">other</text><text class="name">apps/tool/</text></svg>\n',
    "contract/CMakeLists.txt": "memorykeymodel_add_library(contract HEADERS memory.h PUBLIC_LINK ${QT}::Core)\n",
    "contract/memory.h": "#include <QObject>\n#include <contract/contract_export.h>\n",
    "memorykeymodel/CMakeLists.txt":
        "memorykeymodel_add_library(memorykeymodel\n    SOURCES src/model.cpp # not apps\n    PUBLIC_LINK contract)\n",
    "memorykeymodel/model.h": "#include <contract/memory.h>\n",
    "memorykeymodel/src/model.cpp":
        '#include "rows.h"\n\n#include <memorykeymodel/model.h>\n\n#include <boost/shared_ptr.hpp>\n',
    "memorykeymodel/src/rows.h": "// #include <apps/tool/tool.h>\n",
    "connections/bus/CMakeLists.txt": "memorykeymodel_add_library(bus PUBLIC_LINK contract)\n",
    "connections/bus/bus.h": "#include <contract/memory.h>\n",
    "apps/tool/CMakeLists.txt": "add_executable(tool main.cpp)\ntarget_link_libraries(tool PRIVATE memorykeymodel)\n",
    "apps/tool/tool.h": "#include <contract/memory.h>\n",
    "apps/tool/main.cpp": '#include "tool.h"\n#include <memorykeymodel/model.h>\n',
    "tests/memorykeymodel/tst_model.cpp": '#include "../../memorykeymodel/src/rows.h"\n#include <apps/tool/tool.h>\n',
}


class CheckArchitecture(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.project = Path(folder.name)
        for name, text in TREE.items():
            self.write(name, text)

    def write(self, name, text):
        path = self.project / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")

    def check(self, *options):
        command = [sys.executable, str(CHECK), *options, str(self.project)]
        result = subprocess.run(command, capture_output=True, text=True)
        return result.returncode, result.stdout, result.stderr

    def assert_only_fault(self, fault):
        self.assertEqual(self.check(), (1, fault + "\n", ""))

    def test_a_tree_that_is_as_the_page_says_passes(self):
        self.assertEqual(self.check(), (0, "7 files are as docs/architecture.md says.\n", ""))

    def test_an_include_that_the_table_does_not_allow_is_a_fault(self):
        self.write("memorykeymodel/src/rows.h", "#include <connections/bus/bus.h>\n")
        self.assert_only_fault("memorykeymodel/src/rows.h:1: memorykeymodel/ may not use connections/bus")

    def test_the_short_form_of_an_include_is_found_too(self):
        self.write("memorykeymodel/src/rows.h", '\n#include "bus.h"\n')
        self.assert_only_fault("memorykeymodel/src/rows.h:2: memorykeymodel/ may not use connections/bus")

    def test_a_product_does_not_include_tests(self):
        self.write("tests/support/fake.h", "")
        self.write("memorykeymodel/src/rows.h", '#include "support/fake.h"\n')
        self.assert_only_fault("memorykeymodel/src/rows.h:1: memorykeymodel/ may not use tests/support")

    def test_a_link_that_the_table_does_not_allow_is_a_fault(self):
        self.write("apps/tool/CMakeLists.txt",
                   'add_executable(tool main.cpp "a (b).cpp")\n'
                   "target_link_libraries(tool PRIVATE memorykeymodel MemoryKeyModel::bus)\n")
        self.assert_only_fault("apps/tool/CMakeLists.txt: apps/tool/ may not use connections/bus")

    def test_an_offered_connection_is_a_use_of_the_folder_that_collects_the_offers(self):
        self.write("connections/bus/CMakeLists.txt", TREE["connections/bus/CMakeLists.txt"]
                   + "memorykeymodel_offer_connection(bus BusFactory connections/bus/bus.h)\n")
        self.write("apps/tool/CMakeLists.txt",
                   "get_property(targets GLOBAL PROPERTY MEMORYKEYMODEL_CONNECTION_TARGETS)\n"
                   "add_executable(tool)\ntarget_link_libraries(tool PRIVATE ${targets})\n")
        self.assert_only_fault("apps/tool/CMakeLists.txt: apps/tool/ may not use connections/bus")

    def test_a_library_of_another_project_that_the_table_does_not_name_is_a_fault(self):
        self.write("apps/tool/CMakeLists.txt",
                   "add_executable(tool)\ntarget_link_libraries(tool PRIVATE ${QT}::Widgets)\n")
        self.assert_only_fault("apps/tool/CMakeLists.txt: apps/tool/ may not use Qt Widgets")
        self.write("apps/tool/CMakeLists.txt", "")
        self.write("apps/tool/tool.h", "#include <contract/memory.h>\n#include <qcustomplot.h>\n")
        self.assert_only_fault("apps/tool/tool.h:2: apps/tool/ may not use QCustomPlot")

    def test_an_entry_that_nobody_uses_is_a_fault(self):
        self.write("memorykeymodel/src/model.cpp", "")
        self.assert_only_fault("docs/architecture.md: memorykeymodel/ does not use Boost")

    def test_a_folder_uses_only_what_stands_above_it(self):
        self.write("docs/architecture.md", PAGE.replace("| `contract/` | -", "| `contract/` | `memorykeymodel/`"))
        status, output, _ = self.check()
        self.assertEqual(status, 1)
        self.assertIn("contract/ uses memorykeymodel/, which does not stand above it", output)

    def test_each_product_folder_has_a_row(self):
        self.write("extra/thing.h", "")
        self.assert_only_fault("extra/thing.h: docs/architecture.md has no row for its folder")

    def test_each_row_is_a_folder(self):
        self.write("docs/architecture.md", PAGE.replace("\nText", "| `gone/` | - | - |\n\nText"))
        status, output, _ = self.check()
        self.assertEqual(status, 1)
        self.assertIn("docs/architecture.md: there is no folder gone/\n", output)

    def test_the_sources_of_another_folder_are_private(self):
        self.write("apps/tool/tool.h", "#include <contract/memory.h>\n#include <memorykeymodel/src/rows.h>\n")
        self.assert_only_fault("apps/tool/tool.h:2: memorykeymodel/src/rows.h is private to memorykeymodel/")

    def test_files_do_not_include_each_other_in_a_circle(self):
        self.write("memorykeymodel/src/rows.h", '#include "columns.h"\n')
        self.write("memorykeymodel/src/columns.h", '#include "rows.h"\n')
        status, output, _ = self.check()
        self.assertEqual(status, 1)
        self.assertIn("includes itself: memorykeymodel/src/columns.h -> memorykeymodel/src/rows.h -> ", output)

    def test_a_file_has_at_most_400_lines_beside_its_licence(self):
        licence = "// SPDX-FileCopyrightText: x\n// SPDX-License-Identifier: x\n"
        self.write("memorykeymodel/src/rows.h", licence + "\n" * 400)
        self.assertEqual(self.check()[0], 0)
        self.write("memorykeymodel/src/rows.h", licence + "\n" * 401)
        self.assert_only_fault(
            "memorykeymodel/src/rows.h: 401 lines, more than 400: give its second responsibility a file")

    def test_the_limit_of_lines_holds_for_tests_examples_and_benchmarks(self):
        for folder in ("tests/memorykeymodel", "examples/01_first", "benchmarks/core"):
            with self.subTest(folder):
                path = f"{folder}/long.cpp"
                self.write(path, "\n" * 401)
                self.assert_only_fault(f"{path}: 401 lines, more than 400: give its second responsibility a file")
                (self.project / path).unlink()

    def test_only_the_core_and_the_session_receive_batches(self):
        for receiver in ("connect(memory.get(), &MemoryInterface::dataGathered,\n    this, &Tool::take);",
                         "connect(memory, SIGNAL(dataGathered(Batch)), SLOT(take(Batch)));"):
            with self.subTest(receiver):
                self.write("memorykeymodel/src/rows.h", receiver)
                self.write("apps/tool/tool.h", "#include <contract/memory.h>\n" + receiver)
                self.assert_only_fault(
                    "apps/tool/tool.h: connects to dataGathered(): receive batches from session/ instead")

    def test_a_memory_emits_and_forwards_batches(self):
        self.write("connections/bus/bus.h", "#include <contract/memory.h>\nemit dataGathered(batch);\n"
                   "connect(&sampler, &Sampler::gathered, this, &BusMemory::dataGathered);\n")
        self.assertEqual(self.check()[0], 0)

    def test_only_the_core_and_the_session_ask_for_real_time_support(self):
        self.write("connections/bus/bus.h",
                   "#include <contract/memory.h>\nvoid BusMemory::isRealTimeSupported(QObject* receiver) {}\n"
                   "bool canSample = feed->isRealTimeSupported();\n")
        self.assertEqual(self.check()[0], 0)
        self.write("apps/tool/tool.h", "#include <contract/memory.h>\nmemory->isRealTimeSupported(this, member);\n")
        self.assert_only_fault("apps/tool/tool.h: asks isRealTimeSupported(): session/ has the answer")

    def test_an_application_has_no_condition_on_a_connection(self):
        self.write("apps/tool/tool.h",
                   "#ifndef APPS_BUS_TOOL_H\n#define APPS_BUS_TOOL_H\n#include <contract/memory.h>\n#endif\n")
        self.assertEqual(self.check()[0], 0)
        self.write("apps/tool/tool.h", "#include <contract/memory.h>\n#if defined(WITH_BUS)\n#endif\n")
        self.assert_only_fault(
            "apps/tool/tool.h: the condition on WITH_BUS knows a connection: ask connections/links/ instead")

    def test_both_tables_of_the_page_have_the_same_folders(self):
        self.write("docs/architecture.md", PAGE.replace(", `connections/bus/` | two", " | two"))
        self.assert_only_fault("docs/architecture.md: connections/bus/ is in one of the two tables only")
        self.write("docs/architecture.md", PAGE.replace("| `contract/` | one |", "| `contract/`, `old/` | one |"))
        self.assert_only_fault("docs/architecture.md: old/ is in one of the two tables only")

    def test_the_picture_has_a_box_for_each_folder_and_no_other(self):
        picture = TREE["docs/images/architecture.svg"]
        self.write("docs/images/architecture.svg", picture.replace(">bus/<", ">bug/<"))
        status, output, _ = self.check()
        self.assertEqual((status, output.splitlines()), (1, [
            "docs/images/architecture.svg: there is no box of connections/bus/",
            "docs/images/architecture.svg: docs/architecture.md has no row for the box bug/"]))
        (self.project / "docs/images/architecture.svg").unlink()
        self.assert_only_fault("docs/images/architecture.svg: the picture does not exist")

    def test_without_its_table_the_tree_cannot_be_checked(self):
        self.write("docs/architecture.md", "# Architecture\n")
        status, output, errors = self.check()
        self.assertEqual((status, output), (2, ""))
        self.assertIn('has no table below "## Dependencies between folders"', errors)

    def test_the_uses_are_printed_as_rows_of_the_table(self):
        status, output, _ = self.check("--uses")
        self.assertEqual(status, 0)
        self.assertIn("| `memorykeymodel/` | `contract/` | Boost |\n", output)


if __name__ == "__main__":
    unittest.main()
