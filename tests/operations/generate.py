#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes a C++ table of the exported operations, made from the list of exports.

usage: generate.py EXPORTS OUTPUT
"""

import re
import sys

# What acts on more than its arguments and results: files of the system, or the hook that the
# table's users need for themselves.
LEFT_OUT = re.compile(r"(SetAssertHook|Check(Registry|DebugReg)\w*|invld|MathDebugOutputFilePtr|LogAssertMessage)\(")

# What rests on sin, cos or atan2, whose last bit is the C library's affair.
BY_ANGLE = re.compile(
    r"(GiveAngle|GiveRotAngle|GetRotAngles|GetRotationAngles)\("
    r"|(Rotation|RotateTransf)\(double, tagGUnitVector"
    r"|(Rotation2d|RotateTransf2d)\(double(, tagGPosition2d const&)?\)"
    r"|Rotate4x4\(double, tagGUnitVector"
)

SIGNATURE = re.compile(r"(?:(\w+)::)?(operator tag\w+|operator\W+|\w+)\((.*)\)( const)?$")


def table_row(signature):
    record, name, parameters, const = SIGNATURE.match(signature).groups()
    types = [] if parameters == "" else parameters.split(", ")
    arguments = ", ".join(f"a{i}" for i in range(len(types)))
    if record:
        types.insert(0, f"{record}{const or ''}&")
        call = f"self.{name}({arguments})"
    else:
        call = f"{name}({arguments})"
    names = ["self"] * bool(record) + arguments.split(", ")
    declared = ", ".join(f"{t} {n}" for t, n in zip(types, names))
    by_angle = "true" if BY_ANGLE.match(signature) else "false"
    return (
        f'    {{"{signature}", {by_angle}, [](Source& source, Result& result) {{\n'
        f"         Invoke<{', '.join(types)}>(source, result,\n"
        f"             []({declared}) -> decltype(auto) {{ return {call}; }});\n"
        f"     }}}},\n"
    )


def main(exports, output):
    with open(exports, encoding="utf-8") as lines:
        signatures = [line.strip().replace("_IO_FILE", "std::FILE") for line in lines]
    rows = [table_row(s) for s in signatures if not LEFT_OUT.match(s)]
    with open(output, "w", encoding="utf-8") as table:
        table.write('#include "tests/operations/invoke.h"\n\n')
        table.write("namespace kvgeom::test {\n\n")
        table.write("const std::vector<Operation> kOperations = {\n")
        table.writelines(rows)
        table.write("};\n\n}  // namespace kvgeom::test\n")


if __name__ == "__main__":
    main(*sys.argv[1:])
