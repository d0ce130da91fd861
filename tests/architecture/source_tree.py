# SPDX-FileCopyrightText: The memorykeymodel developers
# SPDX-License-Identifier: Apache-2.0

"""Reads a source tree: its files, what they include, and what their CMake targets link with."""

import re
from dataclasses import dataclass, field
from pathlib import Path, PurePosixPath

SUPPORTING = {"tests", "examples", "benchmarks", "docs", "cmake", "scripts"}
INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*[<"]([^>"]+)[>"]')

# The names in the table of docs/architecture.md for targets and headers of other projects.
LIBRARY_OF_TARGET = {
    "Boost::headers": "Boost",
    "CLI11::CLI11": "CLI11",
    "PkgConfig::HIREDIS": "hiredis",
    "QCustomPlotQt6::QCustomPlotQt6": "QCustomPlot",
    "Threads::Threads": "threads",
    "${CMAKE_DL_LIBS}": "dl",
}
LIBRARY_OF_HEADER = {"boost/": "Boost", "CLI/": "CLI11", "hiredis/": "hiredis", "qcustomplot": "QCustomPlot"}


@dataclass
class Source:
    path: PurePosixPath
    text: str
    includes: list = field(default_factory=list)  # of (line number, name)

    @property
    def lines(self):
        """The length of the file without the lines of its licence."""
        return sum("SPDX-" not in line for line in self.text.splitlines())


@dataclass
class Link:
    cmake_file: PurePosixPath
    target: str
    library: str  # a target of this project or a name of another project's library


def strip_comments(text):
    """C++ without its comments, with as many lines as before."""
    def blank(match):
        return match[0] if match[0][0] in "\"'" else "\n" * match[0].count("\n") or " "
    return re.sub(r'"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])*\'|//[^\n]*|/\*.*?\*/', blank, text, flags=re.DOTALL)


def is_product(path):
    return len(path.parts) > 1 and path.parts[0] not in SUPPORTING


def is_skipped(path):
    return path.parts[0].startswith(("build", ".")) and len(path.parts) > 1


def files(project, pattern):
    paths = (PurePosixPath(path.relative_to(project).as_posix()) for path in project.rglob(pattern) if path.is_file())
    return sorted(path for path in paths if not is_skipped(path))


def sources(project):
    """The C++ files, those of tests, examples and benchmarks too."""
    result = []
    for path in files(project, "*.h") + files(project, "*.cpp"):
        source = Source(path, (project / path).read_text(encoding="utf-8"))
        for number, line in enumerate(strip_comments(source.text).splitlines(), 1):
            include = INCLUDE.match(line)
            if include:
                source.includes.append((number, include[1]))
        result.append(source)
    return result


class Headers:
    """Finds the file of the project that an include names."""

    def __init__(self, project):
        self.all = set(files(project, "*.h"))

    def find(self, includer, name):
        """The header, or None for one of another project. A generated export header counts as one of its folder."""
        if "/" in name and name.endswith("_export.h"):
            return PurePosixPath(name)
        beside = [includer.parent / name, PurePosixPath(name)]
        for path in beside:
            if path in self.all:
                return path
        found = [path for path in self.all if path.as_posix().endswith("/" + name)]
        # Of several with that name, the nearest.
        return max(found, key=lambda path: common_parts(path, includer), default=None)


def common_parts(one, other):
    count = 0
    for left, right in zip(one.parts, other.parts):
        if left != right:
            break
        count += 1
    return count


def library_of_header(name):
    return next((library for prefix, library in LIBRARY_OF_HEADER.items() if name.startswith(prefix)), None)


def cmake_commands(text):
    """The commands of a CMake file, each as its name and its arguments."""
    text = re.sub(r'("(?:\\.|[^"\\])*")|#[^\n]*', lambda match: match[1] or "", text)
    commands, position = [], 0
    while True:
        start = re.compile(r"(\w+)\s*\(").search(text, position)
        if not start:
            return commands
        depth, end = 1, start.end()
        while depth and end < len(text):
            if text[end] == '"':
                end = text.find('"', end + 1)
            depth += {"(": 1, ")": -1}.get(text[end], 0)
            end += 1
        arguments = re.findall(r'"((?:\\.|[^"\\])*)"|([^\s"]+)', text[start.end():end - 1])
        commands.append((start[1], [quoted or bare for quoted, bare in arguments]))
        position = end


LINK_KEYWORDS = {"PUBLIC_LINK", "PRIVATE_LINK", "LINK"}
KEYWORD = re.compile(r"[A-Z][A-Z_]+$")
TARGET_COMMAND = re.compile(r"(qt_|memorykeymodel_)?add_(\w+_)?(library|executable|plugin|connection)$")


def linked_names(command, arguments):
    """What a command links its target with."""
    if command == "target_link_libraries":
        return [name for name in arguments[1:] if name not in {"PUBLIC", "PRIVATE", "INTERFACE"}]
    names, is_link = [], False
    if command.startswith("memorykeymodel_add_"):
        for argument in arguments[1:]:
            if KEYWORD.match(argument):
                is_link = argument in LINK_KEYWORDS
            elif is_link:
                names.append(argument)
    return names


def library_of_target(name):
    """The name in the table for a name that a target is linked with."""
    name = re.sub(r"^MemoryKeyModel::", "", name)
    qt = re.match(r"(?:\$\{QT\}|Qt[56])::(\w+)$", name)
    return f"Qt {qt[1]}" if qt else LIBRARY_OF_TARGET.get(name, name)


def targets_and_links(project):
    """The folder of each product target, and the libraries that each one is linked with."""
    commands = [(path, command, arguments) for path in files(project, "CMakeLists.txt") if is_product(path)
                for command, arguments in cmake_commands((project / path).read_text(encoding="utf-8")) if arguments]
    offered = [arguments[0] for _, command, arguments in commands if command == "memorykeymodel_offer_connection"]
    targets, links, variables = {}, [], {}
    for path, command, arguments in commands:
        if TARGET_COMMAND.match(command):
            targets.setdefault(arguments[0], path.parent)
        elif command == "get_property" and "MEMORYKEYMODEL_CONNECTION_TARGETS" in arguments:
            variables[path, "${" + arguments[0] + "}"] = offered
        for name in linked_names(command, arguments):
            for library in variables.get((path, name), [name]):
                links.append(Link(path, arguments[0], library_of_target(library)))
    return targets, links
