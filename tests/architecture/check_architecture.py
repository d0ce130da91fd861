#!/usr/bin/env python3
# SPDX-FileCopyrightText: The memorykeymodel developers
# SPDX-License-Identifier: Apache-2.0
"""Compares the source tree with docs/architecture.md.

    check_architecture.py [--uses] [PROJECT_FOLDER]

The table below the heading "Dependencies between folders" has a row for each folder: the folders that it may include
and link with, and the libraries of other projects. A use that the table does not allow is a fault, and so is an entry
that nobody uses. The page lists further rules below the table. The other table of the page and its picture have the
same folders.

Prints each fault as FILE: FAULT. Exit status: 0 no fault, 1 faults, 2 the tree cannot be checked.
With --uses it prints what each folder uses, in the form of the table, and checks nothing.
"""

import re
import sys
from dataclasses import dataclass
from pathlib import Path

import source_tree

PAGE = "docs/architecture.md"
PICTURE = "docs/images/architecture.svg"
HEADING = "## Dependencies between folders"
MOST_LINES = 400
# The only receivers of batches, and the only ones that ask for real-time support.
RECEIVERS = ("memorykeymodel", "session")


class CannotCheck(Exception):
    pass


@dataclass
class Row:
    folders: list
    libraries: list


def read_table(project):
    """The rows by folder, in the order of the page."""
    page = project / PAGE
    if not page.is_file():
        raise CannotCheck(f"{page} does not exist")
    _, heading, below = page.read_text(encoding="utf-8").partition(HEADING + "\n")
    rows = {}
    for line in below.split("\n## ")[0].splitlines():
        cells = [cell.strip() for cell in line.strip("|").split("|")] if line.startswith("| `") else []
        if len(cells) == 3:
            folders = [name.rstrip("/") for cell in cells[:2] for name in re.findall(r"`([^`]+)`", cell)]
            libraries = [name.strip() for name in cells[2].split(",") if name.strip() not in ("", "-")]
            rows[folders[0]] = Row(folders[1:], libraries)
    if not rows:
        raise CannotCheck(f'{page} has no table below "{HEADING}"')
    return rows


def folder_of(path, rows):
    """The row that a file belongs to: the one with the longest path above it."""
    return max((folder for folder in rows if path.as_posix().startswith(folder + "/")), key=len, default=None)


class Tree:
    """The product sources, what they include and link, by the folders of the table; and the sources of tests, examples and
    benchmarks."""

    def __init__(self, project, rows):
        self.project = project
        self.rows = rows
        self.all_sources = source_tree.sources(project)
        self.sources = [source for source in self.all_sources if source_tree.is_product(source.path)]
        if not self.sources:
            raise CannotCheck(f"{project} has no source file")
        headers = source_tree.Headers(project)
        self.included = {}  # of a file: (line number, header of this project)
        self.uses = []  # (where, folder, used folder or library)
        for source in self.sources:
            folder = folder_of(source.path, rows)
            for line, name in source.includes:
                header = headers.find(source.path, name)
                if header:
                    self.included.setdefault(source.path, []).append((line, header))
                    self.uses.append((f"{source.path}:{line}", folder, folder_of(header, rows) or str(header.parent)))
                elif source_tree.library_of_header(name):
                    self.uses.append((f"{source.path}:{line}", folder, source_tree.library_of_header(name)))
        targets, links = source_tree.targets_and_links(project)
        for link in links:
            used = targets.get(link.library)
            folder = folder_of(targets.get(link.target, link.cmake_file.parent) / "x", rows)
            library = folder_of(used / "x", rows) or str(used) if used else link.library
            self.uses.append((str(link.cmake_file), folder, library))


def misplaced_files(tree):
    for source in tree.sources:
        if folder_of(source.path, tree.rows) is None:
            yield f"{source.path}: {PAGE} has no row for its folder"


def rows_out_of_order(tree):
    above = []
    for folder, row in tree.rows.items():
        if not (tree.project / folder).is_dir():
            yield f"{PAGE}: there is no folder {folder}/"
        for used in row.folders:
            if used not in above:
                yield f"{PAGE}: {folder}/ uses {used}/, which does not stand above it"
        above.append(folder)


def folders_elsewhere_on_the_page(tree):
    above = (tree.project / PAGE).read_text(encoding="utf-8").partition(HEADING)[0]
    cells = re.findall(r"^\| (`[^|]*`) \|", above, re.MULTILINE)
    named = {name.rstrip("/") for cell in cells for name in re.findall(r"`([^`]+)`", cell)}
    for folder in sorted(named ^ set(tree.rows)):
        yield f"{PAGE}: {folder}/ is in one of the two tables only"

    picture = tree.project / PICTURE
    if not picture.is_file():
        yield f"{PICTURE}: the picture does not exist"
        return
    boxes = [name.rstrip("/") for name in
             re.findall(r'class="name"[^>]*>([^<]+)<', picture.read_text(encoding="utf-8"))]
    for folder in tree.rows:
        # A box shows a folder with the folders in it, and may leave out the first part of a name.
        if not any(f"/{box}/" in f"/{folder}/" for box in boxes):
            yield f"{PICTURE}: there is no box of {folder}/"
    for box in boxes:
        if not any(f"/{folder}".endswith(f"/{box}") for folder in tree.rows):
            yield f"{PICTURE}: {PAGE} has no row for the box {box}/"


def forbidden_uses(tree):
    for where, folder, used in tree.uses:
        row = tree.rows.get(folder)
        if row and used != folder and used not in row.folders + row.libraries:
            yield f"{where}: {folder}/ may not use {used}"


def unused_entries(tree):
    used = {(folder, name) for _, folder, name in tree.uses}
    for folder, row in tree.rows.items():
        for name in row.folders + row.libraries:
            if (folder, name) not in used:
                yield f"{PAGE}: {folder}/ does not use {name}"


def private_includes(tree):
    for path, included in tree.included.items():
        for line, header in included:
            owner = folder_of(header, tree.rows)
            if owner and owner != folder_of(path, tree.rows) and header.parts[len(owner.split("/"))] == "src":
                yield f"{path}:{line}: {header} is private to {owner}/"


def include_circles(tree):
    finished, reported = set(), set()

    def walk(path, above):
        if path in above:
            circle = above[above.index(path):]
            if frozenset(circle) not in reported:
                reported.add(frozenset(circle))
                yield f"{path}: includes itself: {' -> '.join(str(step) for step in circle)} -> {path}"
            return
        if path not in finished:
            for _, header in tree.included.get(path, []):
                yield from walk(header, above + [path])
            finished.add(path)

    for source in tree.sources:
        yield from walk(source.path, [])


def long_files(tree):
    for source in tree.all_sources:
        if source.lines > MOST_LINES:
            yield f"{source.path}: {source.lines} lines, more than {MOST_LINES}: give its second responsibility a file"


def second_receivers(tree):
    # As the signal of a connect(); a class may also forward its own signal to dataGathered().
    connection = re.compile(r"connect\(\s*[^,;]+,\s*(?:&[\w:]*\bdataGathered\b|SIGNAL\(\s*dataGathered\b)")
    # With a receiver for the answer; a function of the same name without arguments is another one.
    question = re.compile(r"(?:->|\.)\s*isRealTimeSupported\s*\(\s*[^\s)]")
    for source in tree.sources:
        if source.path.parts[0] in RECEIVERS:
            continue
        text = source_tree.strip_comments(source.text)
        if connection.search(text):
            yield f"{source.path}: connects to dataGathered(): receive batches from session/ instead"
        if question.search(text):
            yield f"{source.path}: asks isRealTimeSupported(): session/ has the answer"


def conditions_on_connections(tree):
    connections = {name.upper() for folder in tree.rows if folder.startswith("connections/")
                   for name in folder.split("/")[1:2]}
    condition = re.compile(r"^[ \t]*#[ \t]*(?:if|ifdef|ifndef|elif)\b.*?\b(\w*(?:" + "|".join(sorted(connections))
                           + r")\w*)", re.MULTILINE)
    for source in tree.sources:
        if source.path.parts[0] == "apps" and connections:
            body = re.sub(r"^#ifndef (\w+_H)\n#define \1$", "", source.text, count=1, flags=re.MULTILINE)
            for macro in condition.findall(source_tree.strip_comments(body)):
                yield f"{source.path}: the condition on {macro} knows a connection: ask connections/links/ instead"


RULES = (misplaced_files, rows_out_of_order, folders_elsewhere_on_the_page, forbidden_uses, unused_entries,
         private_includes, include_circles, long_files, second_receivers, conditions_on_connections)


def print_uses(tree):
    for folder in tree.rows:
        used = {name for _, user, name in tree.uses if user == folder and name not in (folder, None)}
        folders = ", ".join(f"`{name}/`" for name in tree.rows if name in used)
        print(f"| `{folder}/` | {folders or '-'} | {', '.join(sorted(used - set(tree.rows))) or '-'} |")


def main():
    arguments = [argument for argument in sys.argv[1:] if argument != "--uses"]
    if len(arguments) > 1:
        print(__doc__, file=sys.stderr)
        return 2
    project = Path(arguments[0] if arguments else Path(__file__).resolve().parents[2])
    try:
        tree = Tree(project, read_table(project))
    except CannotCheck as error:
        print(error, file=sys.stderr)
        return 2
    if "--uses" in sys.argv:
        print_uses(tree)
        return 0
    faults = [fault for rule in RULES for fault in rule(tree)]
    for fault in faults:
        print(fault)
    if not faults:
        print(f"{len(tree.sources)} files are as {PAGE} says.")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
