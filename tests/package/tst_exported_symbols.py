# SPDX-FileCopyrightText: The memorykeymodel developers
# SPDX-License-Identifier: Apache-2.0

"""What each shared library exports: its public classes and functions, and nothing else.

    tst_exported_symbols.py NAME=FILE...

The table below is the exported interface: a class that becomes public gets a line in it. Libraries that are linked in
privately (recordtext, keynames, the parts of connections/network and connections/redis, hiredis) are not visible: a
program with another version of them would use one of the two in both places.
"""

import re
import subprocess
import sys
import unittest

EXPORTED = {
    "robotconnection": {
        "Velk::ConnectionManager",
        "Velk::MemoryInterface",
    },
    "memorykeymodel": {
        "Velk::DisplayedMemoryKey",
        "Velk::DisplayedMemoryKeyListModel",
        "Velk::MemoryKey",
        "Velk::MemoryKeyListModel",
        "qHash(Velk::DisplayedMemoryKey const&)",
        "qHash(Velk::MemoryKey const&)",
    },
    "link": {
        "Velk::ConnectionFactory",
        "Velk::FailureFilter",
        "Velk::JsonValue",
        "Velk::ListFetch",
        "Velk::LossAccount",
        "Velk::LossLedger",
        "Velk::LossSpan",
        "Velk::RealTimeQuestion",
        "Velk::RobotLink",
        "Velk::RobotWriter",
        "Velk::SampleBuffer",
        "Velk::SamplingSchedule",
    },
    "session": {
        "Velk::RecordedRows",
        "Velk::RobotSession",
        "Velk::SampleStream",
        "Velk::isRebuilt(QSet<Velk::DisplayedMemoryKey> const&, Velk::DisplayedMemoryKeyListModel const&, int)",
    },
    "itemmodels": {
        "Velk::CatalogueFilterModel",
        "Velk::CatalogueModel",
        "Velk::CatalogueTreeModel",
        "Velk::DistinctColors",
        "Velk::SampleHistory",
        "Velk::ValueOrder",
        "Velk::ValueText",
        "Velk::WatchModel",
        "Velk::WatchSortModel",
        "Velk::createItemModelTranslator(QLocale const&)",
        "Velk::keysOf(QList<QModelIndex> const&)",
    },
    "embedded": {
        "Velk::EmbeddedLink",
        "Velk::LoopFeed",
        "Velk::RobotFeed",
        "Velk::RobotLoop",
        "Velk::RobotMemory",
    },
    "simulated": {
        "Velk::SimulatedFactory",
        "Velk::SimulatedFeed",
        "Velk::SimulatedRobot",
    },
    "host": {
        "Velk::HostFactory",
        "Velk::HostFeed",
        "Velk::HostRobot",
    },
    "redis": {
        "Velk::RedisFactory",
        "Velk::RedisLink",
        "Velk::RedisRobotWriter",
    },
    "links": {
        "Velk::RobotLinks",
    },
    "recordfile": {
        "Velk::RecordFileSaver",
    },
}

# Written by the linker into every library.
LINKER_SYMBOLS = {"__bss_start", "_edata", "_end", "_init", "_fini"}
# What the compiler writes for a class beside its members.
CLASS_DATA = re.compile(r"^(vtable|typeinfo|typeinfo name|VTT) for ")
THUNK = re.compile(r"^((non-)?virtual thunk to |guard variable for )")


def defined_symbols(library, *options):
    lines = subprocess.run(
        ["nm", "--dynamic", "--defined-only", "--no-sort", "--format=posix", *options, library],
        capture_output=True, text=True, check=True).stdout.splitlines()
    return [re.fullmatch(r"(.*?) +([A-Za-z]) [0-9a-f]+ *[0-9a-f]*", line).groups() for line in lines]


def owner(symbol):
    """The class or the inner namespace that the symbol belongs to; the symbol itself outside of both."""
    if CLASS_DATA.match(symbol):
        return CLASS_DATA.sub("", symbol)
    member = THUNK.sub("", symbol)
    scopes = member.replace("operator()", "operator-call").split("(")[0].split("::")
    return "::".join(scopes[:-1]) if len(scopes) > 2 else member


class ExportedSymbols(unittest.TestCase):
    libraries = {}

    def test_each_library_exports_its_public_interface_and_nothing_else(self):
        everything = set().union(*EXPORTED.values())
        self.assertTrue(self.libraries)
        for name, file in self.libraries.items():
            with self.subTest(library=name):
                self.assertTrue(name in EXPORTED, "the table has no entry of this library")
                exported, instances = set(), set()
                for (mangled, kind), (symbol, _) in zip(defined_symbols(file), defined_symbols(file, "--demangle")):
                    if symbol in LINKER_SYMBOLS:
                        continue
                    # Weak symbols are inline functions and instances of templates, with the visibility of what they
                    # are made of. Only those of classes of this project are its own; its libraries repeat those of
                    # each other's public classes. A lambda's type is not a class that anybody can name.
                    if kind not in "VWu":
                        exported.add(owner(symbol))
                    elif re.match(r"_ZT?[VIST]?NK?4Velk", mangled):
                        instances.add(owner(symbol))
                self.assertEqual(sorted(exported), sorted(EXPORTED[name]))
                self.assertEqual(sorted(instances - everything), [])


if __name__ == "__main__":
    ExportedSymbols.libraries = dict(argument.split("=", 1) for argument in sys.argv[1:])
    unittest.main(argv=sys.argv[:1])
