#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""The page about performance, made from results whose quotients are known."""

import contextlib
import importlib.util
import io
import json
import pathlib
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
REPORT = pathlib.Path(__file__).resolve().parents[2] / "bench" / "report.py"
specification = importlib.util.spec_from_file_location("report", REPORT)
report = importlib.util.module_from_spec(specification)
specification.loader.exec_module(report)


def results_json(changed):
    """kvgeom takes 2 ns for everything, the others 3 for the machine and 4 as distributed."""
    runs = {}
    for work in report.ALL_WORK:
        for count in report.IN_CACHE, report.OUT_OF_CACHE:
            for contender, ns in {"kvgeom": 2, "kvgeom_single": 9, "kvgeom_inlined": 7.5, "kvgeom_sorted": 2,
                                  "eigen_native": 3, "eigen_distributed": 4, "eigen_transform_native": 3.5,
                                  "imath_native": 3, "imath_distributed": 4, "occt_distributed": 5}.items():
                runs[work, count, contender] = ns
    for kind in "read", "copy":
        for boxes in report.IN_CACHE, report.OUT_OF_CACHE, 10 * report.OUT_OF_CACHE:
            runs["memory_" + kind, 48 * boxes, "bytes"] = 0.5
    runs["machine_add", 8000, "cpu"] = 0.25
    runs |= changed
    caches = [{"type": "Unified", "level": 3, "size": 1 << 25}]
    return {
        "context": {"num_cpus": 2, "caches": caches, "vectors": "AVX2", "machine_lanes": "4", "eigen": "1",
                    "imath": "2", "occt": "3", "cgal": "4"},
        "benchmarks": [{"run_name": "/".join(map(str, key)), "run_type": kind, "repetitions": 3,
                        "cpu_time": factor * ns * key[1]}
                       for key, ns in runs.items()
                       for kind, factor in (("iteration", 1.5), ("iteration", 1), ("aggregate", 0.5))],
    }


def cells(text, beginning):
    """Of the lines of tables that begin so."""
    return [[cell.strip() for cell in line.strip("| \n").split("|")]
            for line in text.split("\n") if line.startswith("| " + beginning)]


class Report(unittest.TestCase):
    def pages(self, **changed):
        """The page, the picture and the limits."""
        with tempfile.TemporaryDirectory() as folder:
            files = [pathlib.Path(folder) / name for name in ("r.json", "page.md", "picture.svg", "limits.md")]
            files[0].write_text(json.dumps(results_json({tuple(key): ns for key, ns in changed.get("runs", [])})))
            files[3].write_text(f"By hand.\n{report.BEGIN_MEASURED}old{report.END_MEASURED}By hand, too.\n")
            with contextlib.redirect_stdout(io.StringIO()):
                report.main([str(file) for file in files])
            return [file.read_text() for file in files[1:]]

    def test_tells_how_many_times_as_fast(self):
        page, picture, _ = self.pages()
        for_machine, distributed = cells(page, "Box of points  ")[0], cells(page, "Box of points  ")[2]
        self.assertEqual(for_machine, ["Box of points", "4,096", "2.00", "1.50", "1.50", "-", "-"])
        self.assertEqual(distributed, ["Box of points", "4,096", "2.00", "2.00", "2.00", "2.50", "-"])
        self.assertIn("Nowhere in this run.", page)
        self.assertIn(["Invert G4x4", "9.00", "7.50", "2.00", "4.00 (Eigen)"], cells(page, "Invert"))
        self.assertIn(["Box of points", "2.00", "12"], cells(page, "Box of points"))
        self.assertIn("Vector code that kvgeom chose: AVX2", page)
        self.assertEqual(picture.count(">1.50<"), 2 * len(report.ALL_WORK))

    def test_says_where_another_library_is_faster_and_why(self):
        faster = [("compose_transfs", report.IN_CACHE, "imath_native"),
                  ("invert_matrices", report.IN_CACHE, "eigen_distributed"),
                  ("box_of_points", report.IN_CACHE, "occt_distributed"),
                  ("map_points_by_affine", report.IN_CACHE, "cgal_native"),
                  ("map_points_by_affine", report.IN_CACHE, "cgal_distributed"),
                  ("map_points_by_affine", report.OUT_OF_CACHE, "eigen_native")]
        page, picture, _ = self.pages(runs=[(key, 1.25) for key in faster])
        for line in ("Compose GTransf, flags included**, 4,096 elements: Imath compiled for the machine is 1.60 times as "
                     "fast (1.25 ns for 2.00): " + report.REASONS["compose_transfs", "imath"],
                     "Invert G4x4**, 4,096 elements: Eigen as distributed is 1.60 times as fast (1.25 ns for 2.00): "
                     + report.REASONS["invert_matrices", "eigen"],
                     "Box of points**, 4,096 elements: Open CASCADE as distributed is 1.60 times as fast (1.25 ns for 2.00)",
                     "Map points by an affine G4x4**, 4,096 elements: CGAL compiled for the machine is 1.60 times as fast "
                     "(1.25 ns for 2.00): " + report.ROUNDED_TWICE,
                     "Map points by an affine G4x4**, 4,096 elements: CGAL as distributed is 1.60 times as fast (1.25 ns "
                     "for 2.00)",
                     "Map points by an affine G4x4**, 1,000,000 elements: Eigen compiled for the machine is 1.60 times as "
                     "fast (1.25 ns for 2.00): " + report.WAITING_FOR_MEMORY):
            self.assertIn(f"\n- **{line}.\n", page)
        self.assertEqual(page.count("\n- **"), len(faster))
        self.assertIn(">0.62<", picture)

    def test_keeps_what_we_want_and_what_is_written_by_hand_apart(self):
        page, _, limits = self.pages(runs=[(("box_of_points", 3000, "kvgeom"), 2.0),
                                           (("box_of_points", 10000, "kvgeom"), 2.5)])
        self.assertNotIn("wanted", page)
        self.assertNotIn("NOT MET", page)
        self.assertTrue(limits.startswith(f"By hand.\n{report.BEGIN_MEASURED}\n### Beside"))
        self.assertTrue(limits.endswith(f"| add       | 0.25 |\n\n{report.END_MEASURED}By hand, too.\n"))
        self.assertNotIn("old", limits)
        self.assertIn(["Box of points", "4,096", "2.00", "3.00 (Eigen)", "1.50", "2.5", "4.00 (Eigen)", "2.00", "3.5",
                       "NOT MET"], cells(limits, "Box of points"))
        self.assertIn(["Box of points", "0.38", "0.38", "2.00", "5.33"], cells(limits, "Box of points"))
        self.assertIn(["Box of points, in L3", "3,000: 2.00, 4,096: 2.00, 10,000: 2.50, 1,000,000: 2.00", "1.25",
                       "NOT MET"], cells(limits, "Box of points, in L3"))


if __name__ == "__main__":
    unittest.main()
