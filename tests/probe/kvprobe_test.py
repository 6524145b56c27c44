#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""kvprobe as its users meet it: what it prints, draws, refuses, and tells the shell.

kvprobe_test.py KVPROBE MODEL [TEST...]

The model is a house of 110 objects; lengths are metres, y points up.
"""

import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as xml

PROGRAM, HOUSE = sys.argv[1:3]
PIPE = "--from -2,1.2,-7.5 --to 14,1.2,-7.5 -r 0.05".split()
POLYGON = ("--point 4.2,0,-9.5 --point 7.2,0,-9.5 --point 8.2,0,-6.5 --point 4.2,0,-4.8 "
           "--direction 0,3,0 --front 2.2 --back 0.3").split()


def call(*arguments):
    """Runs kvprobe; arguments may hold several words."""
    words = [word for argument in arguments
             for word in (argument.split() if isinstance(argument, str) else argument)]
    return subprocess.run([PROGRAM, *words], capture_output=True, text=True, errors="replace",
                          stdin=subprocess.DEVNULL)


def ask(*arguments):
    return json.loads(call(*arguments, "--json").stdout)


def names(hits, relation=None):
    return {hit["object"] for hit in hits if relation in (None, hit["relation"])}


def without_namespace(root):
    for element in root.iter():
        element.tag = element.tag.rpartition("}")[2]
    return root


def numbers(element, *attributes):
    return [float(element.get(name, 0)) for name in attributes]


def cubes(nodes):
    """A COLLADA model of unit cubes, each a node with a name and a matrix for columns."""
    return f"""<?xml version="1.0"?>
<COLLADA xmlns="http://www.collada.org/2005/11/COLLADASchema" version="1.4.1">
<asset><up_axis>Y_UP</up_axis></asset><library_geometries><geometry id="cube"><mesh><source id="p">
<float_array id="a" count="24">0 0 0 1 0 0 1 1 0 0 1 0 0 0 1 1 0 1 1 1 1 0 1 1</float_array>
<technique_common><accessor source="#a" count="8" stride="3"><param name="X" type="float"/>
<param name="Y" type="float"/><param name="Z" type="float"/></accessor></technique_common></source>
<vertices id="v"><input semantic="POSITION" source="#p"/></vertices><triangles count="4">
<input semantic="VERTEX" source="#v" offset="0"/><p>0 1 2 2 3 0 4 5 6 6 7 4</p></triangles></mesh>
</geometry></library_geometries><library_visual_scenes><visual_scene id="s">""".encode() + b"".join(
        b'<node id="%s"><matrix>%s</matrix><instance_geometry url="#cube"/></node>' % node for node in nodes
    ) + b"""</visual_scene></library_visual_scenes><scene><instance_visual_scene url="#s"/></scene></COLLADA>"""


class Test(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)

    def write(self, name, content):
        path = self.folder / name
        path.write_bytes(content if isinstance(content, bytes) else content.encode())
        return str(path)

    def draw(self, *arguments):
        path = self.folder / "picture.svg"
        self.assertEqual(call(*arguments, "--svg", [str(path)]).returncode, 0, arguments)
        return without_namespace(xml.parse(path).getroot())

    def refuse(self, rows):
        for arguments, complaint in rows:
            outcome = call(*arguments)
            self.assertEqual((outcome.returncode, outcome.stdout), (2, ""), arguments)
            self.assertRegex(outcome.stderr, r"\Akvprobe: .*\n\Z")
            self.assertIn(complaint, outcome.stderr)


class Pipes(Test):
    def test_enter_and_leave_objects(self):
        # Walls stand at x 0..0.3, 3.8..4.04, 7.41..7.65 and 11.7..12; the leg begins at -2.
        spans = [(2, 2.3), (2.12, 2.195), (5.8, 6.04), (9.41, 9.65), (13.7, 14), (13.805, 13.88)]
        found = ask(HOUSE, PIPE)
        self.assertEqual(ask("bore", HOUSE, PIPE)["hits"], found["hits"], "the same by its full name")
        self.assertEqual(len(found["hits"]), len(spans))
        for hit, (begin, end) in zip(found["hits"], spans):
            self.assertAlmostEqual(hit["enters"], begin - 0.05, 5)
            self.assertAlmostEqual(hit["leaves"], end + 0.05, 5)
            self.assertAlmostEqual(hit["length"], end - begin + 0.1, 5)

    def test_print_a_table(self):
        outcome = call(HOUSE, PIPE)
        head, first, *_, last = outcome.stdout.splitlines()
        self.assertEqual((outcome.returncode, outcome.stderr), (0, ""))
        self.assertEqual(head.split(), ["leg", "object", "enters", "leaves", "length"])
        self.assertEqual(first, "  1  IfcWallStandardCase_Wand-Ext-ERDG-1_3rPX_Juz59peXXY6wDJl18    1.950"
                                "   2.350   0.400")
        self.assertRegex(last, r"^6 of 110 objects may be touched on 1 leg \(probed in ")
        self.assertEqual(len(outcome.stdout.splitlines()), 8)

    def test_follow_a_route_and_end_with_its_legs(self):
        found = ask(HOUSE, "--from 1,1.2,-7.5 --via 5,1.2,-7.5 --via 5,1.2,-5.87 --to 5,9,-5.87 -r 0.1")
        lengths = [leg["length"] for leg in found["legs"]]
        legs = [hit["leg"] for hit in found["hits"]]
        self.assertEqual(legs, sorted(legs))
        self.assertEqual(set(legs), {1, 2, 3})
        for hit in found["hits"]:
            self.assertGreaterEqual(hit["enters"], 0)
            self.assertLessEqual(hit["leaves"], lengths[hit["leg"] - 1])
        # The middle leg ends within the wall that the last one climbs along.
        self.assertEqual(found["hits"][1]["leaves"], lengths[1])

    def test_have_no_ends_along_a_line(self):
        hits = ask(HOUSE, "--through 3,1.2,-7.5 --along -2,0,0 -r 0.05")["hits"]
        self.assertEqual(names(hits), names(ask(HOUSE, PIPE)["hits"]))
        self.assertAlmostEqual(hits[0]["enters"], 3 - 12.05, 5)
        self.assertAlmostEqual(max(hit["leaves"] for hit in hits), 3.05, 5)
        self.assertEqual(ask(HOUSE, "--through 3,50,-7 --along 1e-200,0,0")["found"], 0)

    def test_are_carried_through_any_placement(self):
        model = [self.write("cubes.dae", cubes([
            (b"similar", b"0 -2 0 10  2 0 0 0  0 0 2 0  0 0 0 1"),
            (b"mirrored", b"-1 0 0 20  0 1 0 0  0 0 1 0  0 0 0 1"),
            (b"stretched", b"1 0 0 30  0 8 0 0  0 0 0.25 0  0 0 0 1"),
            (b"sheared", b"1 3 0 40  0 1 0 0  0 0 1 0  0 0 0 1"),
            (b"flat", b"1 0 0 50  0 1 0 0  0 0 0 0.5  0 0 0 1")]))]
        for probe, expected, span in [
            ("--from 9,-1,1 --to 9,5,1 -r 0.5", "similar", (0.5, 3.5)),
            ("--from 9,-1,1 --to 9,-0.6,1 -r 0.5", None, None),
            ("--from 19.5,-3,0.5 --to 19.5,4,0.5 -r 0.25", "mirrored", (2.75, 4.25)),
            # Along the stretched axis the pipe is thin, across it is thick, as the object sees it.
            ("--from 30.5,-10,0.125 --to 30.5,10,0.125 -r 0.5", "stretched", None),
            ("--from 30.5,4,-3 --to 30.5,4,-0.3 -r 0.5", "stretched", None),
            ("--from 30.5,50,-9 --to 30.5,50,9 -r 1", None, None),
            ("--from 42,0.5,-5 --to 42,0.5,5 -r 0.1", "sheared", None),
            ("--from 50.5,0.5,-1 --to 50.5,0.5,2", "flat", (1.5, 1.5))]:
            hits = ask(model, probe)["hits"]
            self.assertEqual([hit["object"] for hit in hits], [expected] if expected else [], probe)
            if span:
                self.assertAlmostEqual(hits[0]["enters"], span[0], 6, probe)
                self.assertAlmostEqual(hits[0]["leaves"], span[1], 6, probe)

    def test_exit_as_grep_does(self):
        nothing = call(HOUSE, "--from -2,50,0 --to 14,50,0")
        self.assertEqual(nothing.returncode, 1)
        self.assertRegex(nothing.stdout, r"\Aleg  object  enters  leaves  length\n0 of 110 objects may be")
        self.assertEqual(call("--help").returncode, 0)
        self.assertRegex(call("--version").stdout, r"\Akvprobe \d+\.\d+\.\d+\n\Z")
        self.assertEqual(call(HOUSE, PIPE, "--svg /nowhere/x.svg").returncode, 2)
        with open("/dev/full", "w") as full:
            self.assertEqual(subprocess.run([PROGRAM, HOUSE, *PIPE], stdout=full,
                                            stderr=subprocess.DEVNULL).returncode, 2)

    def test_are_refused_in_one_line_that_names_the_argument(self):
        ends = "--from 1,2,3 --to 4,5,6"
        self.refuse([
            ([""], "MODEL"),
            (["/nowhere/model.ifc", PIPE], "/nowhere/model.ifc: no such file"),
            (["/tmp", PIPE], "/tmp: not a file"),
            ([self.write("garbage.ifc", b"ISO-10303-21;\nHEADER;\n\x01\xff"), PIPE],
             "garbage.ifc: can't be read as a model"),
            ([self.write("empty.obj", ""), PIPE], "empty.obj: "),
            ([self.write("pointless.dae", cubes([])), PIPE], "pointless.dae: the model has no meshes"),
            ([self.write("model.unknown", "x"), PIPE], "model.unknown: can't be read as a model"),
            ([HOUSE], "--from: no probe given"),
            ([HOUSE, "--from 1,2,3"], "--to: missing"),
            ([HOUSE, "--to 1,2,3"], "--from: missing"),
            ([HOUSE, "--via 1,2,3 --to 3,4,5"], "--from: missing"),
            ([HOUSE, "--through 1,2,3"], "--along: missing"),
            ([HOUSE, "--along 1,2,3"], "--through: missing"),
            ([HOUSE, ends, "--list"], "--list: "),
            ([HOUSE, PIPE, "--through 1,2,3 --along 1,2,3"], "--through: "),
            ([HOUSE, "--from 1,2,3 --to 1,2,3"], "--to: '1,2,3' is the same point as --from"),
            ([HOUSE, "--from 1,2,3 --to 1,2,3.0000005"], "--to: "),
            ([HOUSE, "--from 1,2,3 --via 4,5,6 --via 4,5,6 --to 7,8,9"], "--via: "),
            ([HOUSE, ends, "-r 0.05x"], "--radius: '0.05x' is not a number"),
            ([HOUSE, ends, "-r -0.1"], "--radius: '-0.1' is negative"),
            ([HOUSE, ends, "--radius=nan"], "--radius: 'nan' is not a number"),
            ([HOUSE, ends, "--radius inf"], "--radius: 'inf' is not a number"),
            ([HOUSE, ends, "--radius 1e999"], "--radius: '1e999' is not a number"),
            ([HOUSE, "--from 1,2 --to 4,5,6"], "--from: '1,2' has 2 numbers, not 3"),
            ([HOUSE, "--from 1,2,3 --to 4,5,6,7"], "--to: '4,5,6,7' has 4 numbers, not 3"),
            ([HOUSE, "--from 1,,3 --to 4,5,6"], "--from: '' is not a number"),
            ([HOUSE, "--from 1,2,x --to 4,5,6"], "--from: 'x' is not a number"),
            ([HOUSE, "--from 1,2,1e30 --to 4,5,6"], "--from: '1e30' is not a number below 1e30"),
            ([HOUSE, "--through 1,2,3 --along 0,0,-0"], "--along: the direction has no length"),
            ([HOUSE, PIPE, "--up w"], "--up: 'w'"),
            ([HOUSE, PIPE, "--frobnicate"], "--frobnicate")])


class Objects(Test):
    def test_are_listed_with_their_boxes(self):
        boxes = {item["object"]: item["box"] for item in ask(HOUSE, "--list")["objects"]}
        self.assertEqual(len(boxes), 110)
        floor = boxes["IfcSlab_Bodenplatte_1pPHnf7cXCpPsNEnQf8_6B"]
        self.assertAlmostEqual(floor["low"][1], -0.2, 5)
        self.assertAlmostEqual(floor["high"][0], 12, 5)
        self.assertAlmostEqual(floor["low"][2], -10, 5)

    def test_are_told_apart_and_raw_names_never_printed(self):
        at_origin = b"1 0 0 0  0 1 0 0  0 0 1 0  0 0 0 1"
        model = [self.write("names.dae", cubes([(name, at_origin) for name in [
            b"twin", b"twin", b"&lt;b&gt; &amp; &quot;c&quot;", "Gel\u00e4nde".encode(), b"esc\x1b[31m \xff"]]))]
        listed = call(model, "--list")
        self.assertEqual(listed.returncode, 0)
        for name in ["twin[1] ", "twin[2] ", "Gel\u00e4nde"]:
            self.assertIn(name, listed.stdout)
        self.assertNotRegex(listed.stdout, "[\x1b\ufffd]")
        # All lines but the last, which counts, are as wide as the first.
        self.assertEqual(len({len(line) for line in listed.stdout.splitlines()[:-1]}), 1, listed.stdout)
        self.draw(model, "--through 0.5,0.5,0.5 --along 0,1,0")


class Drawings(Test):
    def test_show_what_was_found(self):
        root = self.draw(HOUSE, PIPE)
        # A filled group for each object found, a wireframe for each other one.
        self.assertEqual(len(root.findall("g[title]")), 6)
        self.assertEqual(len(root.findall("g/path[title]")), 110 - 6)
        # Each number stands on the picture and in the legend.
        texts = [element.text for element in root.iter("text")]
        for number in range(1, 7):
            self.assertEqual(texts.count(str(number)), 2)
        # All of it lies on the page.
        width, height = numbers(root, "width", "height")
        for path in root.iter("path"):
            points = [float(number) for number in re.split("[MLZ, ]+", path.get("d")) if number]
            self.assertGreaterEqual(len(points), 4)
            self.assertTrue(all(0 <= x <= width for x in points[0::2]), path.get("d"))
            self.assertTrue(all(0 <= y <= height for y in points[1::2]), path.get("d"))
        self.draw(HOUSE, "--list --up z")

    def test_show_every_kind_of_probe(self):
        for probe in [("fence", HOUSE, POLYGON), ("frustum", HOUSE, POLYGON, "--eye 5,-3,-7"),
                      ("prism", HOUSE, POLYGON), ("window", HOUSE, "--box 0,0,-10,6,2.6,-4"),
                      ("cone", HOUSE, "--point 3,1.5,-5 --direction 1,0,0 --front 6 --back 0 -r 1 --eye -2,1.5,-5")]:
            edges = self.draw(*probe).findall("g[@stroke='#b3263a']/path")
            self.assertGreaterEqual(len(edges), 6, probe)

    def test_of_the_plan_are_to_scale(self):
        def titled(root, title):
            return next(element for element in root.iter("rect")
                        if element.findtext("title", "").startswith(title))

        roof = "IfcSlab_Dach-1_"  # at the lower z, the higher y
        floor = "IfcSlab_Bodenplatte"
        plan = self.draw("plan", HOUSE, "--window 3.9,-9.8,7.6,-5.6")
        self.assertEqual(len(plan.findall("g/rect")), 110)
        width, height = numbers(titled(plan, "IfcSite"), "width", "height")  # 18 units by 16
        scale = width / 18
        self.assertAlmostEqual(height, 16 * scale, delta=0.02)
        self.assertAlmostEqual(*numbers(titled(plan, "scale"), "width"), 2 * scale, delta=0.02)
        self.assertAlmostEqual(*numbers(titled(plan, "window"), "width"), 3.7 * scale, delta=0.02)
        [left], [begin] = numbers(titled(plan, floor), "x"), numbers(titled(plan, "window"), "x")
        self.assertAlmostEqual(begin - left, 3.9 * scale, delta=0.02)
        self.assertLess(numbers(titled(plan, roof), "y"), numbers(titled(plan, floor), "y"))
        self.assertLessEqual({"0", "2", "4", "-2", "30"}, {element.text for element in plan.iter("text")})
        page_width, page_height = numbers(plan, "width", "height")
        for element in plan.iter("rect"):
            x, y, width, height = numbers(element, "x", "y", "width", "height")
            self.assertTrue(0 <= x and x + width <= page_width and 0 <= y and y + height <= page_height)
        # With z upwards, y points up the page.
        upright = self.draw("plan", HOUSE, "--up z")
        self.assertLess(numbers(titled(upright, roof), "y"), numbers(titled(upright, floor), "y"))


class Volumes(Test):
    def test_are_read_from_files(self):
        """The other way round, with a point on a straight edge first, and closed."""
        path = self.write("polygon.txt", "# a comment\n5.2 0 -9.5\n4.2,0,-9.5 # a corner\n\n4.2\t0,-4.8\r\n"
                                         "8.2 0 -6.5\n7.2 0 -9.5\n5.2 0 -9.5\n")
        self.assertEqual(
            names(ask("fence", HOUSE, "--direction 0,1,0 --front 2.2 --back 0.3 --points", [path])["hits"]),
            names(ask("fence", HOUSE, POLYGON)["hits"]))

    def test_may_be_planes_instead_of_a_box(self):
        hits = ask("window", HOUSE, "--box 0,0,-10,6,2.6,-4")["hits"]
        planes = ("--plane 2,0,0,0 --plane 0,1,0,0 --plane 0,0,1,10 --plane -1,0,0,6 --plane 0,-1,0,2.6 "
                  "--plane 0,0,-1,-4")
        self.assertEqual(ask("window", HOUSE, planes)["hits"], hits)
        self.assertEqual(ask("window", HOUSE, "--plane 1,0,0,100")["found"], 110)

    def test_of_the_plan_hold_boxes_laid_flat(self):
        """Against the boxes in space, by plain comparisons."""
        objects = ask(HOUSE, "--list")["objects"]
        for up, axes, window in [("", (0, 2), (3.9, -9.8, 7.6, -5.6)), ("--up z", (0, 1), (3.9, -0.5, 7.6, 2.9))]:
            plan = ask("plan", HOUSE, up)["objects"]
            hits = ask("plan", HOUSE, up, "--window", ",".join(map(str, window)))["hits"]
            inside, crossing = set(), set()
            for item, flat in zip(objects, plan, strict=True):
                low, high = ([item["box"][end][axis] for axis in axes] for end in ("low", "high"))
                self.assertEqual(flat, {"object": item["object"], "plan": {"low": low, "high": high}})
                if all(low[i] > window[i] and high[i] < window[i + 2] for i in (0, 1)):
                    inside.add(item["object"])
                elif all(low[i] < window[i + 2] and high[i] > window[i] for i in (0, 1)):
                    crossing.add(item["object"])
            self.assertGreater(min(len(inside), len(crossing)), 5)
            self.assertEqual(names(hits, "inside"), inside)
            self.assertEqual(names(hits, "crosses"), crossing)
        far = call("plan", HOUSE, "--window 100,100,101,101")
        self.assertEqual(far.returncode, 1)
        self.assertIn("0 of 110 objects inside, 0 crossing", far.stdout)
        self.assertEqual(call("plan", HOUSE).returncode, 0)

    def test_are_refused_in_one_line_that_names_the_fault(self):
        depths = "--front 2 --back 1"
        square = "0 0 0\n1 0 0\n1 0 1\n0 0 1\n"

        def points(name, content, more=""):
            return ["fence", HOUSE, depths, more, "--points", [self.write(name, content)]]

        self.refuse([
            (points("word.txt", square + "1 two 3\n"), "word.txt:5: 'two' is not a number"),
            (points("few.txt", "0 0 0\n\n1 0\n"), "few.txt:3: '1 0' has 2 numbers, not 3"),
            (points("huge.txt", "1e31 0 0\n"), "huge.txt:1: '1e31' is not a number below 1e30"),
            (points("empty.txt", "# nothing\n\n"), "empty.txt: holds no numbers"),
            (points("long.txt", "1" * 20000), "long.txt:1: the line is too long"),
            (points("binary.txt", b"\0\1\xff\x1b"), "binary.txt:1: '?"),
            (["fence", HOUSE, depths, "--points /nowhere/x"], "/nowhere/x: can't be read"),
            (["fence", HOUSE, depths, "--points /tmp"], "/tmp: "),
            (points("pair.txt", "0 0 0\n1 0 0\n0 0 0\n"), "pair.txt: a polygon needs three"),
            (points("line.txt", "0 0 0\n1 0 0\n2 0 0\n"), "line.txt: the polygon's points lie on a"),
            (points("dent.txt", "0 0 0\n4 0 0\n4 0 4\n3 0 1\n"), "dent.txt: the polygon is not convex"),
            (points("square.txt", square, "--direction 1,0,1"), "--direction: lies in the plane"),
            (["fence", HOUSE, depths], "--point: give either"),
            (["fence", HOUSE, depths, "--point 1,2,3 --points x"], "--point: give either"),
            (["fence", HOUSE, "--point 0,0,0 --point 1,0,0 --point 0,1,0 --back 1"], "--front: missing"),
            (["prism", HOUSE, POLYGON, "--front 0.2"], "--front"),
            (["frustum", HOUSE, POLYGON], "--eye: missing"),
            (["frustum", HOUSE, POLYGON, "--eye 5,1,-7"], "--eye: '5,1,-7' lies between"),
            (["window", HOUSE], "--plane: give either"),
            (["window", HOUSE, "--plane 0,0,0,1"], "--plane: a plane's normal"),
            (["window", HOUSE, "--box 0,0,0,1,1"], "--box: '0,0,0,1,1' has 5 numbers, not 6"),
            (["window", HOUSE, "--box 0,0,0,1,-1,1"], "--box: "),
            (["window", HOUSE, "--planes", [self.write("seven.txt", "1 0 0 1\n" * 7)]], "seven.txt: 7 planes"),
            (["plan", HOUSE, "--window 0,0,1"], "--window: '0,0,1' has 3 numbers, not 4"),
            (["plan", HOUSE, "--window 0,2,1,1"], "--window: '0,2,1,1': low corner first"),
            (["plan", HOUSE, "--up x"], "--up: 'x' is neither y nor z"),
            (["cone", HOUSE, "--point 1,2,3 --direction 1,0,0 --front 1 --back 2 --eye 0,0,0"],
             "--front: '1' is less than --back"),
            (["cone", HOUSE, "--point 1,2,3 --direction 0,0,0 --front 2 --back 1 --eye 0,0,0"],
             "--direction: the direction has no length")])


class Copies(Test):
    def test_hold_what_the_model_holds(self):
        """A probe moved to a copy finds there what it finds in the model, and elsewhere nothing."""
        boxes = [item["box"] for item in ask(HOUSE, "--list")["objects"]]
        extent = [max(box["high"][i] for box in boxes) - min(box["low"][i] for box in boxes) for i in range(3)]
        # Twelve copies have four columns: the seventh is the third of the second row.
        offset = [2 * 1.1 * extent[0], 0, 1.1 * extent[2]]

        def probes(to):
            def at(*p):
                return ",".join(repr(x + dx) for x, dx in zip(p, to))

            corners = f"--point {at(4, 0, -9)} --point {at(7, 0, -9)} --point {at(7, 0, -6)}"
            return [(HOUSE, "-r 0.05 --from", at(-2, 1.2, -7.5), "--to", at(14, 1.2, -7.5)),
                    ("fence", HOUSE, corners, "--direction 0,1,0 --back 1 --front 2"),
                    ("window", HOUSE, "--box", at(0, 0, -10) + "," + at(6, 2.6, -4)),
                    ("prism", HOUSE, corners, "--back 0 --front 2")]

        for in_model, in_copy in zip(probes([0, 0, 0]), probes(offset)):
            found = ask(*in_copy, "--repeat 12")
            self.assertEqual((found["objects"], found["boxesTested"]), (1320, 1320))
            expected = {name + " of copy 7" for name in names(ask(*in_model)["hits"])}
            self.assertGreater(len(expected), 2)
            self.assertEqual(names(found["hits"]), expected)
        self.assertRegex(call(*probes(offset)[0], "--repeat 12").stdout,
                         r"\n1320 boxes tested in \d+\.\d+ ms, \d+\.\d ns each\n\Z")

    def test_are_refused_where_they_make_no_sense(self):
        self.refuse([
            ([HOUSE, PIPE, "--repeat 0"], "--repeat: '0' is not a number of copies"),
            ([HOUSE, PIPE, "--repeat -3"], "--repeat: '-3' is not a number of copies"),
            ([HOUSE, PIPE, "--repeat 1e3"], "--repeat: '1e3' is not a number of copies"),
            ([HOUSE, PIPE, "--repeat 99999999999999999999"], "is not a number of copies"),
            ([HOUSE, PIPE, "--repeat 90910"], "--repeat: 90910 times 110 objects are more"),
            ([HOUSE, PIPE, "--repeat 2 --svg x.svg"], "--repeat: drawings are of the model"),
            (["plan", HOUSE, "--repeat 2"], "--repeat: lists and plans are")])

    def test_show_progress_on_a_terminal_only(self):
        typescript = self.folder / "typescript"
        command = " ".join([PROGRAM, HOUSE, *PIPE, "--repeat 9"])
        subprocess.run(["script", "-qec", command, typescript], check=True, stdout=subprocess.DEVNULL,
                       stdin=subprocess.DEVNULL)
        shown = typescript.read_text(errors="replace")
        self.assertIn("reading the model [", shown)
        self.assertIn("testing the boxes [", shown)
        self.assertEqual(call(HOUSE, PIPE, "--repeat 9").stderr, "")


if __name__ == "__main__":
    os.environ["LC_ALL"] = "C.UTF-8"
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
