#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Every record has a view in the natvis file, and every member named there is one of the headers'.

Arguments: the natvis file, the folder of the headers.
"""

import pathlib
import re
import sys
import xml.etree.ElementTree as xml


def records(folder):
    """The data members of each record and their types."""
    found = {}
    for header in sorted(folder.glob("*/*.h")):
        for name, body in re.findall(r"^struct (tagG\w+) \{(.*?)^\};", header.read_text(), re.M | re.S):
            members = re.findall(r"^    ([\w ]+?)\*? ?(m_\w+)[\[\]\d]*;", body, re.M)
            found[name] = {member: kind.strip() for kind, member in members}
    return found


def main():
    views = xml.parse(sys.argv[1]).getroot()
    space = {"": "http://schemas.microsoft.com/vstudio/debugger/natvis/2010"}
    known = records(pathlib.Path(sys.argv[2]))
    faults = []
    shown = {}
    for view in views.findall("Type", space):
        name = view.get("Name")
        used = shown.setdefault(name, set())
        for element in view.iter():
            for text in [element.text or ""] + list(element.attrib.values()):
                # A path of members, each looked up in the type of the one before.
                for path in re.findall(r"m_\w+(?:\.m_\w+)*", text):
                    kind = name
                    for member in path.split("."):
                        used.add(member)
                        members = known.get(kind, {})
                        if member not in members:
                            faults.append(f"{name}: {kind} has no {member}")
                        kind = "tag" + members.get(member, "")
    faults += [f"{name}: no such record" for name in shown if name not in known]
    for name, members in known.items():
        missing = sorted(set(members) - shown.get(name, set()))
        if missing:
            faults.append(f"{name}: not shown: {', '.join(missing)}")
    print("\n".join(faults) or f"{len(known)} records")
    return 1 if faults or not known else 0


sys.exit(main())
