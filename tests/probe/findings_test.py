#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""What kvprobe finds in a real building, beside what sampled points find: in the model read again, by
plain arithmetic that owes nothing to the library.

findings_test.py KVPROBE MODEL
"""

import json
import math
import pathlib
import random
import subprocess
import sys
import tempfile
import unittest

PROGRAM, HOUSE = sys.argv[1:3]
PIPE = "--from -2,1.2,-7.5 --to 14,1.2,-7.5 -r 0.05".split()
POLYGON = ("--point 4.2,0,-9.5 --point 7.2,0,-9.5 --point 8.2,0,-6.5 --point 4.2,0,-4.8 "
           "--direction 0,3,0 --front 2.2 --back 0.3").split()
SAMPLES = 20000


def ask(*arguments):
    run = subprocess.run([PROGRAM, *arguments, "--json"], capture_output=True, text=True)
    return json.loads(run.stdout)


def inverse(m):
    """Of an affine 3x4 matrix for columns, by Cramer's rule."""
    def cofactor(i, j):
        a, b, c, d = (i + 1) % 3, (i + 2) % 3, (j + 1) % 3, (j + 2) % 3
        return m[a][c] * m[b][d] - m[a][d] * m[b][c]

    determinant = sum(m[0][j] * cofactor(0, j) for j in range(3))
    rows = [[cofactor(j, i) / determinant for j in range(3)] for i in range(3)]
    return [row + [-sum(row[j] * m[j][3] for j in range(3))] for row in rows]


class Solid:
    """The box around a node's points, in the node's own coordinates."""

    def __init__(self, path, points, placement):
        self.path = path
        # The model's numbers were written with six digits.
        self.low = [min(p[i] for p in points) + 1e-5 for i in range(3)]
        self.high = [max(p[i] for p in points) - 1e-5 for i in range(3)]
        self.way_in = inverse(placement)

    def holds(self, p):
        x, y, z = p
        for (a, b, c, d), low, high in zip(self.way_in, self.low, self.high):
            if not low <= a * x + b * y + c * z + d <= high:
                return False
        return True


def read_solids():
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder, "model.json")
        subprocess.run(["assimp", "export", HOUSE, path, "-fassjson"], check=True, stdout=subprocess.DEVNULL)
        scene = json.loads(path.read_text())
    meshes = [list(zip(*[iter(mesh["vertices"])] * 3)) for mesh in scene["meshes"]]
    solids = []

    def collect(node, outer, above):
        m = [node["transformation"][4 * i : 4 * i + 4] for i in range(3)]
        here = [[sum(row[k] * m[k][j] for k in range(3)) + (row[3] if j == 3 else 0) for j in range(4)]
                for row in outer]
        path = above + "/" + node["name"]
        if "meshes" in node:
            solids.append(Solid(path, [p for mesh in node["meshes"] for p in meshes[mesh]], here))
        for child in node.get("children", []):
            collect(child, here, path)

    collect(scene["rootnode"], [[1, 0, 0, 0], [0, 1, 0, 0], [0, 0, 1, 0]], "")
    return solids


def points_in_box(dice, low, high, count=SAMPLES):
    return [[dice.uniform(a, b) for a, b in zip(low, high)] for _ in range(count)]


def points_in_tube(dice, begin, end, radius, count):
    along = [b - a for a, b in zip(begin, end)]
    length = math.hypot(*along)
    along = [x / length for x in along]
    least = min(range(3), key=lambda i: abs(along[i]))
    aside = [-along[least] * x + (i == least) for i, x in enumerate(along)]
    aside = [x / math.hypot(*aside) for x in aside]
    upward = [along[i - 2] * aside[i - 1] - along[i - 1] * aside[i - 2] for i in range(3)]
    points = []
    for _ in range(count):
        t, angle = dice.uniform(0, length), dice.uniform(0, 2 * math.pi)
        r = radius * math.sqrt(dice.random())
        u, w = r * math.cos(angle), r * math.sin(angle)
        points.append([begin[i] + t * along[i] + u * aside[i] + w * upward[i] for i in range(3)])
    return points


def points_in_polygon(dice):
    corners = [(4.2, -9.5), (7.2, -9.5), (8.2, -6.5), (4.2, -4.8)]
    points = []
    for _ in range(SAMPLES):
        weights = [dice.random() ** 3 for _ in corners]  # to the edges and corners too
        x, z = (sum(w * corner[i] for w, corner in zip(weights, corners)) / sum(weights) for i in (0, 1))
        points.append([x, dice.uniform(0.3, 2.2), z])
    return points


class Findings(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.solids = read_solids()

    def setUp(self):
        self.dice = random.Random(71)

    def holders(self, points):
        return {solid.path for solid in self.solids if any(map(solid.holds, points))}

    def paths(self, hits, relation=None):
        """The names that kvprobe gave, as the paths that they abbreviate."""
        paths = set()
        for name in {hit["object"] for hit in hits if relation in (None, hit["relation"])}:
            [path] = (solid.path for solid in self.solids if solid.path.endswith("/" + name))
            paths.add(path)
        return paths

    def test_of_a_pipe_are_what_its_points_meet(self):
        found = ask(HOUSE, *PIPE)
        self.assertEqual(found["objects"], len(self.solids))
        self.assertEqual(found["found"], 6)
        points = points_in_tube(self.dice, (-2, 1.2, -7.5), (14, 1.2, -7.5), 0.05, SAMPLES)
        self.assertEqual(self.paths(found["hits"]), self.holders(points))

    def test_of_pipes_in_any_direction_miss_nothing(self):
        found_in_all = touched_in_all = 0
        for _ in range(12):
            begin, end = points_in_box(self.dice, (-2, 0, -11), (14, 5, 1), 2)
            maybe = self.paths(ask(HOUSE, "-r", "0.2", *(f"--{name}={','.join(map(repr, p))}" for name, p in
                                                         (("from", begin), ("to", end))))["hits"])
            touched = self.holders(points_in_tube(self.dice, begin, end, 0.2, 5000))
            self.assertLessEqual(touched, maybe)
            found_in_all += len(maybe)
            touched_in_all += len(touched)
        # Near edges of boxes more may be found; but a program that finds all would pass, too.
        self.assertLess(found_in_all, touched_in_all * 3 / 2)

    def test_of_a_fence_are_what_it_shares_points_with(self):
        found = ask("fence", HOUSE, *POLYGON)
        self.assertEqual(self.paths(found["hits"], "may be touched"), self.holders(points_in_polygon(self.dice)))
        self.assertEqual(found["found"], 9)

    def test_of_a_window_lie_inside_or_cross(self):
        low, high = (0, 0, -10), (6, 2.6, -4)
        hits = ask("window", HOUSE, "--box", "0,0,-10,6,2.6,-4")["hits"]
        self.assertLessEqual(self.holders(points_in_box(self.dice, low, high)), self.paths(hits))
        outside = [p for p in points_in_box(self.dice, (-4, -2, -14), (16, 7, 4), 2 * SAMPLES)
                   if not all(a - 1e-5 <= x <= b + 1e-5 for a, x, b in zip(low, p, high))]
        inside = self.paths(hits, "inside")
        self.assertEqual(self.holders(outside) & inside, set())
        self.assertEqual((len(inside), len(self.paths(hits, "crosses"))), (10, 9))

    def test_of_other_volumes_meet_their_ranges(self):
        for command, probe, low, high in [
            ("cone", "--point 3,1.5,-5 --direction 2,0,0 --front 6 --back 0 -r 1 --eye -2,1.5,-5".split(),
             (3, -0.7, -7.2), (9, 3.7, -2.8)),
            ("frustum", POLYGON + ["--eye", "5,-3,-7"],
             (3.613333, 0.3, -11.333333), (10.546667, 2.2, -3.186667)),
            ("prism", POLYGON, (4.2, 0.3, -9.5), (8.2, 2.2, -4.8))]:
            found = ask(command, HOUSE, *probe)
            for end, corner in ("low", low), ("high", high):
                for x, expected in zip(found["range"][end], corner):
                    self.assertAlmostEqual(x, expected, 5, command)
            met = self.paths(found["hits"], "meets the range")
            holders = self.holders(points_in_box(self.dice, low, high))
            self.assertLessEqual(holders, met, command)
            self.assertLessEqual(len(met), len(holders) * 5 / 4, command)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
