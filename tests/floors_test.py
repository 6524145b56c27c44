#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Every room of the library includes what lies below it, and nothing beside it or above it; no header
includes itself by way of others.

usage: floors_test.py PROJECT

The order of the floors is the list in CONTRIBUTING.md.
"""

import pathlib
import re
import sys
import unittest

PROJECT = pathlib.Path(sys.argv.pop(1))
INCLUDE = re.compile(r'^\s*#\s*include\s*(<kvgeom/([^>]+)>|"[^"]*")', re.M)
# Files outside of the rooms: the first lies below all of them, the others above.
GROUND = "export.h"
ROOF = {"kvgeom.h", "layout.cpp", "module_entry.cpp"}


def floors(text):
    """The floor of each room, counted from below: of the list that follows "From the top:"."""
    listed = re.search(r"From the top:\n\n((?: {4}.+\n)+)", text).group(1)
    rooms = [line.split() for line in listed.splitlines()]
    return {room: number for number, line in enumerate(reversed(rooms)) for room in line}


def includes(sources):
    """What each file includes of the library, by their paths in it."""
    return {name: [found.group(2) or found.group(1) for found in INCLUDE.finditer(text)]
            for name, text in sources.items()}


def faults(sources, floor):
    """A sentence for each include that is not allowed."""
    graph = includes(sources)
    for name, included in graph.items():
        room = name.split("/")[0]
        for other in included:
            if name in ROOF or other == GROUND:
                continue
            if other.startswith('"') or "/" not in other:
                yield f"{name} includes {other}, which is in no room"
            elif other.split("/")[0] != room and floor[other.split("/")[0]] >= floor[room]:
                yield f"{name} includes {other}, which doesn't lie below it"
    yield from circles(graph)


def circles(graph):
    """A sentence for each include that closes a circle."""
    done = set()

    def visit(name, path):
        if name in path:
            yield f"{name} includes itself by way of {', '.join(path[path.index(name) + 1:])}"
        elif name not in done:
            for other in graph.get(name, []):
                yield from visit(other, path + [name])
            done.add(name)

    for name in graph:
        yield from visit(name, [])


class Floors(unittest.TestCase):
    def setUp(self):
        library = PROJECT / "kvgeom"
        self.floor = floors((PROJECT / "CONTRIBUTING.md").read_text(encoding="utf-8"))
        self.sources = {path.relative_to(library).as_posix(): path.read_text(encoding="utf-8")
                        for path in library.rglob("*") if path.suffix in (".h", ".cpp")}

    def test_the_list_names_every_room(self):
        rooms = {name.split("/")[0] for name in self.sources if "/" in name}
        self.assertEqual(rooms, set(self.floor))
        self.assertEqual({name for name in self.sources if "/" not in name}, ROOF | {GROUND})

    def test_every_include_runs_downward(self):
        self.assertEqual(list(faults(self.sources, self.floor)), [])

    def test_others_are_noticed(self):
        for name, included in (("points/vector.h", "maps/matrix.h"), ("batch/unions.h", "textio/scanner.h"),
                               ("points/vector.h", "points/position.h"), ("host/registry.h", "kvgeom.h")):
            changed = dict(self.sources)
            changed[name] += f"\n#include <kvgeom/{included}>\n"
            self.assertNotEqual(list(faults(changed, self.floor)), [], f"{included} in {name}")


if __name__ == "__main__":
    unittest.main()
