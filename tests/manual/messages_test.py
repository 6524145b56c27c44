#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""The manual tells of every message that the library passes, and of no other.

usage: messages_test.py SOURCES PAGE
"""

import pathlib
import re
import sys

# Files whose strings are no messages: names of files and switches, the words of the text format.
WITHOUT_MESSAGES = re.compile(
    r"textio/|host/(registry|debug_switches|assertion_log|log_file)|vectors/|export\.h|module_entry"
)
LITERAL = r'"(?:[^"\\]|\\.)*"'
TOKEN = re.compile(rf"//[^\n]*|^\s*#[^\n]*|'(?:[^'\\]|\\.)+'|{LITERAL}(?:\s*{LITERAL})*", re.M)


def messages_of(folder):
    """Every string of the sources but for those files; adjacent ones are one."""
    for path in sorted(pathlib.Path(folder).rglob("*.[ch]*")):
        if not WITHOUT_MESSAGES.search(path.as_posix()):
            for token in TOKEN.findall(path.read_text(encoding="utf-8")):
                if token.startswith('"'):
                    yield "".join(part[1:-1] for part in re.findall(LITERAL, token))


def messages_in(page):
    """The first column of its tables of messages."""
    text = pathlib.Path(page).read_text(encoding="utf-8")
    for table in re.findall(r"^\| message \|.*\n((?:\|.*\n)*)", text, re.M):
        yield from re.findall(r"^\| `(.*?)` \|", table, re.M)


def main(folder, page):
    passed = set(messages_of(folder))
    told = list(messages_in(page))
    complaints = [f"not in the manual: {m}" for m in sorted(passed - set(told))]
    complaints += [f"not in the code: {m}" for m in sorted(set(told) - passed)]
    complaints += [f"told twice: {m}" for m in sorted({m for m in told if told.count(m) > 1})]
    print("\n".join(complaints) or f"{len(told)} messages")
    return 1 if complaints or not told else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
