#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Makes a program of the manual's samples, and what it must print.

A sample is a block of cpp in a page; the block of text that follows, if there is one, is its output.

usage: samples.py PROGRAM OUTPUT PAGE...
"""

import os
import re
import sys

SAMPLE = re.compile(r"^```cpp\n(.*?)^```\n(?:\n^```text\n(.*?)^```\n)?", re.M | re.S)


def main(program, output, pages):
    functions = ""
    calls = ""
    expected = ""
    for page in pages:
        with open(page, encoding="utf-8") as text:
            content = text.read()
        for number, sample in enumerate(SAMPLE.finditer(content), 1):
            name = f"{os.path.basename(page)}, sample {number}"
            function = re.sub(r"\W+", "_", name)
            line = content.count("\n", 0, sample.start(1)) + 1
            functions += f'void {function}() {{\n#line {line} "{page}"\n{sample[1]}}}\n\n'
            calls += f'    std::puts("# {name}");\n    {function}();\n'
            expected += f"# {name}\n{sample[2] or ''}"
    headers = "".join(f"#include <{h}>\n" for h in ("kvgeom/kvgeom.h", "atomic", "cmath", "cstdio", "thread"))
    with open(program, "w", encoding="utf-8") as file:
        file.write(f"{headers}\nnamespace {{\n\n{functions}}}  // namespace\n\nint main() {{\n{calls}}}\n")
    with open(output, "w", encoding="utf-8") as file:
        file.write(expected)


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2], sys.argv[3:])
