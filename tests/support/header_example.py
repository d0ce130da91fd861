# SPDX-FileCopyrightText: The memorykeymodel developers
# SPDX-License-Identifier: Apache-2.0

"""Writes the example of a header into a file that a test includes: what the comment shows is what is compiled.

    header_example.py HEADER OUTPUT

The example is the block of lines in the header's comments that are indented by five blanks. There is one in a header.
"""

import json
import os
import re
import sys

header, output = sys.argv[1:]
with open(header, encoding="utf-8") as file:
    lines = [re.match(r"///     (.*)", line) for line in file]
shown = [number for number, line in enumerate(lines, 1) if line]
if not shown:
    sys.exit(f"{header}: no comment shows an example.")
if shown[-1] - shown[0] + 1 != len(shown):
    sys.exit(f"{header}: the example is not one block of lines. Show one example, without empty lines in it.")
with open(output, "w", encoding="utf-8") as file:
    file.write(f"#line {shown[0]} {json.dumps(os.path.abspath(header), ensure_ascii=False)}\n")
    file.writelines(lines[number - 1][1] + "\n" for number in shown)
