#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Shows Doxygen a header as its readers understand it; line numbers stay.

- A comment tells of all declarations below it, up to an empty line or the next comment.
- // paragraphs that stand by themselves tell of the file.
- A record has one name, GBox, not also the tagGBox that it is declared by.
- Comments are plain text; what they quote is a message, or stands in a file.

usage: header_filter.py HEADER
"""

import re
import sys

RECORD_TYPEDEF = re.compile(r"^typedef (struct )?tagG\w+ G\w+;$")
COMMENT = re.compile(r"^\s*///(?!<) ?(.*)$")
REMARK = re.compile(r"^//(?!/) ?(.*)$")
SCOPE = re.compile(r"\s*(struct|namespace)\b.*\{$")
END_OF_DECLARATION = re.compile(r"[;{}]\s*(///<.*)?$")


def marked_up(text):
    """Plain text with its quotations as code, and nothing that Doxygen takes for a command."""
    text = text.replace("&", "&amp;").replace("<", "&lt;").replace(">", "&gt;")
    text = re.sub(r"[\\*#@%|]", r"\\\g<0>", text)
    return re.sub(r'"([^"]*)"', r"<code>\1</code>", text)


def marked_up_comment(lines):
    """The same for a comment, its indented paragraphs as they are. As many lines as before."""
    paragraphs = "\n".join(lines).split("\n\n")
    shown = ""
    for paragraph in paragraphs:
        is_drawing = re.search("^ {4}", paragraph, re.M)
        before = "" if not shown else "\n<pre>\n" if is_drawing else "\n\n"
        shown += before + (paragraph if is_drawing else marked_up(paragraph))
        if is_drawing:
            shown += "</pre>"
    return shown.split("\n")


class Filter:
    def __init__(self, lines):
        self.lines = lines
        self.at = 0

    def line(self):
        return self.lines[self.at] if self.at < len(self.lines) else ""

    def take_while(self, pattern):
        """The texts of the comment lines from here on."""
        texts = []
        while match := pattern.match(self.line()):
            texts.append(match[1])
            self.at += 1
        return texts

    def take_declaration(self):
        """The lines from here to the end of a declaration, or of the head of a scope."""
        first = self.at
        while self.at < len(self.lines) and not END_OF_DECLARATION.search(self.line()):
            self.at += 1
        if self.line().endswith("{") and not SCOPE.match(self.lines[first]):
            body_end = re.match(r"\s*", self.lines[first])[0] + "}"
            while self.line() != body_end:
                self.at += 1
        self.at += 1
        return self.lines[first : self.at]

    def tells_of_the_file(self):
        """Whether a // paragraph begins here that stands by itself."""
        end = self.at
        while end < len(self.lines) and REMARK.match(self.lines[end]):
            end += 1
        return self.at < end < len(self.lines) and not self.lines[end]

    def run(self):
        told = []  # the comment that the declarations of a paragraph share
        while self.at < len(self.lines):
            line = self.line()
            if self.at > 1 and COMMENT.match(line):
                indent = re.match(r"\s*", line)[0]
                told = marked_up_comment(self.take_while(COMMENT))
                yield from (f"{indent}/// {text}" for text in told)
                declaration = self.take_declaration()
                if SCOPE.match(declaration[0]):
                    told = []
                yield from declaration
            elif told and line and not re.match(r"\s*[#}/]", line):
                comment = " ".join(text or "<p>" for text in told)
                declaration = self.take_declaration()
                yield f"/** {comment} */ {declaration[0]}"
                yield from declaration[1:]
            elif not line:
                told = []
                self.at += 1
                if self.tells_of_the_file():
                    yield "/// @file"
                    yield from (f"/// {text}" for text in marked_up_comment(self.take_while(REMARK)))
                else:
                    yield line
            else:
                self.at += 1
                yield line


def main(path):
    with open(path, encoding="utf-8") as header:
        lines = ["" if RECORD_TYPEDEF.match(line) else line for line in header.read().splitlines()]
    # Instead of the licence and of #pragma once: what a record's header is about.
    record = re.search(r"^struct tag(G\w+) \{", "\n".join(lines), re.M)
    lines[:2] = ["/// @file", f"/// {record[1]} and its operations." if record else ""]
    shown = "\n".join(Filter(lines).run())
    sys.stdout.write(re.sub(r"\btag(G\w+)", r"\1", shown) + "\n")


if __name__ == "__main__":
    main(*sys.argv[1:])
