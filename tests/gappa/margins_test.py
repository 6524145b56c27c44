#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Gappa (https://gappa.gitlabpages.inria.fr) proves the margins of the filters from the constants that the
sources have today, and doesn't prove half of any."""

import pathlib
import re
import subprocess
import unittest

HERE = pathlib.Path(__file__).resolve().parent
SOURCES = HERE.parents[1] / "kvgeom"
MARGINS = {
    "plane_filter.g": ("boxes/plane_test_kernels.h", ["kPlaneMargin"]),
    "bore_line_filter.g": ("volumes/bore_line_kernels.h", ["kFurthestMargin", "kOffsetMargin"]),
}


def constant(source, name):
    """Its value, of a definition such as 2 * 0x1p-49."""
    [definition] = re.findall(rf"constexpr double {name} = ([^;]+);", (SOURCES / source).read_text())
    value = 1.0
    for factor in definition.split(" * "):
        value *= float.fromhex(factor)
    return value


def is_proved(proof, values):
    text = (HERE / proof).read_text()
    for name, value in values.items():
        text = text.replace(f"@{name}@", value.hex())
    gappa = subprocess.run(["gappa", "-Eprecision=100"], input=text, text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    # Anything else, a mistake in the file among them, is neither proof nor refusal.
    assert gappa.returncode == 0 or "some properties were not satisfied" in gappa.stdout, gappa.stdout
    return gappa.returncode == 0


class Margins(unittest.TestCase):
    def test_are_proved(self):
        for proof, (source, names) in MARGINS.items():
            self.assertTrue(is_proved(proof, {name: constant(source, name) for name in names}), proof)

    def test_are_refused_when_halved(self):
        for proof, (source, names) in MARGINS.items():
            values = {name: constant(source, name) for name in names}
            for name in names:
                self.assertFalse(is_proved(proof, values | {name: values[name] / 2}), name)


if __name__ == "__main__":
    unittest.main()
